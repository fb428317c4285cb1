#include "appplugin.h"
#include "norda/vtqadaptor.h"
#include "windowinterface.h"

#include <QApplication>
#include <QLabel>
#include <QPluginLoader>

#include <cstdio>

static int fail(const QString &why)
{
    std::fprintf(stderr, "%s\n", qPrintable(why));
    return 1;
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QPluginLoader loader(QApplication::arguments().value(1));
    auto *plugin = qobject_cast<AppPlugin *>(loader.instance());
    if (!plugin)
        return fail(loader.errorString());
    WindowInterface *window = plugin->requestWindowInterface(90);
    window->onCreate();
    auto *label = qobject_cast<QLabel *>(window->mainWidget());
    emit norda::VtqAdaptor::instance()->TimeInfo({"0", "9", "3", "0"});
    if (!label || label->text() != QLatin1String("0930"))
        return fail(QStringLiteral("the clock does not show what the module said"));
    window->onDestroy();
    std::puts("a plugin built against the installed files loads and hears the module");
    return 0;
}
