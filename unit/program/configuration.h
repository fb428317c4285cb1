#pragma once

#include "pages.h"

#include <QString>
#include <QStringList>

/** What the unit is set up with: the configuration file, the environment and the command line. */
struct Configuration
{
    QString plugin;
    QString module;   ///< as `ServiceConnection::setAddress()` expects it
    QString data;     ///< where the settings are, empty for the host's own place
    QString language; ///< empty for the one that was chosen last
    QString style = QStringLiteral("Fusion");
    int page = firstPage; ///< opens where no other is restored
    bool restoresPage = true;
    bool showsCursor = false;

    QString text; ///< what --help or --version prints; everything else is unset then

    /**
     * Reads the file, then what overrides it. An application object must exist.
     * @param arguments  without the program's name and Qt's options
     * @param error      one line that names the file and its key or the option, and what it expects
     * @return false when something cannot be used
     */
    bool read(const QStringList &arguments, QString *error);
};
