#include "palette.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

#include <memory>

/** A palette with the same brushes, all of them set: none comes from elsewhere any more. */
static QPalette allSet(const QPalette &palette)
{
    QPalette all;
    for (int group = 0; group < QPalette::NColorGroups; ++group) {
        for (int role = 0; role < QPalette::NColorRoles; ++role)
            all.setBrush(QPalette::ColorGroup(group), QPalette::ColorRole(role),
                         palette.brush(QPalette::ColorGroup(group), QPalette::ColorRole(role)));
    }
    return all;
}

QPalette night::palette()
{
    QPalette colors =
        std::unique_ptr<QStyle>(QStyleFactory::create(QStringLiteral("Fusion")))->standardPalette();
    colors.setColor(QPalette::Window, background);
    colors.setColor(QPalette::WindowText, text);
    colors.setColor(QPalette::Base, panel);
    colors.setColor(QPalette::AlternateBase, background);
    colors.setColor(QPalette::Text, text);
    colors.setColor(QPalette::Button, panel);
    colors.setColor(QPalette::ButtonText, text);
    colors.setColor(QPalette::ToolTipBase, panel);
    colors.setColor(QPalette::ToolTipText, text);
    colors.setColor(QPalette::Highlight, accent.darker(160));
    colors.setColor(QPalette::HighlightedText, text);
    colors.setColor(QPalette::PlaceholderText, secondary);
    colors.setColor(QPalette::Disabled, QPalette::Text, secondary.darker(160));
    colors.setColor(QPalette::Disabled, QPalette::ButtonText, secondary.darker(160));
    return allSet(colors);
}

QFont night::letters(int pixels, bool bold)
{
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

void night::apply(QApplication *application, const QString &style)
{
    QApplication::setStyle(QStyleFactory::create(style));
    application->setPalette(palette());
    application->setFont(QFont(QStringLiteral("Arial"), 10));
}
