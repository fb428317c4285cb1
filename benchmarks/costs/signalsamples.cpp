#include "signalsamples.h"

#include "norda/vtqadaptor.h"
#include "pages.h"

#include <QMetaMethod>

#include <algorithm>
#include <tuple>

using norda::VtqAdaptor;

template <typename... Parameters>
using Signal = void (VtqAdaptor::*)(Parameters...);

template <typename... Parameters>
using Arguments = std::tuple<std::decay_t<Parameters>...>;

template <typename... Parameters>
static std::function<void()> emission(Signal<Parameters...> signal,
                                      const Arguments<Parameters...> &arguments)
{
    const auto emitSignal = [signal](const auto &...values) {
        emit(VtqAdaptor::instance()->*signal)(values...);
    };
    return [=] { std::apply(emitSignal, arguments); };
}

template <typename... Parameters>
static SignalSample sample(int page, Signal<Parameters...> signal,
                           const Arguments<Parameters...> &first,
                           const Arguments<Parameters...> &second)
{
    return {page, QMetaMethod::fromSignal(signal).name(), emission(signal, first),
            emission(signal, second)};
}

static QList<int> climateStatus(bool second)
{
    if (second)
        return {1, 3, 216, 1, 1, 3, 80, 81, 1, 2, 3, 1, 1, 0, 2, 2, 1, 180, 80, 1, 2, 0, 1};
    return {0, 0, 36, 4, 0, 0, 70, 71, 0, 0, 1, 0, 0, 0, 1, 1, 0, 36, 70, 0, 4, 0, 0};
}

static QByteArray bytes(std::initializer_list<char> values)
{
    return QByteArray(values.begin(), int(values.size()));
}

const std::vector<SignalSample> &signalSamples()
{
    using A = VtqAdaptor;
    const QStringList texts = {"One", "Two"};
    const QStringList others = {"Three", "Four"};
    const QByteArray off = bytes({0, 0});
    const QByteArray on = bytes({1, 1});
    // clang-format off
    static const std::vector<SignalSample> samples = {
        sample(GaugesPage, &A::centerGaugeValueNotify, {"3500", "RPM", 35}, {"3600", "RPM", 36}),
        sample(GaugesPage, &A::gaugeTLValueNotify, {"180", 180}, {"190", 190}),
        sample(GaugesPage, &A::gaugeTLValueDualNotify, {"181", "F", 181}, {"191", "F", 191}),
        sample(GaugesPage, &A::gaugeTRValueNotify, {"180", 180}, {"190", 190}),
        sample(GaugesPage, &A::gaugeTRValueDualNotify, {"181", "F", 181}, {"191", "F", 191}),
        sample(GaugesPage, &A::gaugeBLValueNotify, {"180", 180}, {"190", 190}),
        sample(GaugesPage, &A::gaugeBLValueDualNotify, {"181", "F", 181}, {"191", "F", 191}),
        sample(GaugesPage, &A::gaugeBRValueNotify, {"40", 40}, {"50", 50}),
        sample(GaugesPage, &A::gaugeBRValueDualNotify, {"41", "%", 41}, {"51", "%", 51}),
        sample(GaugesPage, &A::Properties2TextInfo, {{0, 13, 180, 120, 90, 40}}, {{0, 13, 190, 130, 80, 50}}),
        sample(GaugesPage, &A::gaugeTitlesNotify, {{"A", "B", "C", "D", "E"}}, {{"F", "G", "H", "I", "J"}}),
        sample(GaugesPage, &A::gaugeGraphicalSettingNotify, {bytes({1, 1, 1, 1, 1}), bytes({0, 0, 0, 0, 0})}, {bytes({0, 0, 0, 0, 0}), bytes({0, 0, 0, 0, 0})}),
        sample(GaugesPage, &A::peakIndicatorNotify, {0}, {1}),
        sample(GaugesPage, &A::peakIndicatorTextNotify, {"PEAK"}, {"SHIFT"}),
        sample(GaugesPage, &A::centerGaugePeakColorNotify, {1}, {2}),
        sample(GaugesPage, &A::centerGaugeRedLinePositionNotify, {60}, {65}),
        sample(GaugesPage, &A::shifterArrowIndicatorNotify, {0}, {1}),
        sample(GaugesPage, &A::gauTopBarTextNotify, {"86 km/h"}, {"87 km/h"}),
        sample(GaugesPage, &A::gauCustomControlLabelsNotify, {texts, off}, {others, on}),
        sample(GaugesPage, &A::activePresetStatusNotify, {1}, {2}),
        sample(GaugesPage, &A::gauPopUpNotify, {"Title", texts, texts, off}, {"Other", others, others, on}),
        sample(GaugesPage, &A::listInfoNotify, {"Title", off, texts, {}, off}, {"Other", on, others, {}, on}),
        sample(GaugesPage, &A::guiDisplayTypeNotify, {0}, {1}),

        sample(VehiclePage, &A::doorStatus, {0}, {63}),
        sample(VehiclePage, &A::batteryVoltage, {"12.4 V"}, {"14.1 V"}),
        sample(VehiclePage, &A::compassHeading, {"N"}, {"NE"}),
        sample(VehiclePage, &A::tirePressureStatus, {32, 0, {"30", "31", "32", "33", "0"}}, {47, 0, {"34", "35", "36", "37", "1"}}),
        sample(VehiclePage, &A::tireTemperatureStatus, {32, 0, {"70", "71", "72", "73"}}, {47, 0, {"80", "81", "82", "83"}}),
        sample(VehiclePage, &A::Properties2TextInfo, {{0, 124, 30, 31, 32, 33, 70, 71, 72, 73}}, {{63, 141, 34, 35, 36, 37, 80, 81, 82, 83}}),
        sample(VehiclePage, &A::seatbeltStatus, {0}, {1}),
        sample(VehiclePage, &A::checkEngineStatus, {0}, {1}),
        sample(VehiclePage, &A::checkGearPositionStatus, {0}, {1}),
        sample(VehiclePage, &A::vehicleInfoText, {"Rear left", "open"}, {"Rear right", "soft"}),
        sample(VehiclePage, &A::vehTopBarText, {"86 km/h"}, {"87 km/h"}),
        sample(VehiclePage, &A::vehCustomeCtrlLabels, {texts, off}, {others, on}),
        sample(VehiclePage, &A::vehPopUpNotify, {"Title", texts, texts, off}, {"Other", others, others, on}),
        sample(VehiclePage, &A::vehListInfo, {"Title", off, texts, {}, off}, {"Other", on, others, {}, on}),
        sample(VehiclePage, &A::vehGuiDisplayType, {0}, {1}),

        sample(ClimatePage, &A::NordaClimateCtrlStatusNotify, {climateStatus(false)}, {climateStatus(true)}),
        sample(ClimatePage, &A::climateType, {}, {}),
        sample(ClimatePage, &A::secondclimateType, {}, {}),

        sample(ParkingPage, &A::parkingDistanceFront, {bytes({0, 1, 2, 3})}, {bytes({4, 3, 2, 1})}),
        sample(ParkingPage, &A::parkingDistanceLeft, {bytes({0, 1, 2, 3})}, {bytes({4, 3, 2, 1})}),
        sample(ParkingPage, &A::parkingDistanceRight, {bytes({0, 1, 2, 3})}, {bytes({4, 3, 2, 1})}),
        sample(ParkingPage, &A::parkingDistanceRear, {bytes({7, 2})}, {bytes({7, 3})}),
        sample(ParkingPage, &A::parkingTopBarText, {"3 km/h"}, {"4 km/h"}),
        sample(ParkingPage, &A::parkCustomControlLabels, {texts, off}, {others, on}),
        sample(ParkingPage, &A::parkPopUpNotify, {"Title", texts, texts, off}, {"Other", others, others, on}),
        sample(ParkingPage, &A::parkListInfo, {"Title", off, texts, {}, off}, {"Other", on, others, {}, on}),
        sample(ParkingPage, &A::parkGuiDisplayType, {0}, {1}),

        sample(SettingsPage, &A::NordaConfigMenuTextInfo, {{2, 0, 2}, {"Row"}, {"On"}}, {{2, 0, 2}, {"Row"}, {"Off"}}),

        sample(AboutPage, &A::NordaVerInfo, {{"", "1", "2", "3"}}, {{"", "4", "5", "6"}}),
        sample(AboutPage, &A::TimeInfo, {{"1", "2", "3", "1", "2", "4", "0", "9", "3", "0", "1", "5"}}, {{"1", "2", "3", "1", "2", "4", "0", "9", "3", "0", "1", "6"}}),
    };
    // clang-format on
    return samples;
}

QByteArray signalWithoutSample()
{
    const QMetaObject &adaptor = VtqAdaptor::staticMetaObject;
    const std::vector<SignalSample> &samples = signalSamples();
    for (int i = adaptor.methodOffset(); i < adaptor.methodCount(); ++i) {
        const QMetaMethod method = adaptor.method(i);
        const bool isSampled =
            std::any_of(samples.begin(), samples.end(),
                        [&](const SignalSample &sample) { return sample.name == method.name(); });
        if (method.methodType() == QMetaMethod::Signal && !isSampled)
            return method.name();
    }
    return {};
}
