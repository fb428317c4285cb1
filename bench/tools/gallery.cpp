#include "tools/gallery.h"

#include "cameraview.h"
#include "norda/vtqadaptor.h"
#include "norda/vtqservice.h"
#include "pages.h"
#include "panels/audiomonitor.h"
#include "screen.h"
#include "session/rig.h"
#include "session/session.h"
#include "statuscolumn.h"
#include "tools/picturefile.h"
#include "tools/stillscreen.h"

#include <QAbstractButton>
#include <QDir>

/** What the states work on. */
struct Scene
{
    Screen *screen;
    WindowStack *windows;
    Session *session;
    module::Trim trim;
};

struct State
{
    QString file;
    int window;
    void (*prepare)(const Scene &scene); // may be null
    void (*restore)(const Scene &scene); // may be null
};

static void toFastestMoment(const Scene &scene)
{
    scene.session->drive()->seek(scene.session->fastestMs());
}

static void setStyle(char style)
{
    emit norda::VtqAdaptor::instance()->gaugeGraphicalSettingNotify(QByteArray(5, style),
                                                                    QByteArray(5, '\0'));
}

static void showClimate(const QList<int> &status)
{
    emit norda::VtqAdaptor::instance()->NordaClimateCtrlStatusNotify(status);
}

/** A status list of which only the rear zone matters. */
static QList<int> rearZone(int on, int ac, int seats, int fan, int temperature, int vent)
{
    return QVector<int>(14, 0).toList()
           << seats << seats << ac << fan << temperature << on << vent << 0 << ac;
}

static void toggleZone(const Scene &scene)
{
    if (auto *key = scene.screen->findChild<QAbstractButton *>(QStringLiteral("key_rear")))
        key->click();
}

static void report(int zone, int level)
{
    QByteArray message;
    message.append(char(zone)).append(char(level));
    emit norda::VtqAdaptor::instance()->parkingDistanceRear(message);
}

/** Turning past the post into the bay, or at the wall. */
static void showCamera(const Scene &scene, bool atWall, bool split)
{
    RearView view;
    if (atWall)
        view = {0, 0, 0.4, 0, 1.35, -4};
    else
        view = {-12, 7, 3.1, 0.2, 1.5, 1.6};
    scene.screen->camera()->setView(view);
    scene.screen->setSplit(split);
    scene.screen->showCamera(true);
}

static void closeCamera(const Scene &scene)
{
    scene.windows->back();
    scene.screen->setSplit(false);
    scene.screen->camera()->setView(scene.session->rearView());
}

static void request(int page)
{
    norda::VtqAdaptor::instance()->NordaData_Request(page);
}

static void touchRow(const Scene &scene, int row)
{
    const QString name = QStringLiteral("key_item_%1").arg(row);
    if (auto *key = scene.screen->findChild<QAbstractButton *>(name))
        key->click();
}

/** The audio monitor during a warning tone; no page shows it. */
static QImage stageDuringTone(AudioStage *stage)
{
    static constexpr unsigned char warningTone = 4;
    static constexpr unsigned char inFront = 19;
    norda::VtqService *service = norda::VtqService::instance();
    emit service->audioInterruptNotify(warningTone, inFront);
    AudioMonitor view(stage);
    view.resize(800, 480);
    QImage picture = view.grab().toImage();
    emit service->audioInterruptNotify(0, 0);
    return picture;
}

/** A rear zone without some of its controls, applied by a text for that zone. */
static void showPartialFeatures(const Scene &scene)
{
    norda::VtqService *service = norda::VtqService::instance();
    service->setRearClimateControlFeatures(0, {{0, true}, {1, true}, {3, true}, {4, true}});
    service->setRearClimateControlFeatures(1, {{3, true}, {4, true}, {5, true}, {7, true}});
    QMetaObject::invokeMethod(scene.windows->currentPage(), "onSecondCliTopBarTextNotify",
                              Q_ARG(QString, QStringLiteral("Rear zone")));
}

static void restoreFeatures(const Scene &scene)
{
    norda::VtqService *service = norda::VtqService::instance();
    const module::Climate car(scene.trim);
    for (const int group : {0, 1})
        service->setRearClimateControlFeatures(group, car.rearFeatures(group));
    scene.windows->recreateWindow();
}

// clang-format off
// A page without a row is shown as it opens.
static const State states[] = {
    {"80-gauges", GaugesPage, toFastestMoment, nullptr},
    {"80-gauges-arcs", GaugesPage,
        [](const Scene &) { setStyle('\0'); }, [](const Scene &) { setStyle('\1'); }},
    {"80-gauges-errors", GaugesPage,
        [](const Scene &) {
            emit norda::VtqAdaptor::instance()->centerGaugeValueNotify("65535", "RPM", 0);
            emit norda::VtqAdaptor::instance()->Properties2TextInfo({0, 0, 255, 255, -1, 101});
        }, toFastestMoment},
    {"80-gauges-shift", GaugesPage,
        [](const Scene &) {
            norda::VtqAdaptor *adaptor = norda::VtqAdaptor::instance();
            emit adaptor->peakIndicatorTextNotify("SHIFT");
            emit adaptor->centerGaugePeakColorNotify(1);
            emit adaptor->peakIndicatorNotify(1);
            emit adaptor->shifterArrowIndicatorNotify(1);
        }, nullptr},
    {"81-vehicle", VehiclePage,
        [](const Scene &) { emit norda::VtqAdaptor::instance()->doorStatus(0); }, nullptr},
    {"81-vehicle-open", VehiclePage,
        [](const Scene &) { emit norda::VtqAdaptor::instance()->doorStatus(0x3F); },
        [](const Scene &) { emit norda::VtqAdaptor::instance()->doorStatus(0); }},
    {"81-vehicle-puncture", VehiclePage,
        [](const Scene &) {
            norda::VtqAdaptor *adaptor = norda::VtqAdaptor::instance();
            emit adaptor->tirePressureStatus(0x28, 0, {"36 psi", "36 psi", "17 psi", "35 psi", "0"});
            emit adaptor->tireTemperatureStatus(0x28, 0, {"93F", "93F", "88F", "121F"});
            emit adaptor->vehicleInfoText("Rear right tire", "pressure low");
        }, nullptr},
    {"81-vehicle-info", VehiclePage,
        [](const Scene &) {
            norda::VtqAdaptor *adaptor = norda::VtqAdaptor::instance();
            emit adaptor->checkEngineStatus(2);
            emit adaptor->vehicleInfoText("Check engine", "Visit a workshop");
        },
        [](const Scene &) { emit norda::VtqAdaptor::instance()->vehicleInfoText("", ""); }},
    {"81-vehicle-unknown", VehiclePage,
        [](const Scene &) {
            norda::VtqAdaptor *adaptor = norda::VtqAdaptor::instance();
            emit adaptor->checkEngineStatus(1);
            emit adaptor->checkEngineStatus(0);
            emit adaptor->batteryVoltage("");
            emit adaptor->tireTemperatureStatus(0, 0, {});
        },
        [](const Scene &scene) { toFastestMoment(scene); }},
    {"82-climate", ClimatePage, toFastestMoment, nullptr},
    {"82-climate-off", ClimatePage,
        [](const Scene &) { showClimate({0, 0, 0, 4, 0, 0, 70, 70, 1, 0, 0, 0, 0}); }, nullptr},
    {"82-climate-cool", ClimatePage,
        [](const Scene &) { showClimate({1, 1, 252, 4, 1, 0, 50, 62, 0, 19, 18, 1, 0}); }, nullptr},
    {"82-climate-winter", ClimatePage,
        [](const Scene &) { showClimate({1, 2, 144, 1, 0, 3, 76, 95, 1, 3, 2, 0, 1}); }, nullptr},
    {"82-climate-partial", ClimatePage, showPartialFeatures, restoreFeatures},
    {"82-climate-rear", ClimatePage, toggleZone, nullptr},
    {"82-climate-rear-off", ClimatePage, [](const Scene &) { showClimate(rearZone(0, 0, 0, 0, 70, 4)); },
        nullptr},
    {"82-climate-rear-cool", ClimatePage, [](const Scene &) { showClimate(rearZone(1, 1, 19, 252, 60, 4)); },
        nullptr},
    {"82-climate-rear-winter", ClimatePage, [](const Scene &) { showClimate(rearZone(1, 0, 3, 144, 86, 2)); },
        nullptr},
    {"82-climate-rear-partial", ClimatePage, showPartialFeatures, restoreFeatures},
    {"83-parking", ParkingPage, nullptr, nullptr},
    {"83-parking-far", ParkingPage, [](const Scene &) { report(8, 1); }, nullptr},
    {"83-parking-near", ParkingPage, [](const Scene &) { report(7, 3); }, nullptr},
    {"83-parking-wall", ParkingPage,
        [](const Scene &) {
            norda::VtqAdaptor *adaptor = norda::VtqAdaptor::instance();
            report(7, 4);
            emit adaptor->parkingDistanceFront(QByteArray::fromHex("50280000"));
            emit adaptor->parkingTopBarText("Rear 1.0 ft");
        },
        [](const Scene &) { emit norda::VtqAdaptor::instance()->parkingTopBarText(""); }},
    {"83-parking-blind", ParkingPage,
        [](const Scene &) {
            report(1, 0);
            report(9, 3);
        }, nullptr},
    {"83-camera", ParkingPage, [](const Scene &scene) { showCamera(scene, false, false); }, closeCamera},
    {"83-camera-wall", ParkingPage, [](const Scene &scene) { showCamera(scene, true, false); }, closeCamera},
    {"83-split", ParkingPage,
        [](const Scene &scene) {
            showCamera(scene, false, true);
            report(8, 3);
        }, closeCamera},
    {"84-settings", SettingsPage, nullptr, nullptr},
    {"84-settings-values", SettingsPage, [](const Scene &scene) { touchRow(scene, 6); },
        [](const Scene &) { request(SettingsRequest); }},
    {"84-settings-reset", SettingsPage,
        [](const Scene &scene) {
            holdStill(scene.screen);
            touchRow(scene, 7);
        },
        [](const Scene &) { request(SettingsRequest); }},
};
// clang-format on

/** In the order of the pages, each of which has at least the picture of how it opens. */
static QVector<State> allStates()
{
    QVector<State> all;
    for (const Page &page : pages) {
        const int before = all.size();
        std::copy_if(std::begin(states), std::end(states), std::back_inserter(all),
                     [&page](const State &state) { return state.window == page.window; });
        if (all.size() == before)
            all.append({QStringLiteral("%1-%2")
                            .arg(page.window)
                            .arg(QString::fromLatin1(page.name).toLower()),
                        page.window, nullptr, nullptr});
    }
    return all;
}

QStringList writeGallery(const QString &folder, Rig *rig, const output::InputFiles &inputs,
                         QString *error)
{
    Screen *screen = rig->unit()->screen();
    WindowStack *windows = rig->unit()->windows();
    const Scene scene = {screen, windows, rig->session(), rig->setup().trim};
    QStringList files;
    const auto write = [&](const QString &name, const QImage &picture) {
        const QString file = QDir(folder).filePath(name + QStringLiteral(".png"));
        if (!writePicture(file, picture, inputs, error))
            return false;
        files.append(file);
        return true;
    };
    screen->statusColumn()->setTime(QTime(21, 40)); // pictures are compared with each other
    for (const State &state : allStates()) {
        if (windows->currentWindow() != state.window)
            windows->openWindow(state.window);
        if (state.prepare)
            state.prepare(scene);
        holdStill(screen);
        if (!write(state.file, screen->grab().toImage()))
            return files;
        if (state.restore)
            state.restore(scene);
    }
    write(QStringLiteral("audio-stage"), stageDuringTone(rig->unit()->audio()));
    return files;
}
