#include "scenario/scenarioresult.h"

#include <QJsonArray>

static QString base64(const QByteArray &picture)
{
    return QString::fromLatin1(picture.toBase64());
}

static QByteArray fromBase64(const QJsonValue &value)
{
    return QByteArray::fromBase64(value.toString().toLatin1());
}

QJsonObject StepResult::toJson() const
{
    return {{"line", line},
            {"ms", double(ms)},
            {"text", text},
            {"isExpectation", isExpectation},
            {"seen", seen},
            {"failure", failure},
            {"before", base64(before)},
            {"after", base64(after)}};
}

StepResult StepResult::fromJson(const QJsonObject &json)
{
    return {json.value("line").toInt(),       qint64(json.value("ms").toDouble()),
            json.value("text").toString(),    json.value("isExpectation").toBool(),
            json.value("seen").toString(),    json.value("failure").toString(),
            fromBase64(json.value("before")), fromBase64(json.value("after"))};
}

static QJsonArray jsonOf(const QVector<StepResult> &steps)
{
    QJsonArray array;
    for (const StepResult &step : steps)
        array.append(step.toJson());
    return array;
}

QJsonObject ScenarioResult::toJson() const
{
    return {{"file", file},
            {"title", title},
            {"expectations", expectations},
            {"seconds", seconds},
            {"unusable", unusable},
            {"failures", QJsonArray::fromStringList(failures)},
            {"pictures", QJsonArray::fromStringList(pictures)},
            {"steps", jsonOf(steps)}};
}

ScenarioResult ScenarioResult::fromJson(const QJsonObject &json)
{
    ScenarioResult result;
    result.file = json.value("file").toString();
    result.title = json.value("title").toString();
    result.expectations = json.value("expectations").toInt();
    result.seconds = json.value("seconds").toDouble();
    result.unusable = json.value("unusable").toString();
    result.failures = json.value("failures").toVariant().toStringList();
    result.pictures = json.value("pictures").toVariant().toStringList();
    for (const QJsonValue step : json.value("steps").toArray())
        result.steps.append(StepResult::fromJson(step.toObject()));
    return result;
}
