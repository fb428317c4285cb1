#include "panels/paneltable.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>

class MiddleElision : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->textElideMode = Qt::ElideMiddle;
    }
};

PanelTable::PanelTable(QAbstractItemModel *model, QWidget *parent) : QTableView(parent)
{
    setModel(model);
    setSelectionBehavior(SelectRows);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // the tooltip has the whole text
    setContextMenuPolicy(Qt::ActionsContextMenu);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connect(this, &QTableView::doubleClicked, this, &PanelTable::rowChosen);
}

void PanelTable::keyboardSearch(const QString &) {}

void PanelTable::elideInTheMiddle(int column)
{
    setItemDelegateForColumn(column, new MiddleElision(this));
}

QSize PanelTable::minimumSizeHint() const
{
    const int rows = 2 * verticalHeader()->defaultSectionSize();
    return {0, horizontalHeader()->sizeHint().height() + rows + 2 * frameWidth()};
}

void PanelTable::enter()
{
    setFocus(Qt::OtherFocusReason);
    if (!currentIndex().isValid() && model()->rowCount() > 0)
        selectRow(0);
}

/** The base class would take every key that has a text. */
static bool isForTheWindow(const QKeyEvent *event)
{
    return !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) &&
           !event->text().isEmpty();
}

void PanelTable::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && currentIndex().isValid())
        emit rowChosen(currentIndex());
    else if (isForTheWindow(event))
        event->ignore();
    else
        QTableView::keyPressEvent(event);
}
