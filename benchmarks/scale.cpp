#include "counters.h"
#include "norda/squillogauge.h"
#include "pairs.h"
#include "session/rig.h"
#include "window/screenview.h"

#include <QCoreApplication>
#include <QVariantAnimation>

#include <algorithm>
#include <memory>

/*
 * A step of the centre gauge's needle on the open page, painted: on the screen itself as a head
 * unit shows it, and in the bench's view of it at several sizes.
 */

static constexpr double direct = 0; // without the view

/** The gauges page of a head unit, on the screen itself or in a view of it. */
class OpenGauges
{
public:
    OpenGauges();
    /** @return what a step takes of the processor */
    double needleSteps(double factor);

private:
    Rig m_rig;
    QVariantAnimation *m_animation = nullptr;
};

static Setup withoutCar()
{
    Setup setup;
    setup.source = QStringLiteral("none");
    return setup;
}

/** The steps are of the gauge's own animation, at the pace of the benchmark instead of the clock.
 */
OpenGauges::OpenGauges() : m_rig(withoutCar())
{
    QString error;
    if (!m_rig.open(QStringLiteral(NORDA_PLUGIN_FILE), &error))
        qFatal("%s", qPrintable(error));
    Screen *screen = m_rig.unit()->screen();
    screen->show();
    m_rig.begin(Replay::Beginning);
    settle(300);
    const auto gauges = screen->findChildren<norda::SQuilloGauge *>();
    auto *centre = *std::max_element(gauges.cbegin(), gauges.cend(), [](auto *left, auto *right) {
        return left->width() < right->width();
    });
    m_animation = centre->findChild<QVariantAnimation *>();
    centre->_setAnimationValue(100);
    m_animation->pause();
    m_animation->setEasingCurve(QEasingCurve::Linear);
}

double OpenGauges::needleSteps(double factor)
{
    static constexpr int steps = 200;
    Screen *screen = m_rig.unit()->screen();
    std::unique_ptr<ScreenView> view;
    if (factor != direct) {
        view = std::make_unique<ScreenView>(screen);
        view->setFactor(factor);
        view->resize(screen->size() * factor);
        view->show();
    }
    screen->show();
    settle(50);
    QWidget *window = view ? static_cast<QWidget *>(view.get()) : screen;
    const double before = processorSeconds();
    for (int step = 0; step < steps; ++step) {
        m_animation->setCurrentTime(step % 100 * m_animation->duration() / 100);
        QCoreApplication::sendPostedEvents(); // a view collects what its items have changed
        paintNow(window);
    }
    return (processorSeconds() - before) / steps;
}

static void inView(benchmark::State &state, double factor)
{
    static constexpr int rounds = 41;
    OpenGauges gauges;
    measureInTurns(
        state, rounds, [&] { return gauges.needleSteps(factor); },
        [&] { return gauges.needleSteps(direct); });
}

static void pair(benchmark::internal::Benchmark *row)
{
    row->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);
}
BENCHMARK_CAPTURE(inView, one, 1.0)->Name("scale/one")->Apply(pair);
BENCHMARK_CAPTURE(inView, three_quarters, 0.75)->Name("scale/three_quarters")->Apply(pair);
BENCHMARK_CAPTURE(inView, two, 2.0)->Name("scale/two")->Apply(pair);
