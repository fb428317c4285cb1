#include "tools/propertytext.h"

#include "tools/imagenames.h"
#include "values.h"

#include <QBitmap>
#include <QColor>
#include <QCursor>
#include <QFont>
#include <QIcon>
#include <QKeySequence>
#include <QLocale>
#include <QPixmap>
#include <QRect>
#include <QSizePolicy>

static const QString separator = QStringLiteral(" | ");

static QString enumText(const QMetaEnum &keys, int value)
{
    const char *key = keys.valueToKey(value);
    return key ? QString::fromLatin1(key) : QString::number(value);
}

// Of keys with one value the first is the plain one: AlignLeft, not AlignLeading.
QString flagsText(const QMetaEnum &keys, int value)
{
    QStringList names;
    auto rest = unsigned(value);
    for (int i = keys.keyCount() - 1; i >= 0; --i) {
        const auto bits = unsigned(keys.value(i));
        if (bits == 0 || (rest & bits) != bits)
            continue;
        names.prepend(QLatin1String(keys.valueToKey(int(bits))));
        rest &= ~bits;
    }
    if (rest)
        names.append(QStringLiteral("0x") + QString::number(rest, 16));
    return names.isEmpty() ? enumText(keys, 0) : names.join(separator);
}

static QString sizeText(const QSize &size)
{
    return QStringLiteral("%1 x %2").arg(size.width()).arg(size.height());
}

static QString pointText(const QPoint &point)
{
    return QStringLiteral("(%1, %2)").arg(point.x()).arg(point.y());
}

static QString fontText(const QFont &font)
{
    QStringList parts = {font.family(), font.pixelSize() > 0
                                            ? QStringLiteral("%1 px").arg(font.pixelSize())
                                            : QStringLiteral("%1 pt").arg(font.pointSizeF())};
    if (font.bold())
        parts.append(QStringLiteral("bold"));
    if (font.italic())
        parts.append(QStringLiteral("italic"));
    return parts.join(QStringLiteral(", "));
}

static QString policyText(const QSizePolicy &policy)
{
    const auto keys = QMetaEnum::fromType<QSizePolicy::Policy>();
    return QStringLiteral("%1, %2").arg(enumText(keys, policy.horizontalPolicy()),
                                        enumText(keys, policy.verticalPolicy()));
}

static QString imageText(const QPixmap &image)
{
    const QString path = imagePathOf(image);
    return !path.isEmpty() ? path : image.isNull() ? QString() : sizeText(image.size());
}

struct TypeRow
{
    int type;
    QString (*text)(const QVariant &value);
};

// clang-format off
static constexpr TypeRow types[] = {
    {QMetaType::QSize,        [](const QVariant &v) { return sizeText(v.toSize()); }},
    {QMetaType::QPoint,       [](const QVariant &v) { return pointText(v.toPoint()); }},
    {QMetaType::QRect,        [](const QVariant &v) { return QStringLiteral("%1 at %2").arg(sizeText(v.toRect().size()), pointText(v.toRect().topLeft())); }},
    {QMetaType::QFont,        [](const QVariant &v) { return fontText(v.value<QFont>()); }},
    {QMetaType::QColor,       [](const QVariant &v) { return v.value<QColor>().name(QColor::HexArgb); }},
    {QMetaType::QSizePolicy,  [](const QVariant &v) { return policyText(v.value<QSizePolicy>()); }},
    {QMetaType::QCursor,      [](const QVariant &v) { return enumText(QMetaEnum::fromType<Qt::CursorShape>(), v.value<QCursor>().shape()); }},
    {QMetaType::QKeySequence, [](const QVariant &v) { return v.value<QKeySequence>().toString(); }},
    {QMetaType::QLocale,      [](const QVariant &v) { return v.toLocale().name(); }},
    {QMetaType::QPixmap,      [](const QVariant &v) { return imageText(v.value<QPixmap>()); }},
    {QMetaType::QIcon,        [](const QVariant &v) { return imageText(v.value<QIcon>().pixmap(v.value<QIcon>().availableSizes().value(0))); }},
    {QMetaType::QString,      [](const QVariant &v) { return v.toString(); }},
};
// clang-format on

QString valueText(const QVariant &value)
{
    for (const TypeRow &row : types) {
        if (row.type == value.userType())
            return row.text(value);
    }
    const QString text = module::jsonText(value);
    return text == QLatin1String("null") ? QString() : text;
}

QString propertyText(const QMetaProperty &property, const QVariant &value)
{
    if (property.isFlagType())
        return flagsText(property.enumerator(), value.toInt());
    return property.isEnumType() ? enumText(property.enumerator(), value.toInt())
                                 : valueText(value);
}

bool isEditable(const QMetaProperty &property)
{
    switch (property.userType()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Double:
    case QMetaType::QString:
        return property.isWritable();
    default:
        return property.isWritable() && property.isEnumType(); // flags are enums too
    }
}

/** What the property takes; invalid when the edited value is none of its values. */
static QVariant valueFor(const QMetaProperty &property, const QVariant &edited)
{
    if (!property.isEnumType())
        return edited;
    bool isKnown = false;
    const QByteArray keys = edited.toString().toLatin1();
    const int value = property.isFlagType()
                          ? property.enumerator().keysToValue(keys.constData(), &isKnown)
                          : property.enumerator().keyToValue(keys.constData(), &isKnown);
    return isKnown ? QVariant(value) : QVariant();
}

bool writeProperty(QObject *object, const QMetaProperty &property, const QVariant &edited,
                   QString *error)
{
    const QString name = QLatin1String(property.name());
    const QVariant value = valueFor(property, edited);
    if (!value.isValid() || !property.write(object, value)) {
        *error = QStringLiteral("%1: expected %2, got '%3'")
                     .arg(name,
                          QLatin1String(property.isEnumType() ? property.enumerator().enumName()
                                                              : property.typeName()),
                          edited.toString());
        return false;
    }
    const QString wanted = propertyText(property, value);
    const QString kept = propertyText(property, property.read(object));
    if (kept != wanted)
        *error = QStringLiteral("%1: set to %2, the widget keeps %3").arg(name, wanted, kept);
    return kept == wanted;
}
