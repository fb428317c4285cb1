#include "values.h"

#include "adaptorlink.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QVarLengthArray>

#include <algorithm>

namespace module {

template <typename Container>
static QJsonArray numbers(const Container &values)
{
    QJsonArray array;
    for (const int value : values)
        array.append(value);
    return array;
}

template <typename Value>
static QJsonObject numbersByNumber(const QMap<int, Value> &map)
{
    QJsonObject object;
    for (auto it = map.cbegin(); it != map.cend(); ++it)
        object.insert(QString::number(it.key()), it.value());
    return object;
}

/** A value of a list that may hold any kind, with its kind beside it. */
static QJsonValue withKind(const QVariant &value)
{
    return QJsonObject{{QLatin1String(value.typeName()), toJson(value)}};
}

QJsonValue toJson(const QVariant &value)
{
    const int type = value.userType();
    if (type == QMetaType::QByteArray) {
        const QByteArray bytes = value.toByteArray();
        return bytes.isNull() ? QJsonValue() : QJsonValue(QString::fromLatin1(bytes.toHex()));
    }
    if (type == qMetaTypeId<QList<int>>())
        return numbers(value.value<QList<int>>());
    if (type == qMetaTypeId<QMap<int, int>>())
        return numbersByNumber(value.value<QMap<int, int>>());
    if (type == qMetaTypeId<QMap<int, bool>>())
        return numbersByNumber(value.value<QMap<int, bool>>());
    if (type == QMetaType::UChar)
        return value.toInt();
    if (type == QMetaType::QString)
        return value.toString() + QLatin1String(""); // a null text is an empty one
    if (type == QMetaType::QVariantList) {
        QJsonArray array;
        for (const QVariant &element : value.toList())
            array.append(withKind(element));
        return array;
    }
    return QJsonValue::fromVariant(value);
}

// What is read back is what was written or nothing: the readers return an invalid value for JSON
// of another shape, which spoils the line.

static QVariant bytesFromJson(const QJsonValue &json)
{
    if (json.isNull())
        return QByteArray();
    const QByteArray text = json.toString().toLatin1();
    const QByteArray bytes = QByteArray::fromHex(text) + "";
    return json.isString() && bytes.toHex() == text ? QVariant(bytes) : QVariant();
}

static QVariant integersFromJson(const QJsonValue &json)
{
    const QJsonArray array = json.toArray();
    QList<int> values;
    for (const QJsonValue value : array) {
        values.append(value.toInt());
        if (double(values.last()) != value.toDouble(qQNaN()))
            return {};
    }
    return json.isArray() ? QVariant::fromValue(values) : QVariant();
}

static QVariant textsFromJson(const QJsonValue &json)
{
    const QJsonArray array = json.toArray();
    const bool areTexts = std::all_of(array.begin(), array.end(),
                                      [](const QJsonValue &value) { return value.isString(); });
    return json.isArray() && areTexts ? json.toVariant().toStringList() : QVariant();
}

template <typename Value>
static QVariant numbersByNumberFromJson(const QJsonValue &json)
{
    const QJsonObject object = json.toObject();
    QMap<int, Value> map;
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        bool isNumber = false;
        QVariant value = it.value().toVariant();
        const int key = it.key().toInt(&isNumber);
        if (!isNumber || !(it.value().isDouble() || it.value().isBool()) ||
            !fitArgument(&value, qMetaTypeId<Value>()))
            return {};
        map.insert(key, value.value<Value>());
    }
    return json.isObject() ? QVariant::fromValue(map) : QVariant();
}

static QVariant anyListFromJson(const QJsonValue &json)
{
    const QJsonArray array = json.toArray();
    QVariantList values;
    for (const QJsonValue value : array) {
        const QJsonObject object = value.toObject();
        if (object.size() != 1)
            return {};
        const int kind = QMetaType::type(object.constBegin().key().toLatin1().constData());
        values.append(fromJson(object.constBegin().value(), kind));
        if (!values.last().isValid())
            return {};
    }
    return json.isArray() ? values : QVariant();
}

QVariant fromJson(const QJsonValue &json, int type)
{
    if (type == QMetaType::QByteArray)
        return bytesFromJson(json);
    if (type == qMetaTypeId<QList<int>>())
        return integersFromJson(json);
    if (type == QMetaType::QStringList)
        return textsFromJson(json);
    if (type == QMetaType::QVariantList)
        return anyListFromJson(json);
    if (type == qMetaTypeId<QMap<int, int>>())
        return numbersByNumberFromJson<int>(json);
    if (type == qMetaTypeId<QMap<int, bool>>())
        return numbersByNumberFromJson<bool>(json);
    if (type == QMetaType::QString)
        return json.isString() ? json.toString() : QVariant();
    QVariant value = json.isDouble() || json.isBool() ? json.toVariant() : QVariant();
    return fitArgument(&value, type) ? value : QVariant();
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

// ---- Arguments of a method ----------------------------------------------------------------------

static QString expectation(int type)
{
    static const QMap<int, QString> known = {
        {QMetaType::UChar, QStringLiteral("a number from 0 to 255")},
        {QMetaType::Int, QStringLiteral("a number")},
        {QMetaType::Bool, QStringLiteral("true or false")},
        {QMetaType::QString, QStringLiteral("a text")},
        {QMetaType::QStringList, QStringLiteral("a list of texts")},
        {QMetaType::QByteArray, QStringLiteral("bytes as a hex text or null")},
        {QMetaType::QVariantList, QStringLiteral("a list of objects, each with its type")},
        {qMetaTypeId<QList<int>>(), QStringLiteral("a list of numbers")},
        {qMetaTypeId<QMap<int, int>>(), QStringLiteral("an object of numbers by number")},
        {qMetaTypeId<QMap<int, bool>>(), QStringLiteral("an object of true or false by number")},
    };
    return known.value(type, QString::fromLatin1(QMetaType::typeName(type)));
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
        QVariant &value = (*arguments)[i];
        const int type = method.parameterType(i);
        if (type == QMetaType::QVariant || value.userType() == type)
            continue;
        value = fromJson(QJsonValue::fromVariant(value), type);
        if (value.isValid())
            continue;
        *error = QStringLiteral("argument %1 of %2: expected %3")
                     .arg(i + 1)
                     .arg(QString::fromLatin1(method.name()), expectation(type));
        return false;
    }
    return true;
}

void invokeMethod(QObject *object, const QMetaMethod &method, QVariantList arguments)
{
    const bool hasResult = method.returnType() != QMetaType::Void;
    QVariant result = hasResult ? QVariant(method.returnType(), nullptr) : QVariant();
    QVarLengthArray<void *, 8> passed = {hasResult ? result.data() : nullptr};
    for (int i = 0; i < arguments.size(); ++i) {
        const bool isAny = method.parameterType(i) == QMetaType::QVariant;
        passed.append(isAny ? static_cast<void *>(&arguments[i]) : arguments[i].data());
    }
    object->qt_metacall(QMetaObject::InvokeMetaMethod, method.methodIndex(), passed.data());
}

} // namespace module
