#include "report/maincurves.h"

#include "plots/curve.h"
#include "session/session.h"

#include <QHash>

using module::Quantity;

/** In the order of interest. */
static constexpr Quantity mainQuantities[] = {
    Quantity::VehicleSpeed,       Quantity::EngineSpeed, Quantity::Throttle,
    Quantity::EngineLoad,         Quantity::Gear,        Quantity::CoolantTemperature,
    Quantity::OilTemperature,     Quantity::FuelRate,    Quantity::FuelLevel,
    Quantity::AmbientTemperature, Quantity::Voltage,     Quantity::ManifoldPressure,
};
static constexpr int mostCurves = 8;

static QString shortUnit(const QString &unit)
{
    static const QHash<QString, QString> shortUnits = {{"celsius", "°C"}, {"percent", "%"}};
    return shortUnits.value(unit, unit);
}

static Chart chartOf(const Curve &curve, const QString &name, const Session *session)
{
    static constexpr int columns = 400;
    const qint64 beginMs = session->journal()->dropped() > 0 ? session->journal()->beginMs() : 0;
    const qint64 endMs = qMax(session->nowMs(), beginMs + 1);
    return {name, shortUnit(curve.unit()), double(beginMs) / 1000, double(endMs) / 1000,
            curve.samples().reduced(beginMs, endMs, columns)};
}

/** Adds a curve that has a value. */
static void add(QVector<Chart> *charts, const QString &curveName, const QString &title,
                const Session *session)
{
    const std::optional<CurveName> name = CurveName::parse(curveName);
    if (!name || charts->size() == mostCurves)
        return;
    Curve curve(curveName, *name);
    curve.catchUp(session->journal(), session->quantities());
    if (!curve.samples().isEmpty())
        charts->append(chartOf(curve, title, session));
}

static QString titleOf(Quantity quantity)
{
    QString name = QLatin1String(module::quantityInfo(quantity).name);
    name[0] = name[0].toUpper();
    return name;
}

QVector<Chart> mainCurves(const Session *session)
{
    QVector<Chart> charts;
    for (const Quantity quantity : mainQuantities)
        add(&charts, QLatin1String(module::quantityInfo(quantity).path), titleOf(quantity),
            session);
    if (!charts.isEmpty())
        return charts;
    for (const QString &name : offeredCurves(session->journal(), session->quantities()))
        add(&charts, name, name, session);
    return charts;
}
