#include "panels/callwords.h"

#include "pages.h"
#include "simulator/climate.h"

#include <QCoreApplication>

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
    return page ? words("the %1 page").arg(words(page->name).toLower()) : QString();
}

static QString share(const Arguments &arguments)
{
    return words("%1 % of the bar").arg(qRound(arguments.value(0).toInt() / 2.55));
}

static QString pressed(const Arguments &arguments)
{
    return arguments.value(0).toBool() ? words("pressed") : words("released");
}

struct Meaning
{
    const char *ending; // of the operation
    QString (*text)(const Arguments &arguments);
};

// clang-format off
static constexpr Meaning meanings[] = {
    {"NordatriggerRearDefrostButton", climateKey},
    {"CustomControls",                customKey},
    {"customCtrlsButton",             customKey},
    {"Menu",                          action},
    {"NordaData_Request",             modulePage},
    {"NordaSetSelectedLineNumber",    menuRow},
    {"setClimateRearZone",            zone},
    {"syncRadioStatus",               source},
    {"TouchEvent",                    touch},
    {"manTempValue",                  share},
    {"fanDirectValue",                share},
    {"UpButton",                      pressed},
    {"DownButton",                    pressed},
    {"IncButton",                     pressed},
    {"DecButton",                     pressed},
};
// clang-format on

QString meaningOfCall(const QString &operation, const QVariantList &arguments)
{
    for (const Meaning &meaning : meanings) {
        if (operation.endsWith(QLatin1String(meaning.ending)) && !arguments.isEmpty())
            return meaning.text(arguments);
    }
    return {};
}
