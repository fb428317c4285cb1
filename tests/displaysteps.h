#pragma once

#include <QStringList>

/** The flags that the popup and the list step were run with, read from their traces. */
inline QStringList displaySteps(const QStringList &lines)
{
    QStringList found;
    for (const QString &line : lines) {
        for (const char *step :
             {"createPopup", "createListview", "createSecondPopup", "createSecondListview"}) {
            if (line.contains(QLatin1String(step)))
                found.append(QLatin1String(step) + line.mid(line.lastIndexOf(QLatin1Char(' '))));
        }
    }
    return found;
}
