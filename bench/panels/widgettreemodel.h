#pragma once

#include <QAbstractItemModel>
#include <QPointer>
#include <QWidget>

#include <memory>
#include <vector>

/**
 * The widgets below one, in the order in which they are painted, with their names and classes. It
 * is a picture of the last refresh; a widget may be deleted at any time.
 */
class WidgetTreeModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    enum Column { Name, Class, ColumnCount };
    enum Role { HiddenRole = Qt::UserRole }; ///< whether the widget cannot be seen

    explicit WidgetTreeModel(QWidget *root, QObject *parent = nullptr);
    ~WidgetTreeModel() override;

    /** Follows what was added, removed, raised, renamed, shown or hidden. */
    void refresh();
    /** Null for one that was deleted. */
    QWidget *widgetAt(const QModelIndex &index) const;
    /** Invalid for one that the last refresh has not seen. */
    QModelIndex indexOf(const QWidget *widget) const;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Node;
    struct Difference;
    using Nodes = std::vector<std::unique_ptr<Node>>;

    Node *nodeAt(const QModelIndex &index) const;
    QModelIndex indexOf(const Node *node) const;
    void refresh(Node *node);
    void refreshChildren(Node *node);
    static Difference compare(const Nodes &children, const QList<QWidget *> &now);
    void replace(Node *node, const Difference &rows, const QList<QWidget *> &now);
    static const Node *find(const Node *node, const QWidget *widget);

    QPointer<QWidget> m_rootWidget;
    std::unique_ptr<Node> m_root; // the invisible one; its child is the root widget
};
