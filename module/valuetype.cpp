#include "valuetype.h"

#include "metacall.h"
#include "values.h"

#include <QJsonObject>
#include <QMap>

#include <algorithm>
#include <climits>

namespace module {

static QJsonValue numberToJson(const QVariant &value)
{
    return value.toInt();
}

static QJsonValue plainToJson(const QVariant &value)
{
    return QJsonValue::fromVariant(value);
}

/** A null text is an empty one. */
static QJsonValue textToJson(const QVariant &value)
{
    return value.toString() + QLatin1String("");
}

static QJsonValue bytesToJson(const QVariant &value)
{
    const QByteArray bytes = value.toByteArray();
    return bytes.isNull() ? QJsonValue() : QJsonValue(QString::fromLatin1(bytes.toHex()));
}

static QJsonValue integersToJson(const QVariant &value)
{
    QJsonArray array;
    const auto numbers = value.value<QList<int>>();
    for (const int number : numbers)
        array.append(number);
    return array;
}

/** The elements may be of any type, so each has its type with it. */
static QJsonValue listToJson(const QVariant &value)
{
    QJsonArray array;
    const QVariantList elements = value.toList();
    for (const QVariant &element : elements)
        array.append(QJsonObject{{QLatin1String(element.typeName()), toJson(element)}});
    return array;
}

template <typename Value>
static QJsonValue mapToJson(const QVariant &value)
{
    QJsonObject object;
    const auto map = value.value<QMap<int, Value>>();
    for (auto it = map.cbegin(); it != map.cend(); ++it)
        object.insert(QString::number(it.key()), it.value());
    return object;
}

template <typename Value>
static QVariant scalarFromJson(const QJsonValue &json)
{
    QVariant value = json.isDouble() || json.isBool() ? json.toVariant() : QVariant();
    return bus::convertValue(&value, qMetaTypeId<Value>()) ? value : QVariant();
}

static QVariant textFromJson(const QJsonValue &json)
{
    return json.isString() ? json.toString() : QVariant();
}

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

static QVariant listFromJson(const QJsonValue &json)
{
    const QJsonArray array = json.toArray();
    QVariantList values;
    for (const QJsonValue value : array) {
        const QJsonObject object = value.toObject();
        if (object.size() != 1)
            return {};
        const int type = QMetaType::type(object.constBegin().key().toLatin1().constData());
        values.append(fromJson(object.constBegin().value(), type));
        if (!values.last().isValid())
            return {};
    }
    return json.isArray() ? values : QVariant();
}

template <typename Value>
static QVariant mapFromJson(const QJsonValue &json)
{
    const QJsonObject object = json.toObject();
    QMap<int, Value> map;
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        bool isNumber = false;
        const int key = it.key().toInt(&isNumber);
        const QVariant value = scalarFromJson<Value>(it.value());
        if (!isNumber || !value.isValid())
            return {};
        map.insert(key, value.value<Value>());
    }
    return json.isObject() ? QVariant::fromValue(map) : QVariant();
}

template <typename Container>
static int lengthOf(const QVariant &value)
{
    return value.value<Container>().size();
}

template <typename Container>
static QVariant firstOf(const QVariant &value, int length)
{
    return QVariant::fromValue(Container(value.value<Container>().mid(0, length)));
}

static QVariant highestByte(const QVariant &)
{
    return QVariant::fromValue(uchar(UCHAR_MAX));
}

static QVariant highestInteger(const QVariant &)
{
    return INT_MAX;
}

static QVariant longNumber(const QVariant &)
{
    return QStringLiteral("99999999999999");
}

static QVariant highestBytes(const QVariant &value)
{
    return QByteArray(value.toByteArray().size(), '\xff');
}

static QVariant lowestIntegers(const QVariant &value)
{
    auto values = value.value<QList<int>>();
    std::fill(values.begin(), values.end(), INT_MIN);
    return QVariant::fromValue(values);
}

const ValueType *valueType(int id)
{
    using Numbers = QList<int>;
    using NumberMap = QMap<int, int>;
    using SwitchMap = QMap<int, bool>;
    // clang-format off
    static const ValueType types[] = {
        {QMetaType::UChar, "a number from 0 to 255", nullptr, numberToJson, scalarFromJson<uchar>,
            nullptr, nullptr, highestByte},
        {QMetaType::Int, "a number", nullptr, numberToJson, scalarFromJson<int>,
            nullptr, nullptr, highestInteger},
        {QMetaType::Bool, "true or false", nullptr, plainToJson, scalarFromJson<bool>,
            nullptr, nullptr, nullptr},
        {QMetaType::QString, "a text", nullptr, textToJson, textFromJson,
            lengthOf<QString>, firstOf<QString>, longNumber},
        {QMetaType::QByteArray, "bytes as a hex text or null", "\"\"", bytesToJson, bytesFromJson,
            lengthOf<QByteArray>, firstOf<QByteArray>, highestBytes},
        {QMetaType::QStringList, "a list of texts", "[]", plainToJson, textsFromJson,
            lengthOf<QStringList>, firstOf<QStringList>, nullptr},
        {QMetaType::QVariantList, "a list of objects, each with its type", "[]", listToJson, listFromJson,
            lengthOf<QVariantList>, firstOf<QVariantList>, nullptr},
        {qMetaTypeId<Numbers>(), "a list of numbers", "[]", integersToJson, integersFromJson,
            lengthOf<Numbers>, firstOf<Numbers>, lowestIntegers},
        {qMetaTypeId<NumberMap>(), "an object of numbers by number", "{}", mapToJson<int>, mapFromJson<int>,
            nullptr, nullptr, nullptr},
        {qMetaTypeId<SwitchMap>(), "an object of true or false by number", "{}", mapToJson<bool>, mapFromJson<bool>,
            nullptr, nullptr, nullptr},
    };
    // clang-format on
    const auto found = std::find_if(std::begin(types), std::end(types),
                                    [id](const ValueType &type) { return type.id == id; });
    return found == std::end(types) ? nullptr : found;
}

} // namespace module
