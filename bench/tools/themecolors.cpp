#include "tools/themecolors.h"

#include "palette.h"

#include <QPalette>

#include <iterator>

static constexpr const char *names[] = {"auto", "light", "dark"};

bool theme::modeFromName(const QString &name, Mode *mode)
{
    for (int i = 0; i < int(std::size(names)); ++i) {
        if (name != QLatin1String(names[i]))
            continue;
        *mode = Mode(i);
        return true;
    }
    return false;
}

QString theme::nameOf(Mode mode)
{
    return QLatin1String(names[int(mode)]);
}

// Ink on paper.
static const theme::Colors lightColors = {
    QColor(0xF4, 0xF2, 0xED), // window
    QColor(0xFD, 0xFC, 0xFA), // panel
    QColor(0xD3, 0xCE, 0xC4), // hairline
    QColor(0xB4, 0xD8, 0xE7), // selection
    QColor(0x1B, 0x24, 0x2D), // text
    QColor(0x55, 0x60, 0x6B), // secondary
    QColor(0x8A, 0x90, 0x96), // faded
    QColor(0x00, 0x69, 0x8C), // accent
    QColor(0x8F, 0x58, 0x00), // amber
    QColor(0xB8, 0x26, 0x26), // red
    QColor(0x1B, 0x75, 0x46), // green
    QColor(0x6A, 0x3F, 0xB5), // violet
};

static const theme::Colors darkColors = {
    night::background,
    night::panel,
    night::hairline,
    QColor(0x1D, 0x60, 0x78), // selection
    night::text,
    night::secondary,
    QColor(0x72, 0x7E, 0x8A), // faded
    night::accent,
    night::amber,
    night::red,
    QColor(0x41, 0xD9, 0x8D), // green
    QColor(0xC3, 0x9B, 0xFF), // violet
};

bool theme::isLight(const QPalette &palette)
{
    return palette.color(QPalette::WindowText).lightness() <
           palette.color(QPalette::Window).lightness();
}

const theme::Colors &theme::colors(bool light)
{
    return light ? lightColors : darkColors;
}

const theme::Colors &theme::colors(const QPalette &palette)
{
    return colors(isLight(palette));
}

QPalette theme::palette(bool light)
{
    const Colors &c = colors(light);
    const std::pair<QPalette::ColorRole, QColor> roles[] = {
        {QPalette::Window, c.window},
        {QPalette::WindowText, c.text},
        {QPalette::Base, c.panel},
        {QPalette::AlternateBase, c.window},
        {QPalette::Text, c.text},
        {QPalette::PlaceholderText, c.secondary},
        {QPalette::Button, c.panel},
        {QPalette::ButtonText, c.text},
        {QPalette::BrightText, c.red},
        {QPalette::ToolTipBase, c.panel},
        {QPalette::ToolTipText, c.text},
        {QPalette::Highlight, c.selection},
        {QPalette::HighlightedText, c.text},
        {QPalette::Link, c.accent},
        {QPalette::LinkVisited, c.violet},
        // What a style shades edges with.
        {QPalette::Light, c.panel.lighter(light ? 100 : 120)},
        {QPalette::Midlight, c.hairline.lighter(110)},
        {QPalette::Mid, c.hairline},
        {QPalette::Dark, c.hairline.darker(130)},
        {QPalette::Shadow, light ? c.secondary : QColor(Qt::black)},
    };
    QPalette palette;
    for (const auto &[role, color] : roles)
        palette.setColor(role, color);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, c.faded);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, c.hairline);
    return palette;
}
