// Files of any content as scenarios: steps that can be written down again, or one line that says
// what is wrong.

#include "fuzzinput.h"
#include "scenario.h"

#include <QCoreApplication>
#include <QTemporaryFile>

static QTemporaryFile *file;

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    new QCoreApplication(*argc, *argv);
    file = new QTemporaryFile;
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return file->open() ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    file->resize(0);
    file->seek(0);
    file->write(reinterpret_cast<const char *>(data), qint64(size));
    file->flush();

    Scenario scenario;
    QString error;
    if (!scenario.read(file->fileName(), &error)) {
        if (error.isEmpty() || error.contains(QLatin1Char('\n')))
            std::abort();
        return 0;
    }
    qint64 last = 0;
    for (const ScenarioStep &step : qAsConst(scenario.steps)) {
        QVariantList words;
        if (step.ms < last || !splitScenarioLine(step.text, &words, &error))
            std::abort();
        if (scenarioLine(words[0].toString(), words.mid(1)) != step.text)
            std::abort(); // what is read is what was written
        last = step.ms;
    }
    return 0;
}
