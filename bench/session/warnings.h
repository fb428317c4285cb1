#pragma once

#include <QStringList>

/** Counts warnings while it exists, and forwards every message. */
class Warnings
{
public:
    Warnings();
    ~Warnings();
    Q_DISABLE_COPY(Warnings)

    static int count();
    /** The first ones, for a summary. */
    static QStringList first();
};
