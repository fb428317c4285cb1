#pragma once

#include <QString>

class QAbstractItemModel;
class QLineEdit;
class QTableView;
class QTimer;
class QWidget;

// What the panels have in common.

QLineEdit *makeFilter(const QString &hint);
/** A table of whole rows that can be selected and copied. */
QTableView *makeTable(QAbstractItemModel *model);

/** A moment in seconds, with thousandths. */
QString secondsText(qint64 ms);

/** A panel's clock: it runs once after something happened, and not at all while nothing does. */
void startsWhenNeeded(QTimer *refresh);
/** Something happened: a panel that can be seen will look again. */
void wake(const QWidget *panel, QTimer *refresh);
