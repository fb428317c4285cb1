#pragma once

#include <QPointer>
#include <QWidget>

class CameraView;
class StatusColumn;

/**
 * The 1280 x 720 screen: a page with the status column over its left edge, and the camera over the
 * page or, in the split view, beside what matters on it.
 */
class Screen : public QWidget
{
    Q_OBJECT
public:
    explicit Screen(QWidget *parent = nullptr);

    StatusColumn *statusColumn() const { return m_statusColumn; }
    /**
     * The widget of this name on the screen, one that can be seen before one that cannot. One
     * without a name is known by its class and, from 0, its number: "norda::SQuilloGauge#0".
     */
    QWidget *widgetNamed(const QString &name) const;
    /** What widgetNamed() finds a widget by. */
    QString nameOf(const QWidget *widget) const;
    /** Makes a page's widget a child; the page shows and hides itself. */
    void adopt(QWidget *page);
    void showCamera(bool on);
    bool isCameraShown() const { return m_cameraShown; }
    void setSplit(bool on);
    bool isSplit() const { return m_split; }
    CameraView *camera() const { return m_camera; }

    /** Counts the frames that were painted since the start. */
    int framesPainted() const { return m_frames; }
    /** A frame was painted by a view that has embedded the screen, which then has no window. */
    void countFrame() { ++m_frames; }

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    QWidget *nthSeen(const QByteArray &className, int number) const;

    StatusColumn *m_statusColumn;
    CameraView *m_camera;
    QPointer<QWidget> m_watchedWindow;
    bool m_cameraShown = false;
    bool m_split = false;
    int m_frames = 0;
};
