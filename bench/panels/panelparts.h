#pragma once

#include <QString>

class QAbstractItemModel;
class QLineEdit;
class QTableView;

// Parts that the panels share.

QLineEdit *makeFilter(const QString &hint);
/** A table of whole rows that can be selected and copied. */
QTableView *makeTable(QAbstractItemModel *model);

/** A moment in seconds, with thousandths. */
QString secondsText(qint64 ms);
