#pragma once

#include "emissionqueue.h"

#include <QHash>
#include <QVector>

namespace module {

/** The module's version as its About page takes it: a letter and three numbers. */
QStringList versionTexts();

/**
 * The module's configuration menu: pages of lines, of which one opens a page, changes a value or
 * does something. The module remembers which page the head unit was sent last.
 */
class Menu
{
public:
    Menu();

    /** The head unit asks for the menu, or goes back from a page: one level up. */
    void back(EmissionQueue *out, qint64 atMs);
    /** A line was touched. @param line  from 2; one that the page does not have says it again */
    void select(EmissionQueue *out, qint64 atMs, int line);

    /** The title of the page that was sent last. */
    QString title() const;

private:
    void send(EmissionQueue *out, qint64 atMs) const;
    QVector<int> children(int page) const;
    QString valueText(int entry) const;
    void reset();

    QHash<int, int> m_choices; // by entry: which of its values is set
    int m_page = 0;
};

} // namespace module
