#include "panels/panelparts.h"

#include "panels/filterfield.h"

PanelTable *makeTable(QAbstractItemModel *model, const QString &name)
{
    auto *table = new PanelTable(model);
    table->setObjectName(name);
    return table;
}

QLineEdit *makeFilter(const QString &hint, PanelTable *table)
{
    auto *filter = new FilterField(hint);
    filter->setObjectName(table->objectName() + QStringLiteral("-filter"));
    QObject::connect(filter, &FilterField::left, table, &PanelTable::enter);
    return filter;
}

QString secondsText(qint64 ms)
{
    return QString::number(double(ms) / 1000, 'f', 3);
}
