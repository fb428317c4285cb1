// Logs of any content as a car's own frames, explained by a DBC file and a map with all that these
// can hold. What opens is looked at, sought in and played.

#include "inputfile.h"
#include "playback.h"

static const char description[] = "BO_ 256 Engine: 8 U\n"
                                  " SG_ Rpm : 7|16@0+ (0.25,0) [0|0] \"rpm\" D\n"
                                  " SG_ Coolant : 16|8@1- (1,40) [0|0] \"degC\" D\n"
                                  " SG_ Volts : 32|32@1- (1,0) [0|0] \"V\" D\n"
                                  "BO_ 257 Body: 8 U\n"
                                  " SG_ Page M : 0|4@1+ (1,0) [0|0] \"\" D\n"
                                  " SG_ Door m0 : 8|2@1+ (1,0) [0|0] \"\" D\n"
                                  " SG_ Tire m1 : 8|12@1+ (0.5,0) [0|0] \"kPa\" D\n"
                                  " SG_ Gear m2 : 15|8@0- (1,0) [0|0] \"\" D\n"
                                  "BO_ 2147483906 Climate: 64 U\n"
                                  " SG_ Left : 500|8@1+ (0.5,0) [0|0] \"degC\" D\n"
                                  " SG_ Rear : 0|64@1+ (0.01,0) [0|0] \"m\" D\n"
                                  "SIG_VALTYPE_ 256 Volts : 1;\n"
                                  "VAL_ 257 Door 0 \"CLOSED\" 1 \"OPEN\" 3 \"SNA\" ;\n"
                                  "VAL_ 257 Gear 127 \"SNA\" ;\n";

static const char map[] = R"json({
    "Vehicle.Powertrain.CombustionEngine.Speed": {"dbc2vss": {"signal": "Rpm", "interval_ms": 20}},
    "Vehicle.Powertrain.CombustionEngine.ECT": {"dbc2vss": {"signal": "Coolant",
        "transform": {"math": "x / (x - 1) + floor(x)"}}},
    "Vehicle.LowVoltageBattery.CurrentVoltage": {"dbc2vss": {"signal": "Volts", "interval_ms": 0}},
    "Vehicle.Cabin.Door.Row1.DriverSide.IsOpen": {"dbc2vss": {"signal": "Door", "on_change": true,
        "transform": {"mapping": [{"from": "OPEN", "to": true}, {"from": 0, "to": false}]}}},
    "Vehicle.Chassis.Axle.Row1.Wheel.Left.Tire.Pressure": {"dbc2vss": {"signal": "Tire"}},
    "Vehicle.Powertrain.Transmission.CurrentGear": {"dbc2vss": {"signal": "Gear"}},
    "Vehicle.Cabin.HVAC.Station.Row1.Driver.Temperature": {"dbc2vss": {"signal": "Left"}},
    "Vehicle.Private.Obstacle.Rear.Left.Distance": {"dbc2vss": {"signal": "Rear"}}})json";

static InputFile *file;
static module::CarFiles car;

/** Writes a file that stays as long as the process. */
static QString hold(const char *content)
{
    auto *held = new QTemporaryFile(QCoreApplication::instance());
    if (!held->open() || held->write(content) < 0 || !held->flush())
        qFatal("no temporary file");
    return held->fileName();
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    file = new InputFile(argc, *argv);
    car = {hold(description), hold(map)};
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QString error;
    const QString log = file->hold(data, size);
    const auto source = module::openSource(log, &error, module::Trim::Full, car);
    if (source)
        playBack(source.get());
    else if (error.isEmpty() || error.contains(QLatin1Char('\n')))
        std::abort(); // one line says what is wrong
    return 0;
}
