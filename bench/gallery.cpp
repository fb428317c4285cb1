#include "gallery.h"

#include "headunit.h"
#include "norda/vtqadaptor.h"
#include "screen.h"
#include "session.h"

#include <QDir>
#include <QEventLoop>
#include <QTimer>

/** What a state needs to be brought about. */
struct Scene
{
    Screen *screen;
    HeadUnit *unit;
    Session *session;
};

struct State
{
    const char *file;
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

// clang-format off
static const State states[] = {
    {"80-gauges", 80, toFastestMoment, nullptr},
    {"80-gauges-arcs", 80,
        [](const Scene &) { setStyle('\0'); }, [](const Scene &) { setStyle('\1'); }},
    {"80-gauges-errors", 80,
        [](const Scene &) {
            emit norda::VtqAdaptor::instance()->centerGaugeValueNotify("65535", "RPM", 0);
            emit norda::VtqAdaptor::instance()->Properties2TextInfo({0, 0, 255, 255, -1, 101});
        }, toFastestMoment},
    {"80-gauges-shift", 80,
        [](const Scene &) {
            norda::VtqAdaptor *adaptor = norda::VtqAdaptor::instance();
            emit adaptor->peakIndicatorTextNotify("SHIFT");
            emit adaptor->centerGaugePeakColorNotify(1);
            emit adaptor->peakIndicatorNotify(1);
            emit adaptor->shifterArrowIndicatorNotify(1);
        }, nullptr},
    {"81-vehicle", 81, nullptr, nullptr},
    {"82-climate", 82, nullptr, nullptr},
    {"83-parking", 83, nullptr, nullptr},
    {"83-camera", 83,
        [](const Scene &scene) { scene.screen->showCamera(true); },
        [](const Scene &scene) { scene.unit->back(); }},
    {"84-settings", 84, nullptr, nullptr},
    {"85-about", 85, nullptr, nullptr},
};
// clang-format on

static void settle()
{
    static constexpr int longestAnimationMs = 400;
    QEventLoop loop;
    QTimer::singleShot(longestAnimationMs, &loop, &QEventLoop::quit);
    loop.exec();
}

QStringList writeGallery(const QString &folder, Screen *screen, HeadUnit *unit, Session *session,
                         QString *error)
{
    const Scene scene = {screen, unit, session};
    QStringList files;
    for (const State &state : states) {
        unit->openWindow(state.window);
        if (state.prepare)
            state.prepare(scene);
        settle();
        const QString file =
            QDir(folder).filePath(QLatin1String(state.file) + QStringLiteral(".png"));
        if (!screen->grab().save(file)) {
            *error = QStringLiteral("%1: expected a picture file that can be written").arg(file);
            return files;
        }
        files.append(file);
        if (state.restore)
            state.restore(scene);
    }
    return files;
}
