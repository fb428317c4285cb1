#include "counters.h"
#include "norda/squillogauge.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>
#include <QPixmap>
#include <QVariantAnimation>
#include <QWidget>

#include <qwt_dial.h>
#include <qwt_dial_needle.h>

#include <benchmark/benchmark.h>

/*
 * One animation step of the 370-pixel gauge, painted: against the least that any gauge must do (a
 * face blitted, one rotated needle) and against a dial of a well-known library.
 */

static const QString face = QStringLiteral(":/icon/gaugesicon/gagus_mph_1.png");
static const QString needleImage = QStringLiteral(":/icon/gaugesicon/gagus_pointer_large.png");
static constexpr int side = 370;

/** A value that goes up and down in the steps that an animation takes. */
static double valueOfStep(int64_t step)
{
    const int64_t phase = step % 200;
    return phase < 100 ? double(phase) : double(200 - phase);
}

class BareGauge : public QWidget
{
public:
    explicit BareGauge(QWidget *parent) : QWidget(parent), m_face(face), m_needle(needleImage)
    {
        resize(side, side);
    }
    void setValue(double value)
    {
        m_angle = -180 + 2.7 * value;
        update();
    }

private:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.drawPixmap(0, 0, m_face);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.translate(186, 186);
        painter.rotate(m_angle);
        painter.drawPixmap(-m_needle.width() / 2, m_needle.width() / 2 - m_needle.height(),
                           m_needle);
    }

    QPixmap m_face;
    QPixmap m_needle;
    double m_angle = 0;
};

/** A window with the page's background, on which a gauge stands. */
class Page : public QWidget
{
public:
    Page()
    {
        resize(1280, 720);
        QPalette colors = palette();
        colors.setColor(QPalette::Window, QColor(0x0D, 0x13, 0x1A));
        setPalette(colors);
        setAutoFillBackground(true);
    }
    void expose()
    {
        show();
        settle(100);
    }
};

static void gaugeStep(benchmark::State &state)
{
    Page page;
    norda::SQuilloGauge gauge(&page);
    QPalette colors = gauge.palette();
    colors.setBrush(QPalette::Window, QPixmap(face));
    gauge.setPalette(colors);
    gauge.setAutoFillBackground(true);
    gauge.setImageDir(needleImage);
    gauge.setGeometry(100, 100, side, side);
    gauge.setRotationRange(90, -180);
    gauge.setPointerXY(186, 186);
    gauge.setMixValue(100);
    page.expose();

    // The steps of the gauge's own animation, at the pace of the benchmark instead of the clock.
    auto *animation = gauge.findChild<QVariantAnimation *>();
    gauge._setAnimationValue(100);
    animation->pause();
    animation->setEasingCurve(QEasingCurve::Linear);
    int64_t step = 0;
    for (auto _ : state) {
        animation->setCurrentTime(int(valueOfStep(step++) * animation->duration() / 100));
        paintNow(&page);
    }
}
BENCHMARK(gaugeStep)->Name("animation/gauge")->Unit(benchmark::kMicrosecond);

static void bareStep(benchmark::State &state)
{
    Page page;
    BareGauge gauge(&page);
    gauge.move(100, 100);
    page.expose();
    int64_t step = 0;
    for (auto _ : state) {
        gauge.setValue(valueOfStep(step++));
        paintNow(&page);
    }
}
BENCHMARK(bareStep)->Name("animation/bare")->Unit(benchmark::kMicrosecond);

static void qwtStep(benchmark::State &state)
{
    Page page;
    QwtDial dial(&page);
    dial.setGeometry(100, 100, side, side);
    dial.setScale(0, 100);
    dial.setScaleArc(180, 450);
    dial.setNeedle(new QwtDialSimpleNeedle(QwtDialSimpleNeedle::Arrow));
    page.expose();
    int64_t step = 0;
    for (auto _ : state) {
        dial.setValue(valueOfStep(step++));
        paintNow(&page);
    }
}
BENCHMARK(qwtStep)->Name("animation/qwt")->Unit(benchmark::kMicrosecond);
