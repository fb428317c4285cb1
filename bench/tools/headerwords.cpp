#include "tools/headerwords.h"

#include "values.h"

#include <QFile>
#include <QJsonArray>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

/** A comment without its frame, in one line. */
static QString plainText(QString comment)
{
    static const QRegularExpression frame(QStringLiteral("\\n\\s*\\*"));
    return comment.replace(frame, QStringLiteral(" ")).remove(QLatin1Char('`')).simplified();
}

static QString withoutEnd(const QString &sentence)
{
    return sentence.endsWith(QLatin1Char('.')) ? sentence.chopped(1) : sentence;
}

static MethodWords readComment(const QString &comment)
{
    static const QRegularExpression mark(QStringLiteral("\\s*@(?=param|return)"));
    static const QRegularExpression argument(QStringLiteral("^param (\\w+(?:, \\w+)*) (.+)$"));
    const QStringList parts = plainText(comment).split(mark);
    MethodWords words = {withoutEnd(parts.constFirst()), {}};
    for (const QString &part : parts) {
        const QRegularExpressionMatch match = argument.match(part);
        const QStringList names = match.captured(1).split(QStringLiteral(", "), Qt::SkipEmptyParts);
        for (const QString &name : names)
            words.arguments.insert(name, withoutEnd(match.captured(2)));
    }
    return words;
}

QHash<QString, MethodWords> parseHeaderWords(const QString &header)
{
    static const QRegularExpression documented(
        QStringLiteral("/\\*\\*((?:(?!\\*/).)*)\\*/\\s*[^;{}()/]*?\\b(\\w+)\\("),
        QRegularExpression::DotMatchesEverythingOption);
    QHash<QString, MethodWords> found;
    QRegularExpressionMatchIterator matches = documented.globalMatch(header);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        found.insert(match.captured(2), readComment(match.captured(1)));
    }
    return found;
}

static QString headers()
{
    QString text;
    for (const char *path : {":/headers/vtqadaptor.h", ":/headers/vtqservice.h"}) {
        QFile header(QString::fromLatin1(path));
        if (header.open(QIODevice::ReadOnly))
            text += QString::fromUtf8(header.readAll());
    }
    return text;
}

MethodWords headerWords(const QString &method)
{
    static const QHash<QString, MethodWords> known = parseHeaderWords(headers());
    return known.value(method);
}

static bool isList(int type)
{
    return type == QMetaType::QByteArray || type == QMetaType::QStringList ||
           type == QMetaType::QVariantList || type == qMetaTypeId<QList<int>>();
}

/** "0 off, 1 on", "bit 0 hood, bit 1 trunk", "by gauge: 0 centre, 1 top left". */
NamedValues NamedValues::read(const QString &words, int type)
{
    static const QRegularExpression named(QStringLiteral("^(bit )?(\\d+) (?!to )(.+)$"));
    static const QString others = QStringLiteral("any other value ");
    NamedValues found;
    const QStringList items =
        words.section(QStringLiteral(": "), -1).split(QStringLiteral(", "), Qt::SkipEmptyParts);
    for (const QString &item : items) {
        const QRegularExpressionMatch match = named.match(item);
        if (item.startsWith(others))
            found.other = item.mid(others.size());
        else if (match.hasMatch())
            found.names.append({match.captured(2).toInt(), match.captured(3)});
        else
            return {};
        if (match.hasMatch())
            found.kind = isList(type) ? Elements : match.capturedLength(1) > 0 ? Bits : Values;
    }
    return found;
}

QString NamedValues::nameOf(int value) const
{
    QStringList found;
    for (const Name &name : names) {
        if (kind == Bits ? bool(value & 1 << name.number) : value == name.number)
            found.append(name.text);
    }
    return found.isEmpty() ? other : found.join(QStringLiteral(", "));
}

/** The elements of a list of any kind, as texts. */
static QStringList elementsOf(const QVariant &value)
{
    QStringList texts;
    const QByteArray bytes = value.userType() == QMetaType::QByteArray ? value.toByteArray() : "";
    for (const char byte : bytes)
        texts.append(QString::number(uchar(byte)));
    const QJsonArray array = module::toJson(value).toArray();
    for (const QJsonValue element : array)
        texts.append(element.toVariant().toString());
    return texts;
}

static QString describeElements(const QVector<NamedValues::Name> &names, const QVariant &value)
{
    const QStringList elements = elementsOf(value);
    QStringList parts;
    for (const NamedValues::Name &name : names) {
        if (name.number < elements.size())
            parts.append(QStringLiteral("%1 %2").arg(name.text, elements[name.number]));
    }
    return parts.join(QStringLiteral(", "));
}

QString NamedValues::describe(const QVariant &value) const
{
    QString name;
    if (kind == Elements)
        name = describeElements(names, value);
    else if (kind != None)
        name = nameOf(value.toInt());
    const QString text = module::jsonText(value);
    if (name.isEmpty() || kind == Elements)
        return name.isEmpty() ? text : name;
    return (kind == Bits ? QStringLiteral("%1: %2") : QStringLiteral("%1 %2")).arg(text, name);
}
