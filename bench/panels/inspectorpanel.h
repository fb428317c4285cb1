#pragma once

#include <QPointer>
#include <QWidget>

class QPlainTextEdit;
class QToolButton;
class Screen;

/**
 * Tells what a widget on the screen is: point at it while the inspector points, and click to keep
 * it. The page under the pointer gets no touch meanwhile.
 */
class InspectorPanel : public QWidget
{
    Q_OBJECT
public:
    explicit InspectorPanel(Screen *screen, QWidget *parent = nullptr);
    ~InspectorPanel() override;

    /** What there is to say of a widget, a line each. */
    static QStringList describe(const Screen *screen, const QWidget *widget);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setPointing(bool on);
    QWidget *deepestAt(QWidget *widget, QPoint place) const;
    void pointAt(QPoint place);
    void tell();

    Screen *m_screen;
    QToolButton *m_point;
    QPlainTextEdit *m_text;
    QPointer<QWidget> m_frame; // around the widget, over the page
    QPointer<QWidget> m_widget;
};
