#include "simulatedcar.h"

#include "lastsaid.h"
#include "norda/vtqservice.h"
#include "units.h"

#include <QDateTime>
#include <QtMath>

namespace module {

static constexpr qint64 answerMs = 20; // how long the module thinks about a touch
static constexpr qint64 centreMs = 100;
static constexpr qint64 propertiesMs = 1000;
static constexpr qint64 clockMs = 1000;
static constexpr const char *degrees = "\u2109";

SimulatedCar::SimulatedCar(Trim trim)
{
    equip(trim);
    QMap<int, bool> zones;
    for (int zone = 1; zone <= Manoeuvre::SensorCount; ++zone)
        zones.insert(zone, true);
    norda::VtqService::instance()->setParkingAssistZones(zones);
    restart();
}

void SimulatedCar::equip(Trim trim)
{
    m_trim = trim;
    m_climate = Climate(trim);
    for (const int group : {0, 1})
        norda::VtqService::instance()->setRearClimateControlFeatures(group,
                                                                     m_climate.rearFeatures(group));
}

void SimulatedCar::restart()
{
    m_powertrain = Powertrain();
    m_climate = Climate(m_trim);
    m_tires = Tires();
    m_body = Body();
    m_manoeuvre = Manoeuvre();
    m_prompts = Prompts();
    m_out.clear();
    m_nowMs = 0;
    sayTitles(0);
    sayPresets(0);
    sayClimate(0);
    m_out.say(0, "peakIndicatorNotify", {byte(0)});
    m_out.say(0, "parkingDistanceRear", {Manoeuvre::allClear()});
    m_body.step(0, m_powertrain, m_tires, m_controls);
    report();
    runUntilEmission();
}

// ---- Time ---------------------------------------------------------------------------------------

qint64 SimulatedCar::nextDueMs() const
{
    return m_out.isEmpty() ? -1 : m_out.first().atMs;
}

Emission SimulatedCar::take()
{
    Emission emission = m_out.take();
    runUntilEmission();
    return emission;
}

void SimulatedCar::runUntilEmission()
{
    while (m_out.isEmpty() && m_nowMs < tripMs)
        step();
}

void SimulatedCar::step()
{
    m_nowMs += Powertrain::stepMs;
    DriverWish wish = tripWish(m_nowMs);
    m_manoeuvre.adjust(m_nowMs, &wish);
    obeyHands(&wish);
    m_powertrain.step(wish);
    m_tires.step(m_nowMs, m_powertrain, m_controls);
    m_body.step(m_nowMs, m_powertrain, m_tires, m_controls);
    m_manoeuvre.step(m_nowMs, m_powertrain.speedKmh(), m_controls);
    m_prompts.step(m_nowMs, m_powertrain.speedKmh(), m_body, m_tires, m_manoeuvre);
    report();
    if (m_nowMs % centreMs == 0 && m_climate.step(m_powertrain.ambient(), m_powertrain.isRunning()))
        sayClimate(m_nowMs);
}

void SimulatedCar::obeyHands(DriverWish *wish)
{
    if (m_controls.isHeld(Controls::Engine)) {
        wish->engineOn = m_controls.value(Controls::Engine) != 0;
        wish->ignition = wish->ignition || wish->engineOn;
        wish->cranking = false;
    }
    if (m_controls.isHeld(Controls::Speed)) {
        wish->speedKmh = m_controls.value(Controls::Speed) / milesPerKilometre;
        wish->reverse = wish->creeping = false;
    }
    if (m_controls.isHeld(Controls::Prompt))
        m_prompts.say(m_controls.take(Controls::Prompt));
    if (!m_controls.isHeld(Controls::ClimateTrim))
        return;
    equip(Trim(m_controls.take(Controls::ClimateTrim)));
    m_out.say(m_nowMs, "climateType", {});
    m_out.say(m_nowMs, "secondclimateType", {});
    sayClimate(m_nowMs);
}

void SimulatedCar::seek(qint64 ms)
{
    restart();
    LastSaid<Emission> said;
    while (!m_out.isEmpty() && m_out.first().atMs < ms) {
        const Emission passed = take();
        said.say(passed.signal, passed.arguments, {ms, passed.signal, passed.arguments});
    }
    m_out.prepend(said.inOrder());
}

// ---- What the car says by itself ----------------------------------------------------------------

void SimulatedCar::reportCorner(const char *place, double value, const char *unit, int fullScale)
{
    const int rounded = qRound(value);
    m_out.sayChange(
        m_nowMs, QByteArray("gauge") + place + "ValueDualNotify",
        {QString::number(rounded), QString::fromUtf8(unit), byte(qBound(0, rounded, fullScale))});
}

void SimulatedCar::report()
{
    const Powertrain &car = m_powertrain;
    m_highestRpm = qMax(m_highestRpm, car.rpm());
    if (m_nowMs % centreMs == 0) {
        const int rpm = qRound(car.rpm() / 10) * 10;
        m_out.sayChange(m_nowMs, "centerGaugeValueNotify",
                        {QString::number(rpm), QStringLiteral("RPM"), byte(qMin(100, rpm / 100))});
        const QString gear = car.isReversing() ? QStringLiteral("R")
                             : car.gear() == 0 ? QStringLiteral("P")
                                               : QStringLiteral("D%1").arg(car.gear());
        m_out.sayChange(m_nowMs, "gauTopBarTextNotify",
                        {QStringLiteral("%1 mph   %2")
                             .arg(qRound(car.speedKmh() * milesPerKilometre))
                             .arg(gear)});
    }
    const double topLeft[TopLeftCount] = {car.transmission(), car.oil(), car.ambient()};
    reportCorner("TL", fahrenheit(topLeft[m_topLeft]), degrees, 250);
    reportCorner("TR", fahrenheit(car.coolant()), degrees, 250);
    reportCorner("BL", fahrenheit(car.intake()), degrees, 250);
    reportCorner("BR", car.loadPercent(), "%", 100);

    const bool shiftNow = car.rpm() > Powertrain::shiftUpRpm - 500;
    const bool ready = car.isRunning() && car.coolant() > 75;
    m_out.sayChange(m_nowMs, "shifterArrowIndicatorNotify", {byte(shiftNow)});
    if (shiftNow || ready) {
        m_out.sayChange(m_nowMs, "centerGaugePeakColorNotify", {byte(shiftNow ? 1 : 5)});
        m_out.sayChange(m_nowMs, "peakIndicatorTextNotify",
                        {shiftNow ? QStringLiteral("SHIFT") : QStringLiteral("READY")});
    }
    m_out.sayChange(m_nowMs, "peakIndicatorNotify", {byte(shiftNow || ready)});
    reportGear();
    m_tires.report(&m_out, m_nowMs, m_body.isEngineFaulty());
    m_body.report(&m_out, m_nowMs);
    m_manoeuvre.report(&m_out, m_nowMs);
    m_prompts.report(&m_out, m_nowMs);
    if (m_tellsTime && m_nowMs % clockMs == 0)
        sayClock(m_nowMs);

    // The list rounds the voltage to whole volts and paints a soft tire white as long as it is
    // cool, so the signals that are more exact follow it at once.
    const QVariantList volts = {QString::number(car.volts(), 'f', 1) + QLatin1Char('V')};
    if (m_nowMs % propertiesMs == 0) {
        reportProperties();
        m_out.say(m_nowMs, "batteryVoltage", volts);
        m_tires.repeatWarnings(&m_out, m_nowMs);
    } else {
        m_out.sayChange(m_nowMs, "batteryVoltage", volts);
    }
}

void SimulatedCar::reportGear()
{
    enum GearPosition { Park, Reverse, Drive };
    const GearPosition position = m_powertrain.isReversing() ? Reverse
                                  : m_powertrain.gear() == 0 ? Park
                                                             : Drive;
    m_out.sayChange(m_nowMs, "checkGearPositionStatus", {byte(position)});
}

void SimulatedCar::reportProperties()
{
    const Powertrain &car = m_powertrain;
    const double topLeft[TopLeftCount] = {car.transmission(), car.oil(), car.ambient()};
    const QList<int> properties = {m_body.openBits(),
                                   qRound(car.volts()),
                                   qRound(fahrenheit(topLeft[m_topLeft])),
                                   qRound(fahrenheit(car.coolant())),
                                   qRound(fahrenheit(car.intake())),
                                   qRound(car.loadPercent()),
                                   m_tires.fahrenheitOf(Tires::FrontLeft),
                                   m_tires.fahrenheitOf(Tires::FrontRight),
                                   m_tires.fahrenheitOf(Tires::RearRight),
                                   m_tires.fahrenheitOf(Tires::RearLeft)};
    m_out.say(m_nowMs, "Properties2TextInfo", {QVariant::fromValue(properties)});
}

// ---- What it answers ----------------------------------------------------------------------------

void SimulatedCar::sayTitles(qint64 atMs)
{
    static const QString topLeft[TopLeftCount] = {QStringLiteral("Transmission Temp"),
                                                  QStringLiteral("Oil Temp"),
                                                  QStringLiteral("Ambient Temp")};
    m_out.say(atMs, "gaugeTitlesNotify",
              {QStringList{QStringLiteral("Tachometer"), topLeft[m_topLeft],
                           QStringLiteral("Coolant Temp"), QStringLiteral("Intake Air Temp"),
                           QStringLiteral("Engine Calculated Load")}});
}

void SimulatedCar::sayPresets(qint64 atMs)
{
    const QStringList captions = {QStringLiteral("Street"), QStringLiteral("Track")};
    QByteArray states(2, '\1');
    states[int(m_preset)] = '\2';
    m_out.say(atMs, "gauCustomControlLabelsNotify", {captions, states});
    m_out.say(atMs, "activePresetStatusNotify", {byte(m_preset)});
}

void SimulatedCar::sayClimate(qint64 atMs)
{
    // A report that waits for its time is older than this one, whatever its time.
    static const QByteArray signal = "NordaClimateCtrlStatusNotify";
    m_out.drop(signal);
    m_out.say(atMs, signal, {QVariant::fromValue(m_climate.takeReport())});
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

bool SimulatedCar::command(qint64 nowMs, const QString &operation, const QVariantList &arguments)
{
    const QString adaptor = QStringLiteral("norda::VtqAdaptor::");
    return operation.startsWith(adaptor) &&
           answer(nowMs + answerMs, operation.mid(adaptor.size()), arguments);
}

/** Month, day, year, hour, minute and second, digit by digit. */
void SimulatedCar::sayClock(qint64 atMs)
{
    static const QDateTime departure(QDate(2026, 3, 14), QTime(8, 15), Qt::UTC);
    const QString digits = departure.addMSecs(atMs).toString(QStringLiteral("MMddyyHHmmss"));
    m_out.say(atMs, "TimeInfo", {digits.split(QString(), Qt::SkipEmptyParts)});
}

bool SimulatedCar::answer(qint64 atMs, const QString &command, const QVariantList &arguments)
{
    enum ModulePage { versionPage = 5, menuPage = 13 };
    const int first = arguments.value(0).toInt();
    const bool pressed = first == 1;
    if (answerClimate(atMs, command, arguments))
        return true;
    if (command == QLatin1String("requestGaugesInfo")) {
        for (const char *prefix : {"gau", "center", "peak", "shifter", "active"})
            m_out.resendAll(atMs, prefix);
    } else if (command == QLatin1String("requestVehicleInfo")) {
        for (const char *prefix : {"Properties2", "battery", "check", "door", "tire", "veh"})
            m_out.resendAll(atMs, prefix);
    } else if (command == QLatin1String("requestParkingInfo")) {
        m_manoeuvre.resend(&m_out, atMs);
    } else if (command == QLatin1String("gaugeTLMenu") && pressed) {
        m_topLeft = TopLeft((m_topLeft + 1) % TopLeftCount);
        sayTitles(atMs);
    } else if (command == QLatin1String("centerGaugeMenu") && pressed) {
        m_arcs = !m_arcs;
        m_out.say(atMs, "gaugeGraphicalSettingNotify",
                  {QByteArray(5, m_arcs ? '\0' : '\1'), QByteArray(5, '\0')});
    } else if (command == QLatin1String("gaugesCustomControls") &&
               arguments.value(1).toInt() == 1) {
        m_preset = first == 0x12 ? 0 : 1;
        sayPresets(atMs);
    } else if (command == QLatin1String("NordaData_Request") && first == versionPage) {
        m_out.say(atMs, "NordaVerInfo", {versionTexts()});
        sayClock(atMs);
        m_tellsTime = true;
    } else if (command == QLatin1String("NordaData_Request") && first == menuPage) {
        m_menu.back(&m_out, atMs);
    } else if (command == QLatin1String("NordaSetSelectedLineNumber")) {
        m_menu.select(&m_out, atMs, first);
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
