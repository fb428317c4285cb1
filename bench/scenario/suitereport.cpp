#include "scenario/suitereport.h"

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cstdio>

void printResult(const ScenarioResult &result)
{
    if (result.failures.isEmpty())
        std::printf("pass  %s: %s (%d expectations, %.1f s)\n",
                    qPrintable(QFileInfo(result.file).fileName()), qPrintable(result.title),
                    result.expectations, result.seconds);
    else
        std::printf("FAIL  %s: %s\n", qPrintable(QFileInfo(result.file).fileName()),
                    qPrintable(result.title));
    for (const QString &failure : result.failures)
        std::printf("      %s\n", qPrintable(failure));
    for (const QString &picture : result.pictures)
        std::printf("      picture: %s\n", qPrintable(picture));
    std::fflush(stdout);
}

static void writeCase(QXmlStreamWriter *xml, const ScenarioResult &result)
{
    xml->writeStartElement(QStringLiteral("testcase"));
    xml->writeAttribute(QStringLiteral("classname"), QFileInfo(result.file).completeBaseName());
    xml->writeAttribute(QStringLiteral("name"), result.title);
    xml->writeAttribute(QStringLiteral("time"), QString::number(result.seconds, 'f', 3));
    for (const QString &failure : result.failures) {
        xml->writeStartElement(QStringLiteral("failure"));
        xml->writeAttribute(QStringLiteral("message"), failure);
        xml->writeEndElement();
    }
    xml->writeEndElement();
}

int failedIn(const QVector<ScenarioResult> &results)
{
    return int(std::count_if(results.begin(), results.end(), [](const ScenarioResult &result) {
        return !result.failures.isEmpty();
    }));
}

bool writeJUnit(const QString &path, const QVector<ScenarioResult> &results, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = QStringLiteral("%1: expected a file that can be written: %2")
                     .arg(path, file.errorString());
        return false;
    }
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("testsuite"));
    xml.writeAttribute(QStringLiteral("name"), QStringLiteral("norda-bench"));
    xml.writeAttribute(QStringLiteral("tests"), QString::number(results.size()));
    xml.writeAttribute(QStringLiteral("failures"), QString::number(failedIn(results)));
    for (const ScenarioResult &result : results)
        writeCase(&xml, result);
    xml.writeEndDocument();
    return true;
}
