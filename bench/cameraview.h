#pragma once

#include <QWidget>

/** What the head unit shows in place of a page while the rear camera is on. */
class CameraView : public QWidget
{
    Q_OBJECT
public:
    explicit CameraView(QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
};
