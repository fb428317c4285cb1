#pragma once

#include <QGraphicsScene>
#include <QGraphicsView>

class QGraphicsProxyWidget;
class Screen;

/**
 * Shows the unit's screen at any size. The screen stays 1280 x 720 for its pages, pictures and
 * touches; texts are drawn at the size shown, so they are sharp.
 */
class ScreenView : public QGraphicsView
{
    Q_OBJECT
public:
    static constexpr double Fit = 0;
    static constexpr double Smallest = 0.25;
    static constexpr double Largest = 4;

    explicit ScreenView(Screen *screen, QWidget *parent = nullptr);
    /** Leaves the screen to the head unit. */
    ~ScreenView() override;

    /** @param factor  of 1280 x 720; `Fit` follows the space that the view has */
    void setFactor(double factor);
    double wantedFactor() const { return m_wanted; }
    /** The factor that is shown. */
    double factor() const { return m_factor; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {320, 180}; }

signals:
    void factorChanged(double factor);

protected:
    void paintEvent(QPaintEvent *event) override;
    void drawBackground(QPainter *painter, const QRectF &rect) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void scaleScreen();

    Screen *m_screen;
    QGraphicsScene m_scene;
    QGraphicsProxyWidget *m_proxy;
    double m_wanted = Fit;
    double m_factor = 1;
};
