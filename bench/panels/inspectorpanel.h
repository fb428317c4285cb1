#pragma once

#include <QPointer>
#include <QWidget>

class QPlainTextEdit;
class QToolButton;
class Screen;

/**
 * Describes the widget under the pointer while picking; a click keeps it. The page gets no touches
 * meanwhile.
 */
class InspectorPanel : public QWidget
{
    Q_OBJECT
public:
    explicit InspectorPanel(Screen *screen, QWidget *parent = nullptr);
    ~InspectorPanel() override;

    /** The description of a widget, a property per line. */
    static QStringList describe(const Screen *screen, const QWidget *widget);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setPicking(bool on);
    QWidget *deepestAt(QWidget *widget, QPoint place) const;
    void pointAt(QPoint place);
    void showDescription();

    Screen *m_screen;
    QToolButton *m_pick;
    QPlainTextEdit *m_text;
    QPointer<QWidget> m_frame; // around the widget, over the page
    QPointer<QWidget> m_widget;
};
