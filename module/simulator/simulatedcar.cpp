#include "simulatedcar.h"

#include "norda/vtqservice.h"

#include <QDateTime>
#include <QtMath>

namespace module {

static constexpr qint64 answerMs = 20; // how long the module thinks about a touch
static constexpr qint64 centreMs = 100;
static constexpr qint64 propertiesMs = 1000;
static constexpr const char *degrees = "\u2109";

static double fahrenheit(double celsius)
{
    return celsius * 9 / 5 + 32;
}

static QVariant byte(int value)
{
    return QVariant::fromValue(uchar(value));
}

SimulatedCar::SimulatedCar(Trim trim) : m_trim(trim), m_climate(trim)
{
    norda::VtqService *service = norda::VtqService::instance();
    for (const int group : {0, 1})
        service->setRearClimateControlFeatures(group, m_climate.rearFeatures(group));
    restart();
}

void SimulatedCar::restart()
{
    m_powertrain = Powertrain();
    m_climate = Climate(m_trim);
    m_nowMs = 0;
    m_queue.clear();
    m_last.clear();
    sayTitles(0);
    sayPresets(0);
    sayClimate(0);
    say(0, "peakIndicatorNotify", {byte(0)});
    report();
    runUntilEmission();
}

// ---- Time
// ----------------------------------------------------------------------------------------

qint64 SimulatedCar::nextDueMs() const
{
    return m_queue.isEmpty() ? -1 : m_queue.constFirst().atMs;
}

Emission SimulatedCar::take()
{
    const Emission emission = m_queue.takeFirst();
    runUntilEmission();
    return emission;
}

void SimulatedCar::runUntilEmission()
{
    while (m_queue.isEmpty() && m_nowMs < tripMs)
        step();
}

void SimulatedCar::step()
{
    m_nowMs += Powertrain::stepMs;
    m_powertrain.step(tripWish(m_nowMs));
    report();
    if (m_nowMs % centreMs == 0 && m_climate.step(m_powertrain.ambient(), m_powertrain.isRunning()))
        sayClimate(m_nowMs);
}

void SimulatedCar::seek(qint64 ms)
{
    restart();
    QHash<QByteArray, Emission> latest;
    while (!m_queue.isEmpty() && m_queue.constFirst().atMs < ms) {
        const Emission passed = take();
        latest.insert(passed.signal, passed);
    }
    QList<QByteArray> names = latest.keys();
    std::sort(names.begin(), names.end());
    QVector<Emission> caughtUp;
    for (const QByteArray &name : names)
        caughtUp.append({ms, name, latest.value(name).arguments});
    m_queue = caughtUp + m_queue;
}

// ---- What the car says by itself
// -----------------------------------------------------------------

void SimulatedCar::say(qint64 atMs, const QByteArray &signal, const QVariantList &arguments)
{
    const auto behind =
        std::upper_bound(m_queue.begin(), m_queue.end(), atMs,
                         [](qint64 ms, const Emission &emission) { return ms < emission.atMs; });
    m_queue.insert(behind, {atMs, signal, arguments});
    m_last.insert(signal, arguments);
}

void SimulatedCar::sayChange(const QByteArray &signal, const QVariantList &arguments)
{
    if (m_last.value(signal) != arguments)
        say(m_nowMs, signal, arguments);
}

void SimulatedCar::reportCorner(const char *place, double value, const char *unit, int fullScale)
{
    const int rounded = qRound(value);
    sayChange(
        QByteArray("gauge") + place + "ValueDualNotify",
        {QString::number(rounded), QString::fromUtf8(unit), byte(qBound(0, rounded, fullScale))});
}

void SimulatedCar::report()
{
    const Powertrain &car = m_powertrain;
    m_highestRpm = qMax(m_highestRpm, car.rpm());
    if (m_nowMs % centreMs == 0) {
        const int rpm = qRound(car.rpm() / 10) * 10;
        sayChange("centerGaugeValueNotify",
                  {QString::number(rpm), QStringLiteral("RPM"), byte(qMin(100, rpm / 100))});
        const QString gear =
            car.gear() == 0 ? QStringLiteral("P") : QStringLiteral("D%1").arg(car.gear());
        sayChange("gauTopBarTextNotify",
                  {QStringLiteral("%1 km/h   %2").arg(qRound(car.speedKmh())).arg(gear)});
    }
    const double topLeft[TopLeftCount] = {car.transmission(), car.oil(), car.ambient()};
    reportCorner("TL", fahrenheit(topLeft[m_topLeft]), degrees, 250);
    reportCorner("TR", fahrenheit(car.coolant()), degrees, 250);
    reportCorner("BL", fahrenheit(car.intake()), degrees, 250);
    reportCorner("BR", car.loadPercent(), "%", 100);

    const bool shiftNow = car.rpm() > Powertrain::shiftUpRpm - 500;
    const bool ready = car.isRunning() && car.coolant() > 75;
    sayChange("shifterArrowIndicatorNotify", {byte(shiftNow)});
    if (shiftNow || ready) {
        sayChange("centerGaugePeakColorNotify", {byte(shiftNow ? 1 : 5)});
        sayChange("peakIndicatorTextNotify",
                  {shiftNow ? QStringLiteral("SHIFT") : QStringLiteral("READY")});
    }
    sayChange("peakIndicatorNotify", {byte(shiftNow || ready)});
    sayChange("batteryVoltage", {QString::number(car.volts(), 'f', 1) + QLatin1Char('V')});
    if (m_nowMs % propertiesMs == 0)
        reportProperties();
}

void SimulatedCar::reportProperties()
{
    const Powertrain &car = m_powertrain;
    const double topLeft[TopLeftCount] = {car.transmission(), car.oil(), car.ambient()};
    const int tire = qRound(fahrenheit(car.ambient() + car.speedKmh() * 0.18));
    const QList<int> properties = {0,
                                   qRound(car.volts()),
                                   qRound(fahrenheit(topLeft[m_topLeft])),
                                   qRound(fahrenheit(car.coolant())),
                                   qRound(fahrenheit(car.intake())),
                                   qRound(car.loadPercent()),
                                   tire + 1,
                                   tire,
                                   tire - 1,
                                   tire};
    say(m_nowMs, "Properties2TextInfo", {QVariant::fromValue(properties)});
}

// ---- What it answers
// -----------------------------------------------------------------------------

void SimulatedCar::sayTitles(qint64 atMs)
{
    static const QString topLeft[TopLeftCount] = {QStringLiteral("Transmission Temp"),
                                                  QStringLiteral("Oil Temp"),
                                                  QStringLiteral("Ambient Temp")};
    say(atMs, "gaugeTitlesNotify",
        {QStringList{QStringLiteral("Tachometer"), topLeft[m_topLeft],
                     QStringLiteral("Coolant Temp"), QStringLiteral("Intake Air Temp"),
                     QStringLiteral("Engine Calculated Load")}});
}

void SimulatedCar::sayPresets(qint64 atMs)
{
    const QStringList captions = {QStringLiteral("Street"), QStringLiteral("Track")};
    QByteArray states(2, '\1');
    states[int(m_preset)] = '\2';
    say(atMs, "gauCustomControlLabelsNotify", {captions, states});
    say(atMs, "activePresetStatusNotify", {byte(m_preset)});
}

void SimulatedCar::sayClimate(qint64 atMs)
{
    // A report that waits for its time is older than this one, whatever its time.
    static const QByteArray signal = "NordaClimateCtrlStatusNotify";
    const auto isClimate = [](const Emission &emission) { return emission.signal == signal; };
    m_queue.erase(std::remove_if(m_queue.begin(), m_queue.end(), isClimate), m_queue.end());
    say(atMs, signal, {QVariant::fromValue(m_climate.takeReport())});
}

bool SimulatedCar::answerClimate(qint64 atMs, const QString &command, const QVariantList &arguments)
{
    const QVariant first = arguments.value(0);
    if (command == QLatin1String("NordatriggerRearDefrostButton"))
        m_climate.press(first.value<QMap<int, int>>());
    else if (command.endsWith(QLatin1String("manTempValue")))
        m_climate.setTemperature(first.toInt());
    else if (command.endsWith(QLatin1String("fanDirectValue")))
        m_climate.setFan(first.toInt(), command.startsWith(QLatin1String("secound")));
    else if (!command.endsWith(QLatin1String("ClimateInfo")))
        return false;
    sayClimate(atMs);
    return true;
}

/** Says again what a screen shows: the last of every signal whose name begins so. */
void SimulatedCar::resend(qint64 atMs, const char *prefix)
{
    QList<QByteArray> names = m_last.keys();
    std::sort(names.begin(), names.end());
    for (const QByteArray &name : names) {
        if (name.startsWith(prefix))
            say(atMs, name, m_last.value(name));
    }
}

bool SimulatedCar::command(qint64 nowMs, const QString &operation, const QVariantList &arguments)
{
    const QString adaptor = QStringLiteral("norda::VtqAdaptor::");
    return operation.startsWith(adaptor) &&
           answer(nowMs + answerMs, operation.mid(adaptor.size()), arguments);
}

bool SimulatedCar::answer(qint64 atMs, const QString &command, const QVariantList &arguments)
{
    const int first = arguments.value(0).toInt();
    const bool pressed = first == 1;
    if (answerClimate(atMs, command, arguments))
        return true;
    if (command == QLatin1String("requestGaugesInfo")) {
        for (const char *prefix : {"gau", "center", "peak", "shifter", "active"})
            resend(atMs, prefix);
    } else if (command == QLatin1String("gaugeTLMenu") && pressed) {
        m_topLeft = TopLeft((m_topLeft + 1) % TopLeftCount);
        sayTitles(atMs);
    } else if (command == QLatin1String("centerGaugeMenu") && pressed) {
        m_arcs = !m_arcs;
        say(atMs, "gaugeGraphicalSettingNotify",
            {QByteArray(5, m_arcs ? '\0' : '\1'), QByteArray(5, '\0')});
    } else if (command == QLatin1String("gaugesCustomControls") &&
               arguments.value(1).toInt() == 1) {
        m_preset = first == 0x12 ? 0 : 1;
        sayPresets(atMs);
    } else if (command == QLatin1String("NordaData_Request") && first == 5) {
        say(atMs, "NordaVerInfo", {QStringList{"V", "3", "12", "7"}});
    } else {
        return false;
    }
    return true;
}

QStringList SimulatedCar::findings() const
{
    return {QStringLiteral("A built-in trip of %1 minutes: cold start, town, motorway, parked")
                .arg(tripMs / 60000),
            QStringLiteral("Touch the centre gauge for its other style, the top left one for "
                           "another temperature")};
}

QJsonObject SimulatedCar::statistics() const
{
    return {{"kind", "simulator"}, {"highestRpm", qRound(m_highestRpm)}};
}

} // namespace module
