#pragma once

#include <QObject>

class QWidget;

/** Waits until a widget has been painted for the first time, with all that lies on it. */
class FirstPaint : public QObject
{
    Q_OBJECT
public:
    /** @param widget  owns this object */
    explicit FirstPaint(QWidget *widget);
    ~FirstPaint() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void painted();
};
