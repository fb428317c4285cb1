#include "csvheader.h"

#include "units.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>
#include <QTextCodec>

namespace module {

struct Alias
{
    const char *words; // a heading in lower case, words apart, without its unit
    CsvColumn::Role role;
    Quantity quantity;
};

// clang-format off
static constexpr Alias aliases[] = {
    {"rpm",                              CsvColumn::Value, Quantity::EngineSpeed},
    {"engine rpm",                       CsvColumn::Value, Quantity::EngineSpeed},
    {"engine speed",                     CsvColumn::Value, Quantity::EngineSpeed},
    {"engine revolutions",               CsvColumn::Value, Quantity::EngineSpeed},
    {"load",                             CsvColumn::Value, Quantity::EngineLoad},
    {"engine load",                      CsvColumn::Value, Quantity::EngineLoad},
    {"calculated load",                  CsvColumn::Value, Quantity::EngineLoad},
    {"calculated load value",            CsvColumn::Value, Quantity::EngineLoad},
    {"calculated engine load",           CsvColumn::Value, Quantity::EngineLoad},
    {"calculated engine load value",     CsvColumn::Value, Quantity::EngineLoad},
    {"engine calculated load",           CsvColumn::Value, Quantity::EngineLoad},
    {"coolant temp",                     CsvColumn::Value, Quantity::CoolantTemperature},
    {"coolant temperature",              CsvColumn::Value, Quantity::CoolantTemperature},
    {"engine coolant temp",              CsvColumn::Value, Quantity::CoolantTemperature},
    {"engine coolant temperature",       CsvColumn::Value, Quantity::CoolantTemperature},
    {"ect",                              CsvColumn::Value, Quantity::CoolantTemperature},
    {"iat",                              CsvColumn::Value, Quantity::IntakeTemperature},
    {"intake temp",                      CsvColumn::Value, Quantity::IntakeTemperature},
    {"intake temperature",               CsvColumn::Value, Quantity::IntakeTemperature},
    {"intake air temp",                  CsvColumn::Value, Quantity::IntakeTemperature},
    {"intake air temperature",           CsvColumn::Value, Quantity::IntakeTemperature},
    {"ambient temp",                     CsvColumn::Value, Quantity::AmbientTemperature},
    {"ambient temperature",              CsvColumn::Value, Quantity::AmbientTemperature},
    {"ambient air temp",                 CsvColumn::Value, Quantity::AmbientTemperature},
    {"ambient air temperature",          CsvColumn::Value, Quantity::AmbientTemperature},
    {"outside temperature",              CsvColumn::Value, Quantity::AmbientTemperature},
    {"oil temp",                         CsvColumn::Value, Quantity::OilTemperature},
    {"oil temperature",                  CsvColumn::Value, Quantity::OilTemperature},
    {"engine oil temp",                  CsvColumn::Value, Quantity::OilTemperature},
    {"engine oil temperature",           CsvColumn::Value, Quantity::OilTemperature},
    {"transmission temp",                CsvColumn::Value, Quantity::TransmissionTemperature},
    {"transmission temperature",         CsvColumn::Value, Quantity::TransmissionTemperature},
    {"transmission fluid temperature",   CsvColumn::Value, Quantity::TransmissionTemperature},
    {"transmission oil temperature",     CsvColumn::Value, Quantity::TransmissionTemperature},
    {"gearbox oil temperature",          CsvColumn::Value, Quantity::TransmissionTemperature},
    {"speed",                            CsvColumn::Value, Quantity::VehicleSpeed},
    {"speed obd",                        CsvColumn::Value, Quantity::VehicleSpeed},
    {"obd speed",                        CsvColumn::Value, Quantity::VehicleSpeed},
    {"vehicle speed",                    CsvColumn::Value, Quantity::VehicleSpeed},
    {"voltage",                          CsvColumn::Value, Quantity::Voltage},
    {"battery voltage",                  CsvColumn::Value, Quantity::Voltage},
    {"module voltage",                   CsvColumn::Value, Quantity::Voltage},
    {"control module voltage",           CsvColumn::Value, Quantity::Voltage},
    {"voltage control module",           CsvColumn::Value, Quantity::Voltage},
    {"obd module voltage",               CsvColumn::Value, Quantity::Voltage},
    {"throttle",                         CsvColumn::Value, Quantity::Throttle},
    {"throttle position",                CsvColumn::Value, Quantity::Throttle},
    {"absolute throttle position",       CsvColumn::Value, Quantity::Throttle},
    {"intake manifold pressure",         CsvColumn::Value, Quantity::ManifoldPressure},
    {"manifold absolute pressure",       CsvColumn::Value, Quantity::ManifoldPressure},
    {"engine fuel rate",                 CsvColumn::Value, Quantity::FuelRate},
    {"fuel tank",                        CsvColumn::Value, Quantity::FuelLevel},
    {"fuel level",                       CsvColumn::Value, Quantity::FuelLevel},
    {"catalyst temperature",             CsvColumn::Value, Quantity::CatalystTemperature},
    {"catalyst temperature bank1 sensor1", CsvColumn::Value, Quantity::CatalystTemperature},
    {"catalyst temperature bank 1 sensor 1", CsvColumn::Value, Quantity::CatalystTemperature},
    {"absolute barometric pressure",     CsvColumn::Value, Quantity::BarometricPressure},
    {"barometric pressure",              CsvColumn::Value, Quantity::BarometricPressure},
    {"time",                             CsvColumn::Time, Quantity::Count},
    {"timestamp",                        CsvColumn::Time, Quantity::Count},
    {"time stamp",                       CsvColumn::Time, Quantity::Count},
    {"date",                             CsvColumn::Time, Quantity::Count},
    {"date time",                        CsvColumn::Time, Quantity::Count},
    {"datetime",                         CsvColumn::Time, Quantity::Count},
    {"device time",                      CsvColumn::Time, Quantity::Count},
    {"gps time",                         CsvColumn::Time, Quantity::Count},
    {"elapsed time",                     CsvColumn::Time, Quantity::Count},
    {"elapsed",                          CsvColumn::Time, Quantity::Count},
    {"seconds",                          CsvColumn::Time, Quantity::Count},
    {"engine run time",                  CsvColumn::RunTime, Quantity::Count},
    {"engine run tine",                  CsvColumn::RunTime, Quantity::Count}, // seen in the wild
    {"engine runtime",                   CsvColumn::RunTime, Quantity::Count},
    {"run time",                         CsvColumn::RunTime, Quantity::Count},
    {"run time since engine start",      CsvColumn::RunTime, Quantity::Count},
    {"time since engine start",          CsvColumn::RunTime, Quantity::Count},
};

struct UnitName
{
    const char *text;
    CsvColumn::Unit unit;
};

static constexpr UnitName units[] = {
    {"", CsvColumn::Metric},      {"rpm", CsvColumn::Metric},       {"%", CsvColumn::Metric},
    {"v", CsvColumn::Metric},     {"c", CsvColumn::Metric},         {"degc", CsvColumn::Metric},
    {"km/h", CsvColumn::Metric},  {"kph", CsvColumn::Metric},       {"kmh", CsvColumn::Metric},
    {"kpa", CsvColumn::Metric},   {"l/h", CsvColumn::Metric},       {"s", CsvColumn::Metric},
    {"sec", CsvColumn::Metric},   {"f", CsvColumn::Fahrenheit},     {"degf", CsvColumn::Fahrenheit},
    {"mph", CsvColumn::MilesPerHour}, {"mi/h", CsvColumn::MilesPerHour},
    {"ms", CsvColumn::Milliseconds},
};

static constexpr const char *dateFormats[] = {
    "dd-MMM-yyyy HH:mm:ss.zzz", "dd-MMM-yyyy HH:mm:ss", "yyyy-MM-dd HH:mm:ss.zzz",
    "yyyy-MM-dd HH:mm:ss",      "yyyy/MM/dd HH:mm:ss",  "dd.MM.yyyy HH:mm:ss",
    "dd.MM.yyyy HH:mm:ss.zzz",
};
// clang-format on

QString csvText(const QByteArray &line)
{
    QTextCodec::ConverterState state;
    QByteArray bytes = line;
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 ? text : QString::fromLatin1(bytes);
}

QStringList csvFields(const QString &row, QChar separator)
{
    QStringList fields;
    QString field;
    bool quoted = false;
    for (const QChar c : row) {
        if (c == QLatin1Char('"')) {
            quoted = !quoted;
        } else if (c == separator && !quoted) {
            fields.append(field.trimmed());
            field.clear();
        } else {
            field.append(c);
        }
    }
    fields.append(field.trimmed());
    return fields;
}

QChar csvSeparator(const QString &header)
{
    for (const QChar separator : {QLatin1Char(';'), QLatin1Char('\t')}) {
        if (header.contains(separator))
            return separator;
    }
    return QLatin1Char(',');
}

static const UnitName *findUnit(QString text)
{
    text = text.toLower().remove(QChar(0x00B0)).remove(QLatin1Char(' '));
    for (const UnitName &unit : units) {
        if (text == QLatin1String(unit.text))
            return &unit;
    }
    return nullptr;
}

CsvColumn csvColumn(const QString &heading)
{
    static const QRegularExpression brackets(QStringLiteral("[(\\[]([^)\\]]*)[)\\]]"));
    static const QRegularExpression betweenWords(QStringLiteral("[^a-z0-9]+"));

    // Brackets hold the unit, or a part of the name such as "(OBD)".
    CsvColumn column;
    QString name = heading;
    for (auto it = brackets.globalMatch(heading); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        if (const UnitName *unit = findUnit(match.captured(1))) {
            column.unit = unit->unit;
            name.remove(match.captured(0));
        }
    }
    const QString words = name.toLower().replace(betweenWords, QStringLiteral(" ")).trimmed();
    for (const Alias &alias : aliases) {
        if (words == QLatin1String(alias.words)) {
            column.role = alias.role;
            column.quantity = alias.quantity;
        }
    }
    return column;
}

double metricValue(const CsvColumn &column, double number)
{
    switch (column.unit) {
    case CsvColumn::Fahrenheit:
        return celsius(number);
    case CsvColumn::MilesPerHour:
        return kilometres(number);
    default:
        return number;
    }
}

static double numericTimeMs(double number, CsvColumn::Unit unit)
{
    static constexpr double firstEpochMs = 1e11; // seconds since the epoch stay below this
    const bool isMs = unit == CsvColumn::Milliseconds || number >= firstEpochMs;
    return number >= 0 && number < 1e15 ? (isMs ? number : number * 1000.0) : -1;
}

static QDateTime dateTime(const QString &field)
{
    QDateTime time = QDateTime::fromString(field, Qt::ISODateWithMs);
    for (const char *format : dateFormats) {
        if (time.isValid())
            break;
        time = QLocale::c().toDateTime(field, QLatin1String(format));
    }
    return time;
}

static QTime timeOfDay(const QString &text)
{
    for (const char *format :
         {"H:mm:ss.zzz", "H:mm:ss", "H:mm", "h:mm:ss.zzz AP", "h:mm:ss AP", "h:mm AP"}) {
        const QTime time = QLocale::c().toTime(text, QLatin1String(format));
        if (time.isValid())
            return time;
    }
    return {};
}

/** A date with slashes, whose order depends on the country, and a time of 12 or 24 hours. */
static QDateTime slashedDateTime(const QString &field, DateOrder order)
{
    static constexpr int century = 2000; // of a year with two digits
    static const QRegularExpression form(
        QStringLiteral("\\A(\\d\\d?)/(\\d\\d?)/(\\d\\d|\\d{4}),? +(.+)\\z"));
    const QRegularExpressionMatch match = form.match(field);
    const int month = match.captured(order == DateOrder::MonthFirst ? 1 : 2).toInt();
    const int day = match.captured(order == DateOrder::MonthFirst ? 2 : 1).toInt();
    const int year = match.captured(3).toInt();
    const QDate date(year < 100 ? century + year : year, month, day);
    const QTime time = timeOfDay(match.captured(4));
    return date.isValid() && time.isValid() ? QDateTime(date, time) : QDateTime();
}

double csvTimeMs(const QString &field, CsvColumn::Unit unit, DateOrder order)
{
    bool isNumber = false;
    const double number = field.toDouble(&isNumber);
    if (isNumber)
        return numericTimeMs(number, unit);
    if (!field.contains(QLatin1Char(':')))
        return -1; // a date without a time is the same all day
    QDateTime time = dateTime(field);
    if (!time.isValid())
        time = slashedDateTime(field, order);
    if (time.isValid())
        return double(time.toMSecsSinceEpoch());
    for (const char *format : {"HH:mm:ss.zzz", "HH:mm:ss"}) {
        const QTime clock = QTime::fromString(field, QLatin1String(format));
        if (clock.isValid())
            return clock.msecsSinceStartOfDay();
    }
    return -1;
}

} // namespace module
