#include "wirevalues.h"

#include "interface.h"

#include <QDBusMetaType>
#include <QDBusVariant>
#include <QMap>

namespace bus {

QDBusArgument &operator<<(QDBusArgument &argument, const Record &record)
{
    argument.beginStructure();
    argument << record.name << record.arguments;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Record &record)
{
    argument.beginStructure();
    argument >> record.name >> record.arguments;
    argument.endStructure();
    return argument;
}

void registerWireTypes()
{
    static const bool once = [] {
        qDBusRegisterMetaType<QList<int>>();
        qDBusRegisterMetaType<QMap<int, int>>();
        qDBusRegisterMetaType<QMap<int, bool>>();
        qDBusRegisterMetaType<Record>();
        qDBusRegisterMetaType<QVector<Record>>();
        return true;
    }();
    Q_UNUSED(once)
}

/** Variants within variants: the elements of a list of mixed types. */
static QVariant unwrapped(const QVariant &value)
{
    if (value.userType() == qMetaTypeId<QDBusVariant>())
        return value.value<QDBusVariant>().variant();
    return value;
}

static QVariant demarshalled(const QDBusArgument &argument, int type)
{
    const char *signature = signatureOf(type);
    if (!signature || argument.currentSignature() != QLatin1String(signature))
        return {};
    QVariant value(type, nullptr);
    return QDBusMetaType::demarshall(argument, type, value.data()) ? value : QVariant();
}

/** The bus has no null array: one without bytes is empty, which pages tell from none at all. */
static QByteArray bytes(const QByteArray &array)
{
    return array.isNull() ? QByteArray("") : array;
}

/** An element of a list of mixed types says itself what it is. */
static QVariant element(const QVariant &value)
{
    if (value.userType() == QMetaType::QByteArray)
        return bytes(value.toByteArray());
    if (value.userType() != qMetaTypeId<QDBusArgument>())
        return value;
    const auto argument = value.value<QDBusArgument>();
    for (const int type : {qMetaTypeId<QList<int>>(), qMetaTypeId<QMap<int, int>>(),
                           qMetaTypeId<QMap<int, bool>>()}) {
        QVariant known = demarshalled(argument, type);
        if (known.isValid())
            return known;
    }
    return {};
}

/** @return an invalid value where an element is of a type that no signal has */
static QVariant mixedList(QVariantList list)
{
    for (QVariant &value : list) {
        value = element(unwrapped(value));
        if (!value.isValid())
            return {};
    }
    return list;
}

QVariant fromWire(const QVariant &value, int type)
{
    QVariant plain = unwrapped(value);
    if (plain.userType() == qMetaTypeId<QDBusArgument>())
        plain = demarshalled(plain.value<QDBusArgument>(), type);
    if (plain.userType() != type)
        return {};
    if (type == QMetaType::QByteArray)
        return bytes(plain.toByteArray());
    return type == QMetaType::QVariantList ? mixedList(plain.toList()) : plain;
}

bool fromWire(const QMetaMethod &method, QVariantList *arguments)
{
    if (arguments->size() != method.parameterCount())
        return false;
    for (int i = 0; i < arguments->size(); ++i) {
        (*arguments)[i] = fromWire(arguments->at(i), method.parameterType(i));
        if (!arguments->at(i).isValid())
            return false;
    }
    return true;
}

} // namespace bus
