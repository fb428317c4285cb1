#pragma once

#include "rearview.h"

#include <QWidget>

class QLabel;

/**
 * The rear camera's picture, over the whole page or beside it. The warning over it belongs to the
 * video service and is laid out only on its signal.
 */
class CameraView : public QWidget
{
    Q_OBJECT
public:
    explicit CameraView(QWidget *parent);

    /** What the camera sees now. */
    void setView(const RearView &view);
    const RearView &view() const { return m_view; }
    void updateWarning();

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void drawHeading(QPainter *painter) const;
    QString distance() const;
    static QString warning(int width);

    RearView m_view;
    QLabel *m_warning;
};
