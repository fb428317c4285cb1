#include "plots/curvelegend.h"

#include "panels/panelparts.h"
#include "plots/curvelist.h"

#include <QAction>
#include <QHeaderView>

#include <cmath>

static QIcon swatch(const QColor &color)
{
    static constexpr int side = 10;
    QPixmap pixmap(side, side);
    pixmap.fill(color);
    return QIcon(pixmap);
}

CurveLegend::CurveLegend(CurveList *curves, QWidget *parent) : QTreeWidget(parent), m_curves(curves)
{
    static constexpr int crossWidth = 24;
    setObjectName(QStringLiteral("plotLegend"));
    setColumnCount(ColumnCount);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    header()->setStretchLastSection(false);
    header()->setMinimumSectionSize(crossWidth);
    header()->setSectionResizeMode(Name, QHeaderView::Stretch);
    header()->setSectionResizeMode(Value, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(Remove, QHeaderView::Fixed);
    header()->resizeSection(Remove, crossWidth);
    header()->setSectionsClickable(false);
    auto *remove = new QAction(tr("Remove"), this);
    remove->setShortcut(QKeySequence::Delete);
    remove->setShortcutContext(Qt::WidgetShortcut);
    addAction(remove);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(remove, &QAction::triggered, this, [this] { removeRow(currentItem()); });
    connect(this, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem *row, int column) {
        if (column == Remove)
            removeRow(row);
    });
    // Not at once: a row is not deleted while it handles its own click.
    connect(curves, &CurveList::changed, this, &CurveLegend::rebuild, Qt::QueuedConnection);
    rebuild();
}

void CurveLegend::rebuild()
{
    clear();
    for (const CurveList::Item &item : m_curves->items()) {
        auto *row = new QTreeWidgetItem(this, {item.curve->name(), {}, QStringLiteral("\u00D7")});
        row->setIcon(Name, swatch(item.color));
        row->setToolTip(Name, item.curve->name());
        row->setToolTip(Remove, tr("Remove this curve"));
        row->setTextAlignment(Value, Qt::AlignRight | Qt::AlignVCenter);
        row->setTextAlignment(Remove, Qt::AlignCenter);
    }
    updateGeometry();
}

void CurveLegend::removeRow(QTreeWidgetItem *row)
{
    if (row)
        m_curves->remove(row->text(Name));
}

static QString valueText(const Curve &curve, qint64 ms)
{
    const double value = curve.samples().valueAtMs(ms);
    if (std::isnan(value))
        return QStringLiteral("\u2013");
    return (QString::number(value, 'g', 7) + QLatin1Char(' ') + curve.unit()).trimmed();
}

void CurveLegend::showMoment(qint64 ms)
{
    setHeaderLabels({tr("At %1 s").arg(secondsText(ms)), QString(), QString()});
    for (int i = 0; i < topLevelItemCount(); ++i) {
        for (const CurveList::Item &item : m_curves->items()) {
            if (item.curve->name() == topLevelItem(i)->text(Name))
                topLevelItem(i)->setText(Value, valueText(*item.curve, ms));
        }
    }
}

QSize CurveLegend::sizeHint() const
{
    static constexpr int width = 320;
    static constexpr int mostRows = 4;
    const int row = qMax(fontMetrics().height() + 4, sizeHintForRow(0));
    return {width, header()->sizeHint().height() + qBound(1, topLevelItemCount(), mostRows) * row +
                       2 * frameWidth()};
}
