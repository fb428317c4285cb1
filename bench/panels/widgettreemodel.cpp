#include "panels/widgettreemodel.h"

#include "panels/widgetframe.h"

#include <algorithm>

struct WidgetTreeModel::Node
{
    Node(QWidget *shown, Node *above) : widget(shown), parent(above) {}

    QPointer<QWidget> widget;
    Node *parent;
    Nodes children;
    QString name;
    bool isHidden = false;

    int row() const
    {
        const auto &siblings = parent->children;
        const auto isThis = [this](const auto &sibling) { return sibling.get() == this; };
        return int(std::find_if(siblings.begin(), siblings.end(), isThis) - siblings.begin());
    }
};

WidgetTreeModel::WidgetTreeModel(QWidget *root, QObject *parent)
    : QAbstractItemModel(parent)
    , m_rootWidget(root)
    , m_root(std::make_unique<Node>(nullptr, nullptr))
{
}

WidgetTreeModel::~WidgetTreeModel() = default;

void WidgetTreeModel::refresh()
{
    refreshChildren(m_root.get());
}

static QList<QWidget *> childrenOf(const QWidget *widget)
{
    QList<QWidget *> found;
    for (QObject *child : widget->children()) {
        auto *inner = qobject_cast<QWidget *>(child);
        if (inner && !inner->isWindow() && !qobject_cast<WidgetFrame *>(inner))
            found.append(inner);
    }
    return found;
}

/** The children that differ: those before and after them have stayed. */
struct WidgetTreeModel::Difference
{
    int first;
    int oldEnd;
    int newEnd;
};

WidgetTreeModel::Difference WidgetTreeModel::compare(const Nodes &children,
                                                     const QList<QWidget *> &now)
{
    const auto isSame = [](const auto &child, const QWidget *widget) {
        return child->widget == widget;
    };
    const int shorter = qMin(int(children.size()), now.size());
    int first = 0;
    while (first < shorter && isSame(children[size_t(first)], now[first]))
        ++first;
    int oldEnd = int(children.size());
    int newEnd = now.size();
    while (oldEnd > first && newEnd > first &&
           isSame(children[size_t(oldEnd - 1)], now[newEnd - 1]))
        --oldEnd, --newEnd;
    return {first, oldEnd, newEnd};
}

void WidgetTreeModel::replace(Node *node, const Difference &rows, const QList<QWidget *> &now)
{
    Nodes &children = node->children;
    if (rows.oldEnd > rows.first) {
        beginRemoveRows(indexOf(node), rows.first, rows.oldEnd - 1);
        children.erase(children.begin() + rows.first, children.begin() + rows.oldEnd);
        endRemoveRows();
    }
    if (rows.newEnd > rows.first) {
        beginInsertRows(indexOf(node), rows.first, rows.newEnd - 1);
        for (int i = rows.first; i < rows.newEnd; ++i)
            children.insert(children.begin() + i, std::make_unique<Node>(now[i], node));
        endInsertRows();
    }
}

void WidgetTreeModel::refreshChildren(Node *node)
{
    QList<QWidget *> now;
    if (node != m_root.get())
        now = childrenOf(node->widget);
    else if (m_rootWidget)
        now = {m_rootWidget};
    replace(node, compare(node->children, now), now);
    for (const auto &child : node->children)
        refresh(child.get());
}

void WidgetTreeModel::refresh(Node *node)
{
    const QString name = node->widget->objectName();
    const bool isHidden = !node->widget->isVisibleTo(m_rootWidget);
    if (name != node->name || isHidden != node->isHidden) {
        node->name = name;
        node->isHidden = isHidden;
        const QModelIndex index = indexOf(node);
        emit dataChanged(index, index.siblingAtColumn(Class));
    }
    refreshChildren(node);
}

WidgetTreeModel::Node *WidgetTreeModel::nodeAt(const QModelIndex &index) const
{
    return index.isValid() ? static_cast<Node *>(index.internalPointer()) : m_root.get();
}

QModelIndex WidgetTreeModel::indexOf(const Node *node) const
{
    return node == m_root.get() ? QModelIndex()
                                : createIndex(node->row(), Name, const_cast<Node *>(node));
}

QWidget *WidgetTreeModel::widgetAt(const QModelIndex &index) const
{
    return index.isValid() ? nodeAt(index)->widget.data() : nullptr;
}

const WidgetTreeModel::Node *WidgetTreeModel::find(const Node *node, const QWidget *widget)
{
    if (node->widget == widget)
        return node;
    for (const auto &child : node->children) {
        if (const Node *found = find(child.get(), widget))
            return found;
    }
    return nullptr;
}

QModelIndex WidgetTreeModel::indexOf(const QWidget *widget) const
{
    const Node *node = widget ? find(m_root.get(), widget) : nullptr;
    return node ? indexOf(node) : QModelIndex();
}

QModelIndex WidgetTreeModel::index(int row, int column, const QModelIndex &parent) const
{
    return hasIndex(row, column, parent)
               ? createIndex(row, column, nodeAt(parent)->children[size_t(row)].get())
               : QModelIndex();
}

QModelIndex WidgetTreeModel::parent(const QModelIndex &child) const
{
    return child.isValid() ? indexOf(nodeAt(child)->parent) : QModelIndex();
}

int WidgetTreeModel::rowCount(const QModelIndex &parent) const
{
    return parent.column() > 0 ? 0 : int(nodeAt(parent)->children.size());
}

int WidgetTreeModel::columnCount(const QModelIndex &) const
{
    return ColumnCount;
}

QVariant WidgetTreeModel::data(const QModelIndex &index, int role) const
{
    const Node *node = nodeAt(index);
    if (role == HiddenRole)
        return node->isHidden;
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    if (index.column() == Name)
        return node->name;
    return node->widget ? QLatin1String(node->widget->metaObject()->className()) : tr("deleted");
}

QVariant WidgetTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static constexpr const char *titles[] = {QT_TR_NOOP("Name"), QT_TR_NOOP("Class")};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return tr(titles[section]);
}
