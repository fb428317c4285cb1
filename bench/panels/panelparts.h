#pragma once

#include "panels/paneltable.h"

#include <QString>

class QLineEdit;

// Parts that the panels share.

PanelTable *makeTable(QAbstractItemModel *model, const QString &name);
/** @param table  what it filters: Enter goes there */
QLineEdit *makeFilter(const QString &hint, PanelTable *table);

/** A moment in seconds, with thousandths. */
QString secondsText(qint64 ms);
