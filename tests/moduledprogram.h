#pragma once

#include "startedprogram.h"

/** norda-moduled in a process of its own. */
class ModuledProgram : public StartedProgram
{
public:
    /** @param launcher  a command that runs it, such as one that changes the user */
    explicit ModuledProgram(const QString &options, const QString &launcher = {})
        : StartedProgram(launcher + QLatin1Char(' ') + command() + QLatin1Char(' ') + options)
    {
    }

    static QString command() { return StartedProgram::command(QStringLiteral("norda-moduled")); }

    /** Waits until it serves. */
    bool serves() const { return !lineWith(QStringLiteral("serving ")).isEmpty(); }

    /** Waits for a line of its log. */
    bool logs(const QString &line, int nth = 0) const
    {
        const auto count = [&] { return err().split('\n').count("norda-moduled: " + line); };
        for (int i = 0; i < 3000 && count() <= nth; ++i)
            QThread::msleep(10);
        return count() > nth;
    }
};
