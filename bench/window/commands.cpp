#include "window/commands.h"

#include "pages.h"

#include <QCoreApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>

struct FixedRow
{
    const char *name;
    const char *menu;
    const char *text;
    const char *key;
    const char *what;
};

// An empty name separates groups of a menu. The pages follow the heading of their menu.
// clang-format off
static constexpr FixedRow fixedRows[] = {
    {"open", "&File", "&Open drive...", "Ctrl+O", "Open a recorded drive"},
    {"recent", "&File", "Open &recent", "", "Open a drive again"},
    {"simulator", "&File", "S&imulated car", "Ctrl+N", "Drive the simulated car"},
    {"connect", "&File", "&Connect to a car...", "Ctrl+K", "Drive a car that is connected"},
    {"", "&File", "", "", ""},
    {"record", "&File", "Start &recording...", "Ctrl+R", "Start or stop a recording"},
    {"save-scenario", "&File", "&Save session as scenario...", "Ctrl+S", "Save the session as a scenario"},
    {"save-report", "&File", "Save repor&t...", "Ctrl+T", "Save a report on the session"},
    {"screenshot", "&File", "Save &picture of the screen", "F12", "Save a picture of the unit's screen"},
    {"", "&File", "", "", ""},
    {"quit", "&File", "&Quit", "Ctrl+Q", "Quit"},
    {"", "&Page", "", "", ""},
    {"split", "&Page", "&Split view", "S", "Show the camera beside the parking page or not"},
    {"back", "&Page", "&Back", "Esc", "Go back to the page before; in a field, clear it, then leave it"},
    {"play", "&Drive", "&Play or pause", "Space", "Play or pause; return to live from a rewound screen"},
    {"next", "&Drive", "&Next event", ".", "Pause and step to the next event"},
    {"previous", "&Drive", "Pre&vious event", ",", "Rewind to the event before"},
    {"live", "&Drive", "Return to &live", "End", "Return to live from a rewound screen"},
    {"time", "&Drive", "&Go to time", "T", "Type a time into the clock"},
    {"faster", "&Drive", "&Faster", "+", "Drive faster"},
    {"slower", "&Drive", "Slo&wer", "-", "Drive slower"},
    {"", "&Drive", "", "", ""},
    {"bookmark", "&Drive", "Add &bookmark", "B", "Mark this moment"},
    {"bookmarks", "&Drive", "Boo&kmarks", "", "Rewind to a marked moment"},
    {"", "&Drive", "", "", ""},
    {"repeat-from", "&Drive", "Repeat fr&om here", "I", "Begin the repeated part here"},
    {"repeat-to", "&Drive", "Repeat &up to here", "O", "End the repeated part here, and repeat it"},
    {"repeat-off", "&Drive", "Stop &repeating", "L", "Stop repeating"},
    {"fullscreen", "&View", "&Full screen", "F11", "Show the unit's screen alone, or with the bench again"},
    {"fit", "&View", "F&it to window", "Ctrl+0", "Fit the unit's screen to the window"},
    {"larger", "&View", "&Larger screen", "Ctrl++", "Show the unit's screen larger"},
    {"smaller", "&View", "S&maller screen", "Ctrl+-", "Show the unit's screen smaller"},
    {"", "&View", "", "", ""},
    {"layout-small", "&View", "&Small layout", "Ctrl+1", "Arrange the panels for a small display"},
    {"layout-normal", "&View", "&Normal layout", "Ctrl+2", "Arrange the panels for a usual display"},
    {"layout-wide", "&View", "&Wide layout", "Ctrl+3", "Arrange the panels for a wide display"},
    {"layout-reset", "&View", "&Reset layout", "Ctrl+4", "Arrange the panels as at the first start"},
    {"", "&View", "", "", ""},
    {"", "&View", "", "", ""},
    {"language-en", "&View", "Unit in &English", "", "Show the unit's own texts in English"},
    {"language-de", "&View", "Unit in &German", "", "Show the unit's own texts in German"},
    {"language-fr", "&View", "Unit in Frenc&h", "", "Show the unit's own texts in French"},
    {"language-es", "&View", "Unit in S&panish", "", "Show the unit's own texts in Spanish"},
    {"", "&View", "", "", ""},
    {"theme-auto", "&View", "&Colours of the desktop", "", "Make the bench light or dark as the desktop is"},
    {"theme-light", "&View", "Ligh&t", "", "Make the bench light"},
    {"theme-dark", "&View", "&Dark", "", "Make the bench dark"},
    {"service", "Pa&nels", "&Drive", "F4", "Show or hide the Drive panel"},
    {"signals", "Pa&nels", "&Signals", "F5", "Show or hide the Signals panel"},
    {"calls", "Pa&nels", "&Calls", "F6", "Show or hide the Calls panel"},
    {"car", "Pa&nels", "C&ar", "F7", "Show or hide the Car panel"},
    {"inspector", "Pa&nels", "&Inspector", "F8", "Show or hide the Inspector"},
    {"timeline", "Pa&nels", "&Timeline", "F9", "Show or hide the Timeline"},
    {"plots", "Pa&nels", "&Plots", "P", "Show or hide the Plots panel"},
    {"warnings", "Pa&nels", "&Warnings", "W", "Show or hide the Warnings panel"},
    {"audio", "Pa&nels", "A&udio monitor", "A", "Show or hide the Audio monitor"},
    {"recreate", "De&veloper", "&Recreate page", "", "Destroy the page and create it again"},
    {"deny-focus", "De&veloper", "&Deny audio focus", "", "Deny the module's voice the audio focus"},
    {"trace", "De&veloper", "&Trace output", "", "Print the plugin's trace output"},
    {"keys", "&Help", "&Keys", "F1", "List all keys"},
    {"about", "&Help", "&About the bench", "", "Show the bench's version"},
};
// clang-format on

static const char pageMenu[] = "&Page";

static QVector<CommandRow> pageRows()
{
    QVector<CommandRow> rows;
    for (const Page &page : pages) {
        rows.append({QStringLiteral("page-%1").arg(page.window), Commands::tr(pageMenu),
                     Commands::tr(page.name), QString::number(&page - pages + 1),
                     Commands::tr("Open the page %1").arg(Commands::tr(page.name))});
    }
    return rows;
}

static QVector<CommandRow> allRows()
{
    QVector<CommandRow> rows;
    for (const FixedRow &row : fixedRows) {
        const bool beginsPages =
            qstrcmp(row.menu, pageMenu) == 0 &&
            (rows.isEmpty() || rows.constLast().menu != Commands::tr(pageMenu));
        if (beginsPages)
            rows += pageRows();
        rows.append({QLatin1String(row.name), Commands::tr(row.menu), Commands::tr(row.text),
                     QLatin1String(row.key), Commands::tr(row.what)});
    }
    return rows;
}

const QVector<CommandRow> &commandRows()
{
    static const QVector<CommandRow> rows = allRows();
    return rows;
}

const CommandRow &commandRow(const QString &name)
{
    const QVector<CommandRow> &rows = commandRows();
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [&name](const CommandRow &row) { return row.name == name; });
    Q_ASSERT(found != rows.end());
    return *found;
}

QString commandTip(const QString &name)
{
    const CommandRow &row = commandRow(name);
    return row.key.isEmpty() ? row.what : QStringLiteral("%1 (%2)").arg(row.what, row.key);
}

QString keysText()
{
    QString text;
    for (const CommandRow &row : commandRows()) {
        if (!row.key.isEmpty())
            text += QStringLiteral("  %1 %2\n").arg(row.key, -8).arg(row.what);
    }
    return text;
}

Commands::Commands(QMainWindow *window) : QObject(window)
{
    for (const CommandRow &row : commandRows()) {
        QMenu *&menu = m_menus[row.menu];
        if (!menu)
            menu = window->menuBar()->addMenu(row.menu);
        if (row.name.isEmpty()) {
            menu->addSeparator();
            continue;
        }
        QAction *action = menu->addAction(row.text);
        action->setObjectName(row.name);
        action->setShortcut(QKeySequence(row.key, QKeySequence::PortableText));
        action->setToolTip(commandTip(row.name));
        window->addAction(action); // its key works while the menu bar is hidden
        m_actions.insert(row.name, action);
    }
}

QAction *Commands::action(const QString &name) const
{
    QAction *action = m_actions.value(name);
    Q_ASSERT(action);
    return action;
}

QMenu *Commands::menuOf(const QString &name) const
{
    return m_menus.value(commandRow(name).menu);
}
