// A plugin that a head unit must refuse; what is wrong with it is chosen when it is built.

#include "appplugin.h"
#include "cm/basewindow.h"

#include <QWidget>

#include <cstdlib>

#ifdef WRONG_IID
#define PLUGIN_IID "org.example.Another"
#else
#define PLUGIN_IID "com.stavel.Qt.nordaPlugin"
#endif

void nordaSymbolThatNobodyHas();

/** A window that never makes its widget. */
class EmptyWindow : public cm::BaseWindow
{
public:
    using cm::BaseWindow::BaseWindow;
    void onCreate() override {}
};

#ifdef NO_INTERFACE
class BrokenPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID PLUGIN_IID)
};
#else
class BrokenPlugin : public QObject, public AppPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID PLUGIN_IID)
    Q_INTERFACES(AppPlugin)
public:
    BrokenPlugin()
    {
#ifdef CRASH_IN_CONSTRUCTOR
        std::abort();
#endif
    }
    void create() override
    {
#ifdef MISSING_SYMBOL
        nordaSymbolThatNobodyHas();
#endif
    }
    QList<int> windowInterfaceID() override
    {
#if defined(NO_ID) || defined(NO_SOURCE)
        return {};
#else
        return {90};
#endif
    }
    QList<int> sourceInterfaceID() override
    {
#ifdef NO_SOURCE
        return {7};
#else
        return {};
#endif
    }
    WindowInterface *requestWindowInterface(int) override
    {
#ifdef NO_WINDOW
        return nullptr;
#else
        static EmptyWindow window(nullptr);
        return &window;
#endif
    }
    SourceInterface *requestSourceInterface(int) override
    {
        return nullptr;
    }
};
#endif

#include "brokenplugin.moc"
