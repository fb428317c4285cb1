#pragma once

#include <QStringList>

/** Counts warnings while it lives, and passes every message on. */
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
