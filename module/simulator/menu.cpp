#include "menu.h"

#include "wire.h"

#include <iterator>

namespace module {

enum EntryKind { Submenu, Value, Reset, Up };

struct Entry
{
    int parent; // the index of its page in the table
    EntryKind kind;
    const char *text;
    const char *values; // of a value entry, separated by bars; the first one is the default
};

enum PageNumber { Main, Units, Tires, Lights, Ambient, Locks, Parking, Gauges, ResetPage };

// clang-format off
static constexpr Entry entries[] = {
    /* Main */      {-1,        Submenu, "Vehicle settings",          nullptr},
    /* Units */     {Main,      Submenu, "Units",                     nullptr},
    /* Tires */     {Main,      Submenu, "Tires",                     nullptr},
    /* Lights */    {Main,      Submenu, "Lights",                    nullptr},
    /* Ambient */   {Lights,    Submenu, "Ambient light",             nullptr},
    /* Locks */     {Main,      Submenu, "Doors and locks",           nullptr},
    /* Parking */   {Main,      Submenu, "Parking assist",            nullptr},
    /* Gauges */    {Main,      Submenu, "Gauges and alerts",         nullptr},
    /* ResetPage */ {Main,      Submenu, "Reset all settings?",       nullptr},

    // A page has no more lines than its parent: the head unit does not clear its rows when it
    // requests the menu from another page.
    {Main,      Value,   "Voice prompts",       "On|Off"},
    {Main,      Value,   "Alert tone",          "On|Off"},
    {Main,      Value,   "Speed alert",         "Off|On"},
    {Main,      Value,   "Ice warning",         "On|Off"},
    {Main,      Value,   "Low fuel at",         "2 gallons|3 gallons|1 gallon"},
    {Main,      Value,   "Service alert every", "3000 miles|5000 miles|7500 miles"},
    {Main,      Value,   "Start-up sweep",      "On|Off"},
    {Main,      Value,   "Clock",               "12 hours|24 hours"},

    {Units,     Value,   "Speed",               "mph|km/h"},
    {Units,     Value,   "Temperature",         "\u00B0F|\u00B0C"},
    {Units,     Value,   "Pressure",            "psi|bar|kPa"},
    {Units,     Value,   "Fuel economy",        "mpg|l/100 km"},

    {Tires,     Value,   "Low front threshold", "28 psi|29 psi|30 psi|26 psi|27 psi"},
    {Tires,     Value,   "Low rear threshold",  "28 psi|29 psi|30 psi|26 psi|27 psi"},
    {Tires,     Value,   "Pressure warning",    "On|Off"},

    {Lights,    Value,   "Headlights off after","30 s|60 s|90 s|0 s"},
    {Lights,    Value,   "Daytime lights",      "On|Off"},
    {Lights,    Value,   "Greeting lights",     "Off|On"},
    {Ambient,   Value,   "Colour",              "Ice blue|White|Amber|Red|Green"},
    {Ambient,   Value,   "Brightness",          "3|4|5|1|2"},
    {Ambient,   Value,   "Footwell",            "On|Off"},

    {Locks,     Value,   "Lock while driving",  "On|Off"},
    {Locks,     Value,   "Unlock on exit",      "All doors|Driver door"},
    {Locks,     Value,   "Horn on locking",     "Off|On"},

    {Parking,   Value,   "Tone volume",         "Medium|High|Low"},
    {Parking,   Value,   "Front sensors",       "On|Off"},
    {Parking,   Value,   "Rear sensors",        "On|Off"},
    {Parking,   Value,   "Blind spot warning",  "On|Off"},

    {Gauges,    Value,   "Engine hot at",       "240 \u00B0F|250 \u00B0F|230 \u00B0F"},
    {Gauges,    Value,   "Oil hot at",          "260 \u00B0F|270 \u00B0F|250 \u00B0F"},
    {Gauges,    Value,   "Low voltage at",      "11.8 V|12.0 V|11.5 V"},
    {Gauges,    Value,   "Shift lamp at",       "5600 rpm|6000 rpm|5200 rpm"},
    {Gauges,    Value,   "Shift lamp",          "On|Off"},
    {Gauges,    Value,   "Peak hold",           "On|Off"},
    {Gauges,    Value,   "Needle speed",        "Normal|Fast|Slow"},
    {Gauges,    Value,   "Top left gauge",      "Transmission|Oil|Ambient"},

    {ResetPage, Reset,   "Yes, restore the factory settings", nullptr},
    {ResetPage, Up,      "No",                                nullptr},
};
// clang-format on
static constexpr int mostLines = 15;

QStringList versionTexts()
{
    return {QStringLiteral("V"), QStringLiteral("3"), QStringLiteral("12"), QStringLiteral("7")};
}

Menu::Menu() = default;

QString Menu::title() const
{
    return QString::fromUtf8(entries[m_page].text);
}

QVector<int> Menu::children(int page) const
{
    QVector<int> found;
    for (int i = 0; i < int(std::size(entries)); ++i) {
        if (entries[i].parent == page)
            found.append(i);
    }
    return found.mid(0, mostLines);
}

QString Menu::valueText(int entry) const
{
    return QString::fromUtf8(entries[entry].values)
        .section(QLatin1Char('|'), m_choices.value(entry), m_choices.value(entry));
}

void Menu::back(EmissionQueue *out, qint64 atMs)
{
    m_page = qMax<int>(Main, entries[m_page].parent);
    send(out, atMs);
}

void Menu::select(EmissionQueue *out, qint64 atMs, int line)
{
    static constexpr int firstLine = wire::titleNumber + 1;
    const QVector<int> lines = children(m_page);
    const int entry = line >= firstLine ? lines.value(line - firstLine, -1) : -1;
    if (entry >= 0 && entries[entry].kind == Submenu) {
        m_page = entry;
    } else if (entry >= 0 && entries[entry].kind == Value) {
        const int values = QByteArray(entries[entry].values).count('|') + 1;
        m_choices[entry] = (m_choices.value(entry) + 1) % values;
    } else if (entry >= 0) {
        if (entries[entry].kind == Reset)
            m_choices.clear();
        m_page = Main;
    }
    send(out, atMs);
}

/** Sends a page at once: its title, then line by line. Cancels what is left of another one. */
void Menu::send(EmissionQueue *out, qint64 atMs) const
{
    static const QByteArray signal = "NordaConfigMenuTextInfo";
    out->cancel(signal);
    const auto add = [out, atMs](int type, int line, const QStringList &label,
                                 const QStringList &value) {
        out->add(atMs, signal, {QVariant::fromValue(QList<int>{type, 0, line}), label, value});
    };
    int line = wire::titleNumber;
    add(wire::TitleLine, line, {title()}, {});
    for (const int entry : children(m_page)) {
        const QString text = QString::fromUtf8(entries[entry].text);
        if (entries[entry].kind == Value)
            add(wire::ValueLine, ++line, {text, QStringLiteral(":  ")}, {valueText(entry)});
        else
            add(wire::ItemLine, ++line, {text}, {});
    }
}

} // namespace module
