#pragma once

#include <QSettings>

/** What the bench's window remembers. */
class BenchSettings : public QSettings
{
public:
    BenchSettings() : QSettings(QStringLiteral("norda"), QStringLiteral("bench")) {}
};
