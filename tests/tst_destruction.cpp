#include "adaptorlink.h"
#include "mem/settingscache.h"
#include "mem/settingsfunc.h"
#include "norda/vtqadaptor.h"
#include "pluginfixture.h"
#include "program.h"
#include "testmain.h"
#include "testpaths.h"

#include <QPointer>

#include <cstdlib>
#include <cstring>

using namespace module;

/** Orders of destruction that head units get wrong. */
class tst_Destruction : public QObject
{
    Q_OBJECT
private slots:
    // Before any test that has the library kept mapped.
    void unloadWithPagesOpen();
    void unloadWithPagesInsideOfAnother();
    void loadUseUnload();
    void whatTheHostKeepsOutlivesThePlugin();

    void widgetBeforeWindow_data();
    void widgetBeforeWindow();
    void dataDuringDestruction_data();
    void dataDuringDestruction();
    void pageDeletedTwice();
    void exitWithPagesOpen();
};

static QVariant sample(int type)
{
    if (type == QMetaType::UChar)
        return QVariant::fromValue(uchar(2));
    if (type == QMetaType::QString)
        return QStringLiteral("12");
    if (type == QMetaType::QByteArray)
        return QByteArray("\1\2\3\1\1", 5);
    if (type == QMetaType::QStringList)
        return QStringList{"1", "2", "3", "4", "1", "2", "3", "4", "5", "6", "7", "8"};
    if (type == qMetaTypeId<QList<int>>())
        return QVariant::fromValue(QVector<int>(24, 2).toList());
    return QVariantList{1, 2};
}

/** Emits every signal of the module once. */
static void emitAll()
{
    AdaptorLink link;
    for (const ModuleSignal &signal : moduleSignals()) {
        Emission emission{0, signal.method.name(), {}};
        for (int i = 0; i < signal.method.parameterCount(); ++i)
            emission.arguments.append(sample(signal.method.parameterType(i)));
        QVERIFY2(link.deliver(emission), signal.method.name().constData());
    }
}

/** A loader that lets the code go: by default Qt keeps a library mapped. */
class UnloadingLoader : public QPluginLoader
{
public:
    UnloadingLoader() : QPluginLoader(testpaths::pluginFile())
    {
        setLoadHints(QLibrary::LoadHints());
    }
    bool isMapped() const
    {
        QFile maps(QStringLiteral("/proc/self/maps"));
        return maps.open(QIODevice::ReadOnly) &&
               maps.readAll().contains(QByteArray("libnordaPlugin.so"));
    }
};

static void addPages()
{
    QTest::addColumn<int>("id");
    QTest::newRow("gauges") << 80;
    QTest::newRow("vehicle") << 81;
    QTest::newRow("climate") << 82;
    QTest::newRow("parking") << 83;
    QTest::newRow("settings") << 84;
    QTest::newRow("about") << 85;
}

void tst_Destruction::widgetBeforeWindow_data()
{
    addPages();
}

void tst_Destruction::widgetBeforeWindow()
{
    QFETCH(int, id);
    PluginFixture host;
    delete host.open(id);
    QVERIFY(!host.window(id)->mainWidget());
    emitAll();
    host.window(id)->onHide(QByteArray());
    host.window(id)->onDestroy();
    QVERIFY(host.open(id)->isVisible());
}

void tst_Destruction::dataDuringDestruction_data()
{
    addPages();
}

// A screen's children go while the screen itself is half gone; data must not reach it any more.
void tst_Destruction::dataDuringDestruction()
{
    QFETCH(int, id);
    PluginFixture host;
    QWidget *screen = host.open(id);
    if (id == 83)
        invoke(screen, "connectVtqAdaptor");
    int emitted = 0;
    const QList<QWidget *> children = screen->findChildren<QWidget *>();
    for (QWidget *child : {children.first(), children.last()}) {
        connect(child, &QObject::destroyed, this, [&emitted] {
            emitAll();
            ++emitted;
        });
    }
    host.close(id);
    QCOMPARE(emitted, 2);
    emitAll();
}

void tst_Destruction::unloadWithPagesOpen()
{
    UnloadingLoader loader;
    auto *plugin = qobject_cast<AppPlugin *>(loader.instance());
    QVERIFY(plugin);
    QList<QPointer<QWidget>> pages;
    for (const int id : plugin->windowInterfaceID()) {
        plugin->requestWindowInterface(id)->onCreate();
        pages.append(plugin->requestWindowInterface(id)->mainWidget());
        pages.last()->show();
    }
    QVERIFY(QTest::qWaitForWindowExposed(pages.last()));
    QVERIFY(loader.unload());
    QVERIFY(!loader.isMapped());
    for (const QPointer<QWidget> &page : qAsConst(pages))
        QVERIFY(page.isNull()); // its code is gone
    emitAll();
    QCoreApplication::processEvents();
}

void tst_Destruction::unloadWithPagesInsideOfAnother()
{
    QWidget screen;
    UnloadingLoader loader;
    auto *plugin = qobject_cast<AppPlugin *>(loader.instance());
    plugin->requestWindowInterface(80)->onCreate();
    plugin->requestWindowInterface(80)->mainWidget()->setParent(&screen);
    screen.show();
    QVERIFY(QTest::qWaitForWindowExposed(&screen));
    QVERIFY(loader.unload());
    QCOMPARE(screen.findChildren<QWidget *>().size(), 0);
    screen.grab();
}

// Keys that the plugin hands over must not point into the library.
void tst_Destruction::whatTheHostKeepsOutlivesThePlugin()
{
    mem::SettingsCache *cache = mem::SettingsCache::instance();
    for (int cycle = 0; cycle < 3; ++cycle) {
        UnloadingLoader loader;
        auto *plugin = qobject_cast<AppPlugin *>(loader.instance());
        SourceInterface *source = plugin->requestSourceInterface(52);
        QMetaObject::invokeMethod(dynamic_cast<QObject *>(source), "handingVTQAudioInterrupt",
                                  Q_ARG(uchar, 3), Q_ARG(uchar, 12));
        source->start(QByteArray());
        plugin->requestWindowInterface(83)->onCreate();
        QWidget *parking = plugin->requestWindowInterface(83)->mainWidget();
        invoke(parking, "onCameraClicked");
        invoke(parking, "onSplitClicked");
        QCoreApplication::processEvents();
        QVERIFY(loader.unload());
        QVERIFY(!loader.isMapped());
        QCOMPARE(cache->getValue(QStringLiteral("QUILLO_VOICE_TYPE"), -1), 3);
        QCOMPARE(cache->getValue(QStringLiteral("QUILLO_VOICE_MIX_VALUE"), 0), 12);
        QCOMPARE(mem::SettingsFunc::instance()->getValue("Camera_ISRear", true).toBool(), false);
        cache->setValue(QStringLiteral("another"), 0, cycle); // grows and moves the keys
    }
}

void tst_Destruction::pageDeletedTwice()
{
    PluginFixture host;
    host.open(81);
    host.window(81)->onDestroy();
    host.window(81)->onDestroy();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!host.window(81)->mainWidget());
    host.window(81)->onDestroy();
    QVERIFY(host.open(81)->isVisible());
}

void tst_Destruction::loadUseUnload()
{
    const int widgetsBefore = QApplication::allWidgets().size();
    for (int cycle = 0; cycle < 20; ++cycle) {
        UnloadingLoader loader;
        auto *plugin = qobject_cast<AppPlugin *>(loader.instance());
        WindowInterface *window = plugin->requestWindowInterface(80 + cycle % 6);
        window->onCreate();
        window->onShow(QByteArray());
        emitAll();
        if (cycle % 2) {
            window->onDestroy();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        QVERIFY(loader.unload());
        QVERIFY(!loader.isMapped());
        QCoreApplication::processEvents();
    }
    QCOMPARE(QApplication::allWidgets().size(), widgetsBefore);
}

static constexpr char exitArgument[] = "--exit-with-pages-open";

/** A head unit that simply exits: the platform's windows go before the library does. */
[[noreturn]] static void exitWithPages(int argc, char *argv[])
{
    new QApplication(argc, argv);
    auto *plugin = qobject_cast<AppPlugin *>(QPluginLoader(testpaths::pluginFile()).instance());
    for (const int id : plugin->windowInterfaceID()) {
        plugin->requestWindowInterface(id)->onCreate();
        QWidget *page = plugin->requestWindowInterface(id)->mainWidget();
        page->show();
        page->repaint();
    }
    QCoreApplication::processEvents();
    std::exit(0);
}

void tst_Destruction::exitWithPagesOpen()
{
    QStringList command{QCoreApplication::applicationFilePath(), "tst_destruction",
                        QLatin1String(exitArgument)};
    const QString emulator = testpaths::emulator();
    command = emulator.split(QLatin1Char(' '), Qt::SkipEmptyParts) + command;
    const ProgramResult result = runProgram(command);
    QVERIFY2(result.exitCode == 0, qPrintable(result.err));
}

static int runDestruction(int argc, char *argv[])
{
    if (argc == 2 && std::strcmp(argv[1], exitArgument) == 0)
        exitWithPages(argc, argv);
    return nordaTestMain<tst_Destruction>(argc, argv);
}

static const bool isRegistered = registerTest(__FILE__, runDestruction);
#include "tst_destruction.moc"
