#include "plugin.h"

#include "debug.h"
#include "norda/btvoicesource.h"
#include "norda/pages.h"
#include "norda/vtqadaptor.h"
#include "norda/window/Aboutwindow.h"
#include "norda/window/climatewindow.h"
#include "norda/window/gaugeswindow.h"
#include "norda/window/parkingassistwindow.h"
#include "norda/window/settingwindow.h"
#include "norda/window/vehicleinfowindow.h"

namespace norda {

template <typename Window>
static WindowInterface *make(int, QObject *parent)
{
    return new Window(parent);
}

template <typename Window>
static WindowInterface *makeWithId(int id, QObject *parent)
{
    return new Window(id, parent);
}

struct WindowRow
{
    WindowId id;
    WindowInterface *(*make)(int id, QObject *parent);
    bool marked; // writes a trace mark before the look-up and before construction
};

// clang-format off
static constexpr WindowRow windowRows[] = {
    {WindowId::Gauges,   make<GaugesWindow>,        false},
    {WindowId::Vehicle,  makeWithId<VehicleWindow>, false},
    {WindowId::Climate,  make<ClimateWindow>,       false},
    {WindowId::Parking,  makeWithId<ParkingWindow>, false},
    {WindowId::Settings, makeWithId<SettingWindow>, true},
    {WindowId::About,    makeWithId<AboutWindow>,   true},
};
// clang-format on
static constexpr int firstWindow = int(windowRows[0].id);
static constexpr int firstSource = 51;

Plugin::Plugin() = default;

Plugin::~Plugin() = default;

void Plugin::create()
{
    NORDA_TRACE << "norda";
    initQuillo();
}

void Plugin::initQuillo()
{
    startQuilloSevice();
}

void Plugin::startQuilloSevice()
{
    NORDA_TRACE << "startNordaSevice";
    NORDA_TRACE << "startNordaSevice123321";
    VtqAdaptor::instance()->connectService();
}

QList<int> Plugin::windowInterfaceID()
{
    QList<int> ids;
    for (const WindowRow &row : windowRows)
        ids.append(int(row.id));
    return ids;
}

QList<int> Plugin::sourceInterfaceID()
{
    QList<int> ids;
    for (size_t voice = 0; voice < m_voiceSources.size(); ++voice)
        ids.append(firstSource + int(voice));
    return ids;
}

WindowInterface *Plugin::requestWindowInterface(int id)
{
    static_assert(std::tuple_size_v<decltype(m_windows)> == std::size(windowRows));

    NORDA_TRACE << "norda_requestWindowInterface" << id;
    if (id < firstWindow || id >= firstWindow + int(m_windows.size()))
        return nullptr;

    const WindowRow &row = windowRows[id - firstWindow];
    WindowInterface *&window = m_windows[size_t(id - firstWindow)];
    if (row.marked)
        NORDA_TRACE;
    if (!window) {
        if (row.marked)
            NORDA_TRACE;
        window = row.make(id, this);
    }
    return window;
}

SourceInterface *Plugin::requestSourceInterface(int id)
{
    if (id < firstSource || id >= firstSource + int(m_voiceSources.size()))
        return nullptr;

    const int voice = id - firstSource;
    SourceInterface *&source = m_voiceSources[size_t(voice)];
    if (!source)
        source = new BTVoiceSource(voice, this);
    return source;
}

} // namespace norda
