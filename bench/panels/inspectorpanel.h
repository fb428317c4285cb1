#pragma once

#include <QPointer>
#include <QWidget>

class PropertyModel;
class QLabel;
class QLineEdit;
class QSortFilterProxyModel;
class QSplitter;
class QTableView;
class QTimer;
class QToolButton;
class QTreeView;
class Screen;
class WidgetFrame;
class WidgetPicker;
class WidgetTreeModel;

/**
 * The widgets on the screen as a tree, and the properties of the one that is selected there or
 * picked on the screen. It follows the screen up to four times a second while it is visible.
 */
class InspectorPanel : public QWidget
{
    Q_OBJECT
public:
    explicit InspectorPanel(Screen *screen, QWidget *parent = nullptr);
    ~InspectorPanel() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void makeParts();
    QTreeView *makeTree();
    QTableView *makeProperties();
    void connectParts();
    void select(QWidget *widget);
    void pick(QWidget *widget);
    void showFrame();
    void showInTree();
    void showMessage(const QString &line);
    void spanHeadings();
    void setFollowing(bool on);
    void refresh();

    Screen *m_screen;
    WidgetTreeModel *m_widgets;
    QSortFilterProxyModel *m_shown;
    PropertyModel *m_properties;
    WidgetPicker *m_picker;
    QPointer<WidgetFrame> m_frame; // goes with the screen
    QToolButton *m_pick;
    QLineEdit *m_filter;
    QTreeView *m_tree;
    QTableView *m_table;
    QSplitter *m_splitter;
    QLabel *m_message;
    QTimer *m_timer;
    QPointer<QWidget> m_selected;
    bool m_hasSelection = false; // which may have been deleted since
    bool m_isFollowing = false;  // the screen, while the panel can be seen
    bool m_isMoving = false;     // the selection in the tree, by other means than the user's
};
