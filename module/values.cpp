#include "values.h"

#include "metacall.h"
#include "valuetype.h"

#include <QJsonDocument>

namespace module {

QJsonValue toJson(const QVariant &value)
{
    const ValueType *type = valueType(value.userType());
    return type ? type->toJson(value) : QJsonValue::fromVariant(value);
}

QVariant fromJson(const QJsonValue &json, int type)
{
    if (const ValueType *known = valueType(type))
        return known->fromJson(json);
    QVariant value = json.isDouble() || json.isBool() ? json.toVariant() : QVariant();
    return bus::convertValue(&value, type) ? value : QVariant();
}

QJsonArray toJson(const QVariantList &arguments)
{
    QJsonArray array;
    for (const QVariant &argument : arguments)
        array.append(toJson(argument));
    return array;
}

QString jsonText(const QVariant &value)
{
    // A bare text is no document of its own.
    const QJsonArray wrapped = {toJson(value)};
    const QByteArray text = QJsonDocument(wrapped).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(text).mid(1).chopped(1);
}

QString argumentsText(const QVariantList &arguments)
{
    QStringList texts;
    for (const QVariant &argument : arguments)
        texts.append(jsonText(argument));
    return texts.join(QLatin1Char(' '));
}

static QString expectation(int type)
{
    const ValueType *known = valueType(type);
    return QString::fromLatin1(known ? known->expectation : QMetaType::typeName(type));
}

static bool bindArgument(QVariant *value, int type)
{
    if (type != QMetaType::QVariant && value->userType() != type)
        *value = fromJson(QJsonValue::fromVariant(*value), type);
    return type == QMetaType::QVariant || value->isValid();
}

bool bindArguments(const QMetaMethod &method, QVariantList *arguments, QString *error)
{
    if (arguments->size() != method.parameterCount()) {
        *error = QStringLiteral("expected %1 with %2 arguments, got %3")
                     .arg(QString::fromLatin1(method.name()))
                     .arg(method.parameterCount())
                     .arg(arguments->size());
        return false;
    }
    for (int i = 0; i < arguments->size(); ++i) {
        if (bindArgument(&(*arguments)[i], method.parameterType(i)))
            continue;
        *error = QStringLiteral("argument %1 of %2: expected %3")
                     .arg(i + 1)
                     .arg(QString::fromLatin1(method.name()), expectation(method.parameterType(i)));
        return false;
    }
    return true;
}

} // namespace module
