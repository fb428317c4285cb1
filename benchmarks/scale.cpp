#include "counters.h"
#include "norda/squillogauge.h"
#include "pairs.h"
#include "session/rig.h"
#include "window/screenview.h"

#include <QCoreApplication>
#include <QVariantAnimation>

#include <memory>

/*
 * A step of the centre gauge's needle on the open page, painted: on the screen itself as a head
 * unit shows it, and in the bench's view of it at several sizes.
 */

static constexpr double direct = 0; // without the view

static double needleSteps(double factor)
{
    Setup setup;
    setup.source = QStringLiteral("none");
    Rig rig(setup);
    QString error;
    if (!rig.open(QStringLiteral(NORDA_PLUGIN_FILE), &error))
        qFatal("%s", qPrintable(error));
    Screen *screen = rig.unit()->screen();
    std::unique_ptr<ScreenView> view;
    if (factor != direct) {
        view = std::make_unique<ScreenView>(screen);
        view->setFactor(factor);
        view->resize(screen->size() * factor);
        view->show();
    }
    screen->show();
    rig.begin(Replay::Beginning);
    settle(300);

    norda::SQuilloGauge *centre = nullptr;
    for (norda::SQuilloGauge *gauge : screen->findChildren<norda::SQuilloGauge *>()) {
        if (!centre || gauge->width() > centre->width())
            centre = gauge;
    }
    // The steps of the gauge's own animation, at the pace of the benchmark instead of the clock.
    auto *animation = centre->findChild<QVariantAnimation *>();
    centre->_setAnimationValue(100);
    animation->pause();
    animation->setEasingCurve(QEasingCurve::Linear);
    QWidget *window = view ? static_cast<QWidget *>(view.get()) : screen;
    static constexpr int steps = 500;
    const double before = processorSeconds();
    for (int step = 0; step < steps; ++step) {
        animation->setCurrentTime(step % 100 * animation->duration() / 100);
        QCoreApplication::sendPostedEvents(); // a view collects what its items have changed
        paintNow(window);
    }
    return (processorSeconds() - before) / steps;
}

static const bool areAdded = [] {
    static constexpr int rounds = 11;
    const auto atFactor = [](double factor) { return [=] { return needleSteps(factor); }; };
    addPair("scale/one", rounds, atFactor(1), atFactor(direct));
    addPair("scale/three_quarters", rounds, atFactor(0.75), atFactor(direct));
    addPair("scale/two", rounds, atFactor(2), atFactor(direct));
    return true;
}();
