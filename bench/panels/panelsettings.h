#pragma once

#include <QSettings>

/** The settings of the bench, which the panels keep theirs in. */
class PanelSettings : public QSettings
{
public:
    PanelSettings() : QSettings(QStringLiteral("norda"), QStringLiteral("bench")) {}
};
