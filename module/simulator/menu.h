#pragma once

#include "emissionqueue.h"

#include <QHash>
#include <QVector>

namespace module {

/** The module's version: a letter and three numbers. */
QStringList versionTexts();

/**
 * The module's configuration menu: pages of lines, each of which opens a page, changes a value or
 * has an action. The module remembers the page that it sent last.
 */
class Menu
{
public:
    Menu();

    /** The head unit requests the menu, or leaves a page: one level up. */
    void back(EmissionQueue *out, qint64 atMs);
    /** A line was touched. @param line  from 2; an unknown one sends the page again */
    void select(EmissionQueue *out, qint64 atMs, int line);

    /** The title of the page that was sent last. */
    QString title() const;

private:
    void send(EmissionQueue *out, qint64 atMs) const;
    QVector<int> children(int page) const;
    QString valueText(int entry) const;

    QHash<int, int> m_choices; // by entry, the index of its value
    int m_page = 0;
};

} // namespace module
