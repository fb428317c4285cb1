#pragma once

#include <QObject>

class QWidget;

/** Picks a widget with the pointer. The screen gets no touches meanwhile. */
class WidgetPicker : public QObject
{
    Q_OBJECT
public:
    explicit WidgetPicker(QWidget *screen, QObject *parent = nullptr);
    ~WidgetPicker() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

public slots:
    void setPicking(bool on);

signals:
    void pointedAt(QWidget *widget);
    /** The last one pointed at is kept; picking is over. */
    void picked();

private:
    QWidget *m_screen;
    bool m_isPicking = false;
};
