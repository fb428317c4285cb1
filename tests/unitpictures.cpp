// Writes a picture of each page of a unit without a module into a folder, and prints where the key
// of each page is on the screen: "Climate 640 690".

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

static bool printKey(const Screen *screen, int page)
{
    const QWidget *key = screen->widgetNamed(QLatin1String(keys[page]));
    if (!key || !key->isVisible())
        return fail(QStringLiteral("%1: expected this key").arg(QLatin1String(keys[page])));
    const QPoint place = key->mapTo(screen, key->rect().center());
    std::printf("%s %d %d\n", pages[page].name, place.x(), place.y());
    return true;
}

static bool save(HeadUnit *unit, int page, const QDir &folder)
{
    unit->windows()->openWindow(pages[page].window);
    QApplication::processEvents();
    const QString file =
        folder.filePath(QLatin1String(pages[page].name) + QStringLiteral(".png")).toLower();
    if (!unit->screen()->grab().save(file))
        return fail(QStringLiteral("%1: expected a file that can be written").arg(file));
    return printKey(unit->screen(), page);
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
        if (!save(&unit, page, QDir(arguments[1])))
            return 2;
    }
    return 0;
}
