#include "panels/callwords.h"

#include "audiostage.h"
#include "pages.h"
#include "simulator/climate.h"
#include "tools/headerwords.h"
#include "translator.h"

#include <QCoreApplication>
#include <QMetaEnum>

#include <algorithm>

static QString words(const char *text)
{
    return QCoreApplication::translate("CallWords", text);
}

/** A number and its name. */
struct Word
{
    int number;
    const char *text;
};

template <size_t Size>
static QString wordFor(const Word (&rows)[Size], int number)
{
    const auto *const found =
        std::find_if(std::begin(rows), std::end(rows),
                     [number](const Word &row) { return row.number == number; });
    return found == std::end(rows) ? QString() : words(found->text);
}

// clang-format off
static constexpr Word modulePages[] = {{SettingsRequest, "the configuration menu"},
                                       {VersionRequest, "the version"}};
static constexpr Word customKeys[] = {{0x12, "first key"}, {0x22, "second key"}};
static constexpr Word actions[] = {{1, "pressed"}, {2, "released"}};
static constexpr Word audioSources[] = {{7, "the module's voice"}};
static constexpr Word audioStates[] = {
    {21, "a warning tone begins"},      {22, "a warning tone ends"},
    {23, "voice information begins"},   {24, "voice information ends"},
    {25, "voice recognition begins"},   {26, "voice recognition ends"},
};
// What the unit plays or shows, by its own source numbers.
static constexpr Word sourceCodes[] = {
    {0x00, "source 5, or display 3"}, {0x01, "any other source"}, {0x02, "source 6 or 8"},
    {0x03, "source 33"},              {0x05, "source 10 or 11"},  {0x06, "source 13 or 14"},
    {0x07, "source 24 to 28"},        {0x09, "source 32"},        {0x0A, "source 36"},
    {0x0C, "source 12"},              {0x20, "source 15 to 19"},  {0x21, "source 20 to 23"},
    {0x80, "source 47"},              {0x81, "source 50"},        {0x82, "source 49"},
    {0x84, "source 48"},
};
// clang-format on

using Arguments = QVariantList;

static QString climateKey(const Arguments &arguments)
{
    return module::Climate::keyName(arguments.value(0).value<QMap<int, int>>());
}

static QString customKey(const Arguments &arguments)
{
    return wordFor(customKeys, arguments.value(0).toInt()) + QLatin1Char(' ') +
           wordFor(actions, arguments.value(1).toInt());
}

static QString action(const Arguments &arguments)
{
    return wordFor(actions, arguments.value(0).toInt());
}

static QString modulePage(const Arguments &arguments)
{
    return wordFor(modulePages, arguments.value(0).toInt());
}

static QString menuRow(const Arguments &arguments)
{
    return words("row %1").arg(arguments.value(0).toInt() - 1); // the title is line 1
}

static QString zone(const Arguments &arguments)
{
    return arguments.value(0).toBool() ? words("the rear zone is shown")
                                       : words("the front zone is shown");
}

static QString source(const Arguments &arguments)
{
    return wordFor(sourceCodes, arguments.value(0).toInt());
}

static QString touch(const Arguments &arguments)
{
    const auto code = Qx::Touch(arguments.value(0).toInt());
    if (code == Qx::TouchCamera)
        return words("the camera");
    const Page *page = pageWith(&Page::code, code);
    return page ? words("the %1 page").arg(words(page->name).toLower())
                : words("something of the host");
}

static QString share(const Arguments &arguments)
{
    return words("%1 % of the bar").arg(qRound(arguments.value(0).toInt() / 2.55));
}

static QString pressed(const Arguments &arguments)
{
    return arguments.value(0).toBool() ? words("pressed") : words("released");
}

static QString firstArgument(const Arguments &arguments)
{
    return arguments.value(0).toString();
}

static QString audioSource(const Arguments &arguments)
{
    return wordFor(audioSources, arguments.value(0).toInt());
}

static QString audioState(const Arguments &arguments)
{
    return wordFor(audioStates, arguments.value(0).toInt());
}

static QString speakers(const Arguments &arguments)
{
    return (arguments.value(1).toInt() ? words("%1 on") : words("%1 off"))
        .arg(speakerNames(arguments.value(0).toInt()));
}

static QString statusBar(const Arguments &arguments)
{
    return arguments.value(0).toBool() ? words("hidden") : words("shown");
}

static QString videoPath(const Arguments &arguments)
{
    static constexpr int split = 256;
    return arguments.value(1).toInt() & split ? words("split view") : words("whole screen");
}

static QString textName(const Arguments &arguments)
{
    return QLatin1String(
        QMetaEnum::fromType<Translator::TextId>().valueToKey(arguments.value(0).toInt()));
}

/** Where the words are null they are those of the adaptor's header. */
struct Meaning
{
    const char *ending; // of the operation
    const char *words;
    QString (*detail)(const Arguments &arguments);
};

// clang-format off
static constexpr Meaning meanings[] = {
    {"::NordatriggerRearDefrostButton",  "",                                     climateKey},
    {"CustomControls",                   "",                                     customKey},
    {"customCtrlsButton",                "",                                     customKey},
    {"Menu",                             nullptr,                                action},
    {"::NordaData_Request",              "Asks for a page of the module",        modulePage},
    {"::NordaSetSelectedLineNumber",     "Menu",                                 menuRow},
    {"manTempValue",                     "Temperature",                          share},
    {"fanDirectValue",                   "Fan",                                  share},
    {"UpButton",                         nullptr,                                pressed},
    {"DownButton",                       nullptr,                                pressed},
    {"IncButton",                        nullptr,                                pressed},
    {"DecButton",                        nullptr,                                pressed},
    {"rearZoneButton",                   nullptr,                                pressed},
    {"::connectService",                 "Connects to the vehicle service",      nullptr},
    {"::setClimateRearZone",             "",                                     zone},
    {"::syncRadioStatus",                "Reports what plays",                   source},
    {"::getFrontClimateControlFeatures", "Asks which front climate keys exist",  nullptr},
    {"::getRearClimateControlFeatures",  "Asks which rear climate keys exist",   nullptr},
    {"::getParkingAssistZones",          "Asks which parking sensors exist",     nullptr},
    {"norda::VtqAdaptor::",              nullptr,                                nullptr},

    {"TouchEvent",                       "",                                     touch},
    {"AudioManager::requestAudioFocus",  "Asks for the audio focus",             nullptr},
    {"AudioService::doBeep",             "Beep",                                 nullptr},
    {"AudioService::setMainAudioSource", "Audio source",                         audioSource},
    {"AudioService::setMainAudioStatus", "Audio",                                audioState},
    {"McuService::setMixChannel",        "Speakers",                             speakers},
    {"McuManager::triggerBeep",          "Beep of the microcontroller",          nullptr},
    {"SrcDsplCtrl::currentSrc",          "Asks what plays",                      nullptr},
    {"SrcDsplCtrl::currentDspl",         "Asks what is shown",                   nullptr},
    {"EventHandler::onEvent",            "Host event",                           firstArgument},
    {"StatusBarControl::sethide",        "Status bar",                           statusBar},
    {"::updateWarning",                  "Redraws the camera's warning",         nullptr},
    {"::setVideoPath",                   "Camera",                               videoPath},
    {"::getAudioFirmwareVersion",        "Asks for the audio firmware",          nullptr},
    {"Translator::text",                 "Asks for a text",                      textName},

    {"SettingsCache::getValue",          "Reads a shared value",                 firstArgument},
    {"SettingsCache::setValue",          "Sets a shared value",                  firstArgument},
    {"SettingsFunc::getValue",           "Reads a setting",                      firstArgument},
    {"SettingsFunc::setValue",           "Writes a setting",                     firstArgument},
    {"SettingsExe::getValue",            "Reads a settings file",                firstArgument},
    {"SettingsExe::setOtherPathValue",   "Writes a settings file",               firstArgument},

    {"BaseWindow::onCreate",             "Window created",                       nullptr},
    {"BaseWindow::onDestroy",            "Window destroyed",                     nullptr},
    {"BaseWindow::onShow",               "Window shown",                         nullptr},
    {"BaseWindow::onHide",               "Window hidden",                        nullptr},
    {"BaseWindow::onEnter",              "Window entered",                       nullptr},
    {"BaseWindow::onExit",               "Window left",                          nullptr},
    {"BaseWindow::attribute",            "Window's attributes are read",         nullptr},
    {"BaseWindow::keyEvent",             "Key left to the host",                 firstArgument},
    {"BaseWindow::setMainWidget",        "Window's widget",                      firstArgument},
    {"BaseWindow::deleteDelay",          "Window's widget is deleted",           nullptr},
    {"BaseWindow::setWindowAttribute",   "Window attribute",                     firstArgument},
};
// clang-format on

static bool isMeant(const Meaning &meaning, const QString &operation)
{
    const QString ending = QLatin1String(meaning.ending);
    return operation.endsWith(ending) ||
           (ending.endsWith(QLatin1String("::")) && operation.startsWith(ending));
}

QString meaningOfCall(const QString &operation, const QVariantList &arguments)
{
    const auto *const meaning =
        std::find_if(std::begin(meanings), std::end(meanings),
                     [&operation](const Meaning &row) { return isMeant(row, operation); });
    if (meaning == std::end(meanings))
        return {};
    const QString brief = headerWords(operation.section(QStringLiteral("::"), -1)).brief;
    QString about = meaning->words && *meaning->words ? words(meaning->words) : brief;
    const QString detail = meaning->detail ? meaning->detail(arguments).trimmed() : QString();
    if (detail.isEmpty())
        return about;
    return meaning->words && !*meaning->words ? detail : words("%1: %2").arg(about, detail);
}
