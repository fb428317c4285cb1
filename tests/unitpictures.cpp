// Writes a picture of each page of a unit without a module into a folder, and one of its rear
// camera. Prints where the key of each is on the screen: "Climate 640 690".

#include "headunit.h"
#include "pages.h"
#include "palette.h"
#include "runtimefolder.h"
#include "testpaths.h"

#include <QApplication>
#include <QDir>
#include <QLoggingCategory>

#include <cstdio>

static constexpr const char *keys[] = {"norda_key_gauge", "norda_key_vehicle", "norda_key_climate",
                                       "norda_key_radar", "norda_key_setting", "norda_key_about"};
static_assert(std::size(keys) == std::size(pages));

static bool fail(const QString &error)
{
    std::fprintf(stderr, "norda-unit-pictures: %s\n", qPrintable(error));
    return false;
}

static bool printKey(const Screen *screen, const char *name, const char *key)
{
    const QWidget *widget = screen->widgetNamed(QLatin1String(key));
    if (!widget || !widget->isVisible())
        return fail(QStringLiteral("%1: expected this key").arg(QLatin1String(key)));
    const QPoint place = widget->mapTo(screen, widget->rect().center());
    std::printf("%s %d %d\n", name, place.x(), place.y());
    return true;
}

static bool save(Screen *screen, const char *name, const QDir &folder)
{
    QApplication::processEvents();
    const QString file = folder.filePath(QLatin1String(name) + QStringLiteral(".png")).toLower();
    return screen->grab().save(file) ||
           fail(QStringLiteral("%1: expected a file that can be written").arg(file));
}

static bool savePage(HeadUnit *unit, int page, const QDir &folder)
{
    unit->windows()->openWindow(pages[page].window);
    return save(unit->screen(), pages[page].name, folder) &&
           printKey(unit->screen(), pages[page].name, keys[page]);
}

static bool saveCamera(HeadUnit *unit, const QDir &folder)
{
    unit->windows()->openWindow(ParkingPage);
    QApplication::processEvents();
    if (!printKey(unit->screen(), "Camera", "key_camera"))
        return false;
    unit->windows()->openCamera();
    return save(unit->screen(), "Camera", folder);
}

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ensureRuntimeFolder();
    QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 2 || !QDir().mkpath(arguments[1])) {
        fail(QStringLiteral("expected a folder that can be written"));
        return 2;
    }
    night::apply(&application, QStringLiteral("Fusion"));
    ServiceConnection::instance()->setAddress(QStringLiteral("unix:path=/nonexistent"));
    HeadUnit unit;
    QString error;
    if (!unit.load(testpaths::pluginFile(), &error)) {
        fail(error);
        return 2;
    }
    unit.screen()->show();
    for (int page = 0; page < int(std::size(pages)); ++page) {
        if (!savePage(&unit, page, QDir(arguments[1])))
            return 2;
    }
    return saveCamera(&unit, QDir(arguments[1])) ? 0 : 2;
}
