#include "costruns.h"
#include "meter.h"
#include "signalsamples.h"
#include "virtualclock.h"

#include "headunit.h"
#include "pages.h"

#include <QCoreApplication>
#include <QMouseEvent>

static constexpr int settledMs = 1000; // longer than anything moves
static constexpr int frameMs = 16;

/** A head unit in its window, after its first frame. */
class MeasuredUnit
{
public:
    MeasuredUnit()
    {
        QString error;
        if (!m_unit.load(QStringLiteral(NORDA_PLUGIN_FILE), &error))
            qFatal("%s", qPrintable(error));
        m_unit.screen()->show();
        passTime(settledMs);
    }

    void paint() { QCoreApplication::processEvents(); }
    void open(int page)
    {
        m_unit.windows()->openWindow(page);
        paint();
    }
    void touch(const char *name)
    {
        mouse(name, QEvent::MouseButtonPress, Qt::LeftButton);
        paint();
        mouse(name, QEvent::MouseButtonRelease, Qt::NoButton);
        paint();
    }

private:
    void mouse(const char *name, QEvent::Type type, Qt::MouseButtons held)
    {
        QWidget *widget = m_unit.screen()->widgetNamed(QLatin1String(name));
        if (!widget)
            qFatal("no %s on the screen", name);
        QMouseEvent event(type, widget->rect().center(), Qt::LeftButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &event);
    }

    HeadUnit m_unit;
};

static QByteArray pageName(int window)
{
    return pageWith(&Page::window, window)->name;
}

/** As the first of a frame, at rest; and with a frame to come, while what it moves is moving. */
static void measureSignal(MeasuredUnit *unit, const SignalSample &sample)
{
    const QByteArray name = pageName(sample.page) + ": " + sample.name;
    for (const auto &version : {sample.first, sample.second, sample.first}) {
        version();
        unit->paint();
        passTime(settledMs);
    }
    measure(name + ", emitted and painted", [&] {
        sample.second();
        unit->paint();
    });
    passTime(settledMs);
    sample.first();
    passTime(2 * frameMs);
    sample.second();
    measure(name + ", emitted with a frame to come", sample.first);
    passTime(settledMs);
}

static void measureSignals(MeasuredUnit *unit)
{
    for (const SignalSample &sample : signalSamples()) {
        unit->open(sample.page);
        passTime(settledMs);
        measureSignal(unit, sample);
    }
}

static void measurePages(MeasuredUnit *unit)
{
    for (const char *which : {", the first time", ", again"}) {
        for (const Page &page : pages) {
            measure("Page: " + QByteArray(page.name) + which, [&] { unit->open(page.window); });
            passTime(settledMs);
        }
    }
}

static void measureTouches(MeasuredUnit *unit)
{
    static constexpr struct
    {
        int page;
        const char *widget, *name;
    } touches[] = {
        {GaugesPage, "norda::SQuilloGauge#1", "Touch: a gauge"},
        {ClimatePage, "key_AC", "Touch: a climate key"},
        {GaugesPage, "norda_key_vehicle", "Touch: the next page"},
    };
    for (const auto &touch : touches) {
        unit->open(touch.page);
        passTime(settledMs);
        measure(touch.name, [&] { unit->touch(touch.widget); });
        passTime(settledMs);
    }
}

static void measureNeedle(MeasuredUnit *unit)
{
    unit->open(GaugesPage);
    const SignalSample &sample = signalSamples().front();
    sample.first();
    passTime(settledMs);
    sample.second();
    passTime(2 * frameMs);
    measure("Animation: a step of the needle", [] { passTime(frameMs); });
    passTime(settledMs);
    measure("Idle: ten seconds", [] { passTime(10 * 1000); });
}

void measureUnit()
{
    const QByteArray missing = signalWithoutSample();
    if (!missing.isEmpty())
        qFatal("signal %s: expected a sample of it in signalsamples.cpp", missing.constData());
    MeasuredUnit unit;
    measurePages(&unit);
    measureSignals(&unit);
    measureTouches(&unit);
    measureNeedle(&unit);
}
