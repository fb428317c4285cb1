#include "panels/inspectorpanel.h"

#include "panels/propertydelegate.h"
#include "panels/propertymodel.h"
#include "panels/widgetframe.h"
#include "panels/widgetpicker.h"
#include "panels/widgettreemodel.h"
#include "screen.h"

#include <QApplication>
#include <QDockWidget>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>

static constexpr int widgetWidth = 230;
static constexpr int propertyWidth = 170;

/** Shows what is hidden on the screen in the colour of disabled texts. */
class WidgetDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        static constexpr int rowHeight = 20;
        return QStyledItemDelegate::sizeHint(option, index).expandedTo({0, rowHeight});
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        const QColor faded = option->palette.color(QPalette::Disabled, QPalette::Text);
        if (index.data(WidgetTreeModel::HiddenRole).toBool())
            option->palette.setColor(QPalette::Text, faded);
    }
};

InspectorPanel::InspectorPanel(Screen *screen, QWidget *parent)
    : QWidget(parent)
    , m_screen(screen)
    , m_widgets(new WidgetTreeModel(screen, this))
    , m_shown(new QSortFilterProxyModel(this))
    , m_properties(new PropertyModel(screen, this))
    , m_picker(new WidgetPicker(screen, this))
    , m_pick(new QToolButton)
    , m_filter(new QLineEdit)
    , m_tree(makeTree())
    , m_table(makeProperties())
    , m_splitter(new QSplitter)
    , m_message(new QLabel)
    , m_timer(new QTimer(this))
{
    static constexpr int refreshMs = 250;
    m_timer->setObjectName(QStringLiteral("inspector-refresh"));
    m_timer->setSingleShot(true);
    m_timer->setInterval(refreshMs);
    makeParts();
    connectParts();
}

InspectorPanel::~InspectorPanel()
{
    delete m_frame;
}

void InspectorPanel::makeParts()
{
    m_pick->setObjectName(QStringLiteral("pick"));
    m_pick->setText(tr("Pick widget"));
    m_pick->setCheckable(true);
    m_pick->setToolTip(tr("Move over the screen to inspect a widget; click to keep it."));
    m_filter->setObjectName(QStringLiteral("widget-filter"));
    m_filter->setPlaceholderText(tr("Filter widgets, for instance key"));
    m_filter->setClearButtonEnabled(true);
    m_message->setObjectName(QStringLiteral("inspector-message"));
    m_message->setWordWrap(true);
    m_message->hide();
    m_splitter->addWidget(m_tree);
    m_splitter->addWidget(m_table);
    m_splitter->setChildrenCollapsible(false);
    auto *top = new QHBoxLayout;
    top->addWidget(m_pick);
    top->addWidget(m_filter, 1);
    auto *column = new QVBoxLayout(this);
    column->addLayout(top);
    column->addWidget(m_splitter, 1);
    column->addWidget(m_message);
}

QTreeView *InspectorPanel::makeTree()
{
    m_shown->setSourceModel(m_widgets);
    m_shown->setRecursiveFilteringEnabled(true);
    m_shown->setFilterKeyColumn(-1);
    m_shown->setFilterCaseSensitivity(Qt::CaseInsensitive);
    auto *tree = new QTreeView;
    tree->setObjectName(QStringLiteral("widgets"));
    tree->setModel(m_shown);
    tree->setItemDelegate(new WidgetDelegate(tree));
    tree->setUniformRowHeights(true);
    tree->setIndentation(14);
    tree->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // the tooltip has the whole text
    return tree;
}

QTableView *InspectorPanel::makeProperties()
{
    static constexpr int rowHeight = 24;
    auto *table = new QTableView;
    table->setObjectName(QStringLiteral("properties"));
    table->setModel(m_properties);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    table->setItemDelegate(new PropertyDelegate(table));
    return table;
}

void InspectorPanel::connectParts()
{
    connect(m_timer, &QTimer::timeout, this, &InspectorPanel::refresh);
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString &text) {
        {
            const QScopedValueRollback<bool> moving(m_isMoving, true);
            m_shown->setFilterFixedString(text.trimmed());
        }
        showInTree();
    });
    connect(m_filter, &QLineEdit::returnPressed, m_tree, qOverload<>(&QWidget::setFocus));
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &index) {
                if (!m_isMoving)
                    select(m_widgets->widgetAt(m_shown->mapToSource(index)));
            });
    connect(m_pick, &QToolButton::toggled, m_picker, &WidgetPicker::setPicking);
    connect(m_picker, &WidgetPicker::pointedAt, this, &InspectorPanel::pick);
    connect(m_picker, &WidgetPicker::picked, this, [this] { m_pick->setChecked(false); });
    connect(m_properties, &QAbstractItemModel::modelReset, this, &InspectorPanel::spanHeadings);
    connect(m_properties, &PropertyModel::refused, this, &InspectorPanel::showMessage);
}

/** A heading takes the whole row. */
void InspectorPanel::spanHeadings()
{
    m_table->clearSpans();
    for (int row = 0; row < m_properties->rowCount(); ++row) {
        if (m_properties->index(row, 0).data(PropertyModel::HeadingRole).toBool())
            m_table->setSpan(row, 0, 1, PropertyModel::ColumnCount);
    }
}

void InspectorPanel::pick(QWidget *widget)
{
    m_widgets->refresh();
    if (!m_shown->mapFromSource(m_widgets->indexOf(widget)).isValid())
        m_filter->clear();
    select(widget);
    showInTree();
}

void InspectorPanel::select(QWidget *widget)
{
    m_selected = widget;
    m_hasSelection = widget != nullptr;
    m_message->hide();
    m_properties->setWidget(widget);
    showFrame();
}

void InspectorPanel::showFrame()
{
    if (!m_frame && m_selected)
        m_frame = new WidgetFrame(m_screen);
    if (m_frame)
        m_frame->surround(m_isFollowing ? m_selected.data() : nullptr);
}

void InspectorPanel::showInTree()
{
    const QScopedValueRollback<bool> moving(m_isMoving, true);
    const QModelIndex index = m_shown->mapFromSource(m_widgets->indexOf(m_selected));
    if (index != m_tree->currentIndex())
        m_tree->setCurrentIndex(index);
}

void InspectorPanel::refresh()
{
    {
        const QScopedValueRollback<bool> moving(m_isMoving, true);
        m_widgets->refresh();
    }
    if (m_hasSelection && !m_widgets->indexOf(m_selected).isValid()) {
        select(nullptr);
        showMessage(tr("The selected widget is no longer on the screen."));
    }
    showInTree();
    showFrame();
    if (!m_table->viewport()->isAncestorOf(QApplication::focusWidget())) // nothing is being edited
        m_properties->refresh();
}

void InspectorPanel::showMessage(const QString &line)
{
    m_message->setText(line);
    m_message->setHidden(line.isEmpty());
}

static bool changesScreen(QEvent::Type type)
{
    switch (type) {
    case QEvent::Paint:
    case QEvent::ChildAdded:
    case QEvent::ChildRemoved:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
    case QEvent::EnabledChange:
    case QEvent::DynamicPropertyChange:
        return true;
    default:
        return false;
    }
}

/** Whatever happens to a widget on the screen lets the panel refresh soon. */
bool InspectorPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (m_timer->isActive() || !changesScreen(event->type()) || watched == m_frame)
        return false;
    const auto *widget = qobject_cast<QWidget *>(watched);
    if (widget && (widget == m_screen || m_screen->isAncestorOf(widget)))
        m_timer->start();
    return false;
}

// A panel that is tabbed behind another is visible for Qt; its dock knows better.
void InspectorPanel::showEvent(QShowEvent *)
{
    if (const auto *dock = qobject_cast<QDockWidget *>(parentWidget()))
        connect(dock, &QDockWidget::visibilityChanged, this, &InspectorPanel::setFollowing,
                Qt::UniqueConnection);
    setFollowing(true);
}

void InspectorPanel::hideEvent(QHideEvent *)
{
    setFollowing(false);
}

/** Nothing happens while the panel cannot be seen. */
void InspectorPanel::setFollowing(bool on)
{
    m_isFollowing = on;
    qApp->removeEventFilter(this);
    if (on) {
        qApp->installEventFilter(this);
        refresh();
        if (!m_selected)
            m_tree->expandToDepth(0);
    } else {
        m_timer->stop();
        m_pick->setChecked(false);
        showFrame();
    }
}

/** The tree is beside the properties where there is room, else above them. */
void InspectorPanel::resizeEvent(QResizeEvent *)
{
    const bool isWide = width() > height();
    const int room = isWide ? width() / 2 : width();
    m_splitter->setOrientation(isWide ? Qt::Horizontal : Qt::Vertical);
    m_tree->header()->resizeSection(WidgetTreeModel::Name, qMin(widgetWidth, room * 6 / 10));
    m_table->horizontalHeader()->resizeSection(PropertyModel::Name,
                                               qMin(propertyWidth, room * 4 / 10));
}
