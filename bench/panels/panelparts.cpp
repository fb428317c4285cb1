#include "panels/panelparts.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>

QLineEdit *makeFilter(const QString &hint)
{
    auto *filter = new QLineEdit;
    filter->setPlaceholderText(hint);
    filter->setClearButtonEnabled(true);
    return filter;
}

QTableView *makeTable(QAbstractItemModel *model)
{
    auto *table = new QTableView;
    table->setModel(model);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // the tool tip has the whole text
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(24);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return table;
}

QString secondsText(qint64 ms)
{
    return QString::number(double(ms) / 1000, 'f', 3);
}
