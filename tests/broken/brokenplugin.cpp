// A plugin that a head unit must refuse; what is wrong with it is chosen when it is built.

#include "appplugin.h"
#include "cm/basewindow.h"

#include <QTimer>
#include <QWidget>

#include <csignal>
#include <cstdlib>
#include <unistd.h>

#ifdef WRONG_IID
#define PLUGIN_IID "org.example.Another"
#else
#define PLUGIN_IID "com.stavel.Qt.nordaPlugin"
#endif

#if defined(EXIT_IN_ON_CREATE) || defined(EXIT_IN_DESTRUCTOR) || defined(HANG_IN_PAINT) ||         \
    defined(HANG_AFTER_PAINT)
#define OFFERED_WINDOW 80 // one that the bench opens
#else
#define OFFERED_WINDOW 90
#endif

void nordaSymbolThatNobodyHas();

/** A page that hangs when it is painted, or two seconds later. */
class HangingPage : public QWidget
{
    void paintEvent(QPaintEvent *) override
    {
#ifdef HANG_IN_PAINT
        hang();
#else
        QTimer::singleShot(2000, this, hang);
#endif
    }
    static void hang()
    {
        for (;;)
            ::pause();
    }
};

/** A window that never makes its widget. */
class EmptyWindow : public cm::BaseWindow
{
public:
    using cm::BaseWindow::BaseWindow;
    void onCreate() override
    {
#ifdef EXIT_IN_ON_CREATE
        std::exit(0);
#endif
#ifdef EXIT_IN_DESTRUCTOR
        setMainWidget(new QWidget, 80);
#endif
#if defined(HANG_IN_PAINT) || defined(HANG_AFTER_PAINT)
        auto *page = new HangingPage;
        page->setFixedSize(1280, 720);
        setMainWidget(page, 80);
#endif
    }
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
#ifdef EXIT_IN_CONSTRUCTOR
        std::exit(0);
#endif
    }
#ifdef EXIT_IN_DESTRUCTOR
    ~BrokenPlugin() override
    {
        std::exit(0);
    }
#endif
    void create() override
    {
#ifdef EXIT_IN_CREATE
        std::exit(0);
#endif
#ifdef QUIET_EXIT_IN_CREATE
        ::_exit(0);
#endif
#ifdef HANG_IN_CREATE
        ::alarm(0);
        std::signal(SIGALRM, SIG_IGN);
        std::signal(SIGTERM, SIG_IGN);
        for (;;)
            ::pause();
#endif
#ifdef MISSING_SYMBOL
        nordaSymbolThatNobodyHas();
#endif
    }
    QList<int> windowInterfaceID() override
    {
#if defined(NO_ID) || defined(NO_SOURCE)
        return {};
#else
        return {OFFERED_WINDOW};
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
