#include "simulatedcar.h"

#include "adaptorlink.h"
#include "norda/vtqservice.h"
#include "units.h"
#include "wire.h"

#include <algorithm>

namespace module {

static constexpr qint64 answerDelayMs = 20; // between a touch and the module's answer
static constexpr qint64 climateMs = 100;

SimulatedCar::SimulatedCar(Trim trim)
{
    equip(trim);
    QMap<int, bool> zones;
    for (int zone = wire::FirstZone; zone <= wire::LastZone; ++zone)
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

/** The trip begins again; what touches have set stays. */
void SimulatedCar::restart()
{
    m_powertrain = Powertrain();
    m_climate = Climate(m_trim);
    m_tires = Tires();
    m_body = Body();
    m_manoeuvre = Manoeuvre();
    m_prompts = Prompts();
    m_car.forgetAll();
    m_out.clear();
    m_nowMs = 0;
    m_gauges.reportTitles(&m_out, 0, m_car);
    m_gauges.reportPresets(&m_out, 0);
    reportClimate(0);
    m_out.add(0, "peakIndicatorNotify", {byte(0)});
    m_out.add(0, "parkingDistanceRear", Manoeuvre::allClear());
    m_body.step(0, m_powertrain, m_tires, m_controls);
    report();
    runUntilEmission();
}

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

void SimulatedCar::seek(qint64 ms)
{
    restart();
    while (!m_out.isEmpty() && m_out.first().atMs < ms)
        take();
    m_out.prependState(ms);
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
    applyOverrides(&wish);
    m_powertrain.step(wish, m_controls);
    m_highestRpm = qMax(m_highestRpm, m_powertrain.rpm());
    m_tires.step(m_nowMs, m_powertrain, m_controls);
    m_body.step(m_nowMs, m_powertrain, m_tires, m_controls);
    m_manoeuvre.step(m_nowMs, m_powertrain.speedKmh(), m_controls);
    m_prompts.step(m_nowMs, m_powertrain.speedKmh(), m_body, m_tires, m_manoeuvre);
    report();
    if (m_nowMs % climateMs == 0 &&
        m_climate.step(m_powertrain.ambient(), m_powertrain.isRunning()))
        reportClimate(m_nowMs);
}

void SimulatedCar::applyOverrides(DriverWish *wish)
{
    if (m_controls.isOverridden(Controls::Engine)) {
        wish->engineOn = m_controls.value(Controls::Engine) != 0;
        wish->ignition = wish->ignition || wish->engineOn;
        wish->cranking = false;
    }
    if (m_controls.isOverridden(Controls::Speed)) {
        wish->speedKmh = kilometres(m_controls.value(Controls::Speed));
        wish->reverse = wish->creeping = false;
    }
    if (m_controls.isOverridden(Controls::Prompt))
        m_prompts.play(m_controls.take(Controls::Prompt));
    if (m_controls.isOverridden(Controls::ClimateTrim))
        applyTrim(Trim(m_controls.take(Controls::ClimateTrim)));
}

void SimulatedCar::applyTrim(Trim trim)
{
    equip(trim);
    m_out.add(m_nowMs, "climateType", {});
    m_out.add(m_nowMs, "secondclimateType", {});
    reportClimate(m_nowMs);
}

/** What the module does on a command. */
struct SimulatedCar::Answer
{
    const char *command;
    int argument; // that has to have the value; -1 for none
    int value;
    void (*give)(SimulatedCar &car, qint64 atMs, const QVariantList &arguments);
};

// clang-format off
const SimulatedCar::Answer SimulatedCar::answers[] = {
    {"requestGaugesInfo", -1, 0, [](SimulatedCar &car, qint64 atMs, const QVariantList &) {
        car.m_out.resend(atMs, {"gau", "center", "peak", "shifter", "active"});
    }},
    {"requestVehicleInfo", -1, 0, [](SimulatedCar &car, qint64 atMs, const QVariantList &) {
        car.m_out.resend(atMs, {"Properties2", "battery", "check", "door", "tire", "veh"});
    }},
    // The order matters: a zone message clears the front zones.
    {"requestParkingInfo", -1, 0, [](SimulatedCar &car, qint64 atMs, const QVariantList &) {
        car.m_out.resend(atMs, {"parkingTopBarText", "parkingDistanceRear", "parkingDistanceFront"});
    }},
    {"requestMainClimateInfo", -1, 0, [](SimulatedCar &car, qint64 atMs, const QVariantList &) {
        car.reportClimate(atMs);
    }},
    {"requestSecondClimateInfo", -1, 0, [](SimulatedCar &car, qint64 atMs, const QVariantList &) {
        car.reportClimate(atMs);
    }},
    {"NordatriggerRearDefrostButton", -1, 0, [](SimulatedCar &car, qint64 atMs, const QVariantList &arguments) {
        car.m_climate.press(arguments.value(0).value<QMap<int, int>>());
        car.reportClimate(atMs);
    }},
    {"manTempValue", -1, 0, [](SimulatedCar &car, qint64 atMs, const QVariantList &arguments) {
        car.m_climate.setTemperature(arguments.value(0).toInt());
        car.reportClimate(atMs);
    }},
    {"secoundmanTempValue", -1, 0, [](SimulatedCar &car, qint64 atMs, const QVariantList &arguments) {
        car.m_climate.setTemperature(arguments.value(0).toInt());
        car.reportClimate(atMs);
    }},
    {"fanDirectValue", -1, 0, [](SimulatedCar &car, qint64 atMs, const QVariantList &arguments) {
        car.m_climate.setFan(arguments.value(0).toInt());
        car.reportClimate(atMs);
    }},
    {"secoundfanDirectValue", -1, 0, [](SimulatedCar &car, qint64 atMs, const QVariantList &arguments) {
        car.m_climate.setRearFan(arguments.value(0).toInt());
        car.reportClimate(atMs);
    }},
    {"gaugeTLMenu", 0, wire::Pressed, [](SimulatedCar &car, qint64 atMs, const QVariantList &) {
        GaugeCluster::nextTopLeft(&car.m_car);
        car.m_gauges.reportTitles(&car.m_out, atMs, car.m_car);
    }},
    {"centerGaugeMenu", 0, wire::Pressed, [](SimulatedCar &car, qint64 atMs, const QVariantList &) {
        car.m_gauges.nextStyle();
        car.m_gauges.reportStyle(&car.m_out, atMs);
    }},
    {"gaugesCustomControls", 1, wire::Pressed, [](SimulatedCar &car, qint64 atMs, const QVariantList &arguments) {
        car.m_gauges.setPreset(arguments.value(0).toInt() == wire::FirstKey ? 0 : 1);
        car.m_gauges.reportPresets(&car.m_out, atMs);
    }},
    {"NordaData_Request", 0, wire::VersionPage, [](SimulatedCar &car, qint64 atMs, const QVariantList &) {
        car.m_out.add(atMs, "NordaVerInfo", {versionTexts()});
        car.reportClock(atMs);
        car.m_reportsClock = true;
    }},
    {"NordaData_Request", 0, wire::MenuPage, [](SimulatedCar &car, qint64 atMs, const QVariantList &) {
        car.m_menu.back(&car.m_out, atMs);
    }},
    {"NordaSetSelectedLineNumber", -1, 0, [](SimulatedCar &car, qint64 atMs, const QVariantList &arguments) {
        car.m_menu.select(&car.m_out, atMs, arguments.value(0).toInt());
    }},
};
// clang-format on

bool SimulatedCar::command(qint64 nowMs, const QString &operation, const QVariantList &arguments)
{
    const QString name = adaptorCommand(operation);
    const auto fits = [&name, &arguments](const Answer &answer) {
        return name == QLatin1String(answer.command) &&
               (answer.argument < 0 || arguments.value(answer.argument).toInt() == answer.value);
    };
    const auto *const answer = std::find_if(std::begin(answers), std::end(answers), fits);
    if (answer == std::end(answers))
        return false;
    answer->give(*this, nowMs + answerDelayMs, arguments);
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
