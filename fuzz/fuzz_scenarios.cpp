// Files of any content as scenarios: steps that can be written down again, or one line that says
// what is wrong.

#include "inputfile.h"
#include "scenario/scenario.h"
#include "scenario/scenarioline.h"

static InputFile *file;

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    file = new InputFile(argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString path = file->hold(data, size);

    Scenario scenario;
    QString error;
    if (!scenario.read(path, &error)) {
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
