#include "panels/eventlines.h"

#include "adaptorlink.h"
#include "scenario/scenarioline.h"
#include "values.h"

#include <QJsonDocument>
#include <QJsonObject>

QString recordedLine(qint64 ms, Journal::Kind kind, const QString &name,
                     const QVariantList &arguments)
{
    const QJsonObject line = {{"t", double(ms)},
                              {kind == Journal::Call ? "call" : "signal", name},
                              {"args", module::toJson(arguments)}};
    return QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact));
}

QString scenarioLineOf(qint64 ms, Journal::Kind kind, const QString &name,
                       const QVariantList &arguments)
{
    if (kind != Journal::Call)
        return timedLine(ms,
                         scenarioLine(QStringLiteral("signal"), QVariantList{name} + arguments));
    const QString command = module::adaptorCommand(name);
    return timedLine(ms,
                     scenarioLine(QStringLiteral("expect call"),
                                  QVariantList{command.isEmpty() ? name : command} + arguments));
}
