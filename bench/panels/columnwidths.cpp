#include "panels/columnwidths.h"

#include "window/benchsettings.h"

#include <QAction>
#include <QEvent>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTableView>

#include <algorithm>

ColumnWidths::ColumnWidths(QTableView *table, const QVector<Column> &columns, int stretched)
    : QObject(table)
    , m_table(table)
    , m_name(table->objectName())
    , m_columns(columns)
    , m_kept(columns.size())
    , m_stretched(stretched)
{
    QHeaderView *header = table->horizontalHeader();
    header->setMinimumSectionSize(pixels(3));
    header->setSectionResizeMode(QHeaderView::Interactive);
    header->setSectionResizeMode(stretched, QHeaderView::Stretch);
    const BenchSettings settings;
    for (int i = 0; i < m_kept.size(); ++i)
        m_kept[i] = settings.value(key(i)).toInt();
    auto *reset = new QAction(tr("Reset columns"), header);
    reset->setObjectName(QStringLiteral("reset-columns"));
    header->addAction(reset);
    header->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(reset, &QAction::triggered, this, &ColumnWidths::reset);
    connect(header, &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (!m_isLayingOut && column != m_stretched)
            m_kept[column] = width;
    });
    table->viewport()->installEventFilter(this);
}

/** Not while a column is dragged, which would write a file for each step. */
ColumnWidths::~ColumnWidths()
{
    BenchSettings settings;
    for (int i = 0; i < m_kept.size(); ++i) {
        if (m_kept[i] == 0)
            settings.remove(key(i));
        else
            settings.setValue(key(i), m_kept[i]);
    }
}

bool ColumnWidths::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        layOut();
    return false;
}

int ColumnWidths::pixels(int characters) const
{
    static constexpr int margins = 8;
    return characters * m_table->fontMetrics().averageCharWidth() + margins;
}

void ColumnWidths::hideWhatHasNoRoom(int width)
{
    QVector<int> byRank;
    for (int i = 0; i < m_columns.size(); ++i)
        byRank.append(i);
    std::stable_sort(byRank.begin(), byRank.end(),
                     [this](int a, int b) { return m_columns[a].rank < m_columns[b].rank; });
    int used = 0;
    for (const int column : qAsConst(byRank)) {
        used += pixels(m_columns[column].least);
        m_table->setColumnHidden(column, m_columns[column].rank > 0 && used > width);
    }
}

/** Two thirds of the space to spare go to the other columns, until they have what they need. */
void ColumnWidths::layOut()
{
    const QScopedValueRollback<bool> layingOut(m_isLayingOut, true);
    const int width = m_table->viewport()->width();
    hideWhatHasNoRoom(width);
    int least = 0;
    int growth = 0;
    for (int i = 0; i < m_columns.size(); ++i) {
        if (m_table->isColumnHidden(i))
            continue;
        least += pixels(m_columns[i].least);
        if (i != m_stretched)
            growth += pixels(m_columns[i].most) - pixels(m_columns[i].least);
    }
    const double grown = growth ? qBound(0.0, (width - least) / 1.5 / growth, 1.0) : 0;
    const double shrunk = qMin(1.0, double(width) / least);
    for (int i = 0; i < m_columns.size(); ++i) {
        const int lower = pixels(m_columns[i].least);
        const int fit = int(shrunk * (lower + grown * (pixels(m_columns[i].most) - lower)));
        if (i != m_stretched && !m_table->isColumnHidden(i))
            m_table->setColumnWidth(i, m_kept[i] ? qMin(m_kept[i], width / 2) : fit);
    }
}

QString ColumnWidths::key(int column) const
{
    return QStringLiteral("columns/%1/%2").arg(m_name).arg(column);
}

void ColumnWidths::reset()
{
    m_kept.fill(0);
    layOut();
}
