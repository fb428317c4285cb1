#pragma once

#include "recording.h"
#include "session/setup.h"
#include "tools/themecolors.h"

#include <QString>
#include <QStringList>

#include <optional>

/** The command line, checked. */
struct Options
{
    Setup setup;
    bool speedGiven = false;
    QString serve; ///< the bus on which the module is offered, empty for none
    QString gallery;
    QString summary;
    QString report; ///< a folder for a page about the run
    QString plugin;
    QString platform;                 ///< of Qt, empty for its own choice
    QString style;                    ///< of the bench's own controls
    std::optional<theme::Mode> theme; ///< of the bench's own windows
    QStringList scripts;              ///< scenarios to play, files or folders of them
    QString junit;                    ///< the report on them
    QString check;                    ///< a plugin to examine
    QStringList diff;                 ///< two recordings to compare, or none
    QString cut;                      ///< a recording to write a part of
    qint64 fromMs = 0;
    qint64 toMs = qint64(module::longestDriveMs);
    bool checksMap = false;   ///< of the setup's car
    bool suggestsMap = false; ///< for the setup's DBC file
    bool headless = false;
    bool trace = false;
    double scale = 0; ///< of the screen in the window, 0 to fit it
    QString text;     ///< what --help or --version prints; everything else is unset then

    /** Whether the work needs no head unit. */
    bool isTool() const
    {
        return !check.isEmpty() || !diff.isEmpty() || !cut.isEmpty() || checksMap || suggestsMap;
    }

    /**
     * @param arguments  with the program's name first
     * @param error      one line that names the option and what it expects
     * @return false when the arguments cannot be used
     */
    bool parse(const QStringList &arguments, QString *error);
    /**
     * Makes the folders for the results, and checks that none replaces another or what is read.
     * @param error  one line that names the folder or the file
     */
    bool prepareResults(QString *error);
    /** What the run reads, and its results: no picture and no saved scenario replaces them. */
    output::InputFiles filesInUse() const;
    /** The page in the folder for it; empty for none. */
    QString reportFile() const;
};
