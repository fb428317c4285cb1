#include "palette.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

void night::apply(QApplication *application, const QString &style)
{
    QApplication::setStyle(QStyleFactory::create(style));
    QPalette colors;
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
    application->setPalette(colors);
    application->setFont(QFont(QStringLiteral("Arial"), 10));
}
