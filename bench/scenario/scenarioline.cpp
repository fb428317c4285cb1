#include "scenario/scenarioline.h"

#include "values.h"

#include <QJsonDocument>

#include <algorithm>
#include <cmath>

/** Where a text, list or object that begins here ends; -1 when it does not. */
static int endOfJson(const QString &line, int begin)
{
    int depth = 0;
    bool inText = false;
    for (int i = begin; i < line.size(); ++i) {
        const QChar c = line[i];
        if (inText && c == QLatin1Char('\\'))
            ++i;
        else if (c == QLatin1Char('"'))
            inText = !inText;
        else if (!inText && (c == QLatin1Char('[') || c == QLatin1Char('{')))
            ++depth;
        else if (!inText && (c == QLatin1Char(']') || c == QLatin1Char('}')))
            --depth;
        if (!inText && depth <= 0)
            return i + 1;
    }
    return -1;
}

static bool readJson(const QString &text, QVariant *value)
{
    // A bare text is not a JSON document.
    const QByteArray wrapped = '[' + text.toUtf8() + ']';
    QJsonParseError error;
    const QJsonArray array = QJsonDocument::fromJson(wrapped, &error).array();
    *value = array.at(0).toVariant();
    return error.error == QJsonParseError::NoError && array.size() == 1;
}

static QVariant readBareWord(const QString &word)
{
    bool isNumber = false;
    if (word.startsWith(QLatin1Char('+')))
        return word; // a time relative to the step before
    if (word.startsWith(QLatin1String("0x"))) {
        const int number = word.toInt(&isNumber, 16);
        return isNumber ? QVariant(double(number)) : QVariant(word);
    }
    const double number = word.toDouble(&isNumber);
    if (isNumber && std::isfinite(number))
        return number;
    if (word == QLatin1String("true") || word == QLatin1String("false"))
        return word == QLatin1String("true");
    return word == QLatin1String("null") ? QVariant::fromValue(nullptr) : QVariant(word);
}

bool splitScenarioLine(const QString &line, QVariantList *words, QString *error)
{
    int at = 0;
    while (at < line.size()) {
        const QChar c = line[at];
        if (c.isSpace()) {
            ++at;
            continue;
        }
        if (c == QLatin1Char('#'))
            break;
        int end = at;
        if (QStringLiteral("\"[{").contains(c)) {
            end = endOfJson(line, at);
            QVariant value;
            if (end < 0 || !readJson(line.mid(at, end - at), &value)) {
                *error = QStringLiteral("expected a text, list or object, got %1")
                             .arg(line.mid(at).trimmed());
                return false;
            }
            words->append(value);
        } else {
            while (end < line.size() && !line[end].isSpace())
                ++end;
            words->append(readBareWord(line.mid(at, end - at)));
        }
        at = end;
    }
    return true;
}

static QString wordText(const QVariant &value)
{
    if (value.userType() == QMetaType::QString) {
        QString text = value.toString();
        const bool isBare = !text.isEmpty() &&
                            readBareWord(text).userType() == QMetaType::QString &&
                            std::none_of(text.begin(), text.end(), [](QChar c) {
                                return c.isSpace() || QStringLiteral("\"[{#").contains(c);
                            });
        if (isBare)
            return text;
    }
    // Lists and maps that were read from a line are written unchanged.
    const bool isRead =
        value.userType() == QMetaType::QVariantList || value.userType() == QMetaType::QVariantMap;
    if (!isRead)
        return module::jsonText(value);
    const QJsonDocument document(QJsonArray{QJsonValue::fromVariant(value)});
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact)).mid(1).chopped(1);
}

QString scenarioLine(const QString &word, const QVariantList &arguments)
{
    QString line = word;
    for (const QVariant &argument : arguments)
        line += QLatin1Char(' ') + wordText(argument);
    return line;
}

QString timedLine(qint64 ms, const QString &line)
{
    static constexpr int digits = 12;
    static constexpr int column = 9; // leaves room for an hour and a half
    const QString time = QString::number(double(ms) / 1000, 'g', digits);
    return (time + QLatin1Char(' ')).leftJustified(column) + line;
}
