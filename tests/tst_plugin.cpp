#include "callspy.h"
#include "messagecapture.h"
#include "pluginfixture.h"
#include "testmain.h"
#include "testpaths.h"

#include <QJsonObject>
#include <QLoggingCategory>

#include <sys/syscall.h>
#include <unistd.h>

/** The library as the host's loader sees it. */
class tst_Plugin : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { QLoggingCategory::setFilterRules(QString()); }

    void metaDataNamesTheInterfaceAndTheClass();
    void castsByName_data();
    void castsByName();
    void instanceIsOneLiveRoot();
    void rootIsBuiltAnewAfterItsDeletion();
    void listsIds();
    void createConnectsTheService();
    void windowsAreCreatedOnceAndCached_data();
    void windowsAreCreatedOnceAndCached();
    void unknownIds_data();
    void unknownIds();
    void voiceSourcesAreThree();
    void traceLines_data();
    void traceLines();
    void nothingIsTracedWhenDebugOutputIsOff();
};

void tst_Plugin::metaDataNamesTheInterfaceAndTheClass()
{
    // Read from the file alone, before anything of it is loaded.
    const QJsonObject data = QPluginLoader(testpaths::pluginFile()).metaData();
    QCOMPARE(data.value(QStringLiteral("IID")).toString(),
             QStringLiteral("com.stavel.Qt.nordaPlugin"));
    QCOMPARE(data.value(QStringLiteral("className")).toString(), QStringLiteral("Plugin1"));
    QVERIFY(!data.contains(QStringLiteral("MetaData")));
}

void tst_Plugin::castsByName_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("answer"); // 0 null, 1 the root, 2 its AppPlugin base

    QTest::newRow("the root itself") << QByteArray("norda::Plugin") << 1;
    QTest::newRow("interface by class name") << QByteArray("AppPlugin") << 2;
    QTest::newRow("interface by id") << QByteArray("com.stavel.Plugin.AppPlugin/1.0") << 2;
    QTest::newRow("QObject") << QByteArray("QObject") << 1;
    QTest::newRow("the name in the metadata") << QByteArray("Plugin1") << 0;
    QTest::newRow("another version") << QByteArray("com.stavel.Plugin.AppPlugin/2.0") << 0;
}

void tst_Plugin::castsByName()
{
    QFETCH(QByteArray, name);
    QFETCH(int, answer);
    PluginFixture host;
    void *const expected[] = {nullptr, static_cast<void *>(host.root()),
                              static_cast<void *>(host.plugin())};
    QVERIFY(expected[1] != expected[2]); // QObject is the first base, AppPlugin the second
    QCOMPARE(host.root()->qt_metacast(name.constData()), expected[answer]);
}

void tst_Plugin::instanceIsOneLiveRoot()
{
    PluginFixture host;
    QCOMPARE(QPluginLoader(testpaths::pluginFile()).instance(), host.root());
    QCOMPARE(host.root()->parent(), nullptr);
}

void tst_Plugin::rootIsBuiltAnewAfterItsDeletion()
{
    QPluginLoader loader(testpaths::pluginFile());
    QPointer<QObject> first = loader.instance();
    delete first;
    QPointer<QObject> second = loader.instance();
    QVERIFY(second);
    QVERIFY(qobject_cast<AppPlugin *>(second));
    loader.unload();
}

void tst_Plugin::listsIds()
{
    PluginFixture host;
    QCOMPARE(host.plugin()->windowInterfaceID(), (QList<int>{80, 81, 82, 83, 84, 85}));
    QCOMPARE(host.plugin()->sourceInterfaceID(), (QList<int>{51, 52, 53}));
}

void tst_Plugin::createConnectsTheService()
{
    PluginFixture host;
    CallSpy calls;
    host.plugin()->create();
    QCOMPARE(calls.take(), QStringList{"norda::VtqAdaptor::connectService()"});
}

void tst_Plugin::windowsAreCreatedOnceAndCached_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("className");
    QTest::newRow("gauges") << 80 << QByteArray("norda::GaugesWindow");
    QTest::newRow("vehicle information") << 81 << QByteArray("norda::VehicleWindow");
    QTest::newRow("climate") << 82 << QByteArray("norda::ClimateWindow");
    QTest::newRow("parking assist") << 83 << QByteArray("norda::ParkingWindow");
    QTest::newRow("settings") << 84 << QByteArray("norda::SettingWindow");
    QTest::newRow("about") << 85 << QByteArray("norda::AboutWindow");
}

void tst_Plugin::windowsAreCreatedOnceAndCached()
{
    QFETCH(int, id);
    QFETCH(QByteArray, className);
    PluginFixture host;
    QVERIFY(host.root()->children().isEmpty());

    WindowInterface *window = host.window(id);
    QVERIFY(window);
    QCOMPARE(host.root()->children().size(), 1);
    QObject *child = host.root()->children().constFirst();
    QCOMPARE(child->metaObject()->className(), className.constData());
    // The host is given the interface, which is not where the QObject begins.
    QCOMPARE(qobject_cast<WindowInterface *>(child), window);

    QCOMPARE(host.window(id), window);
    QCOMPARE(host.root()->children().size(), 1);
    QCOMPARE(window->mainWidget(), nullptr);
}

void tst_Plugin::unknownIds_data()
{
    QTest::addColumn<int>("id");
    for (int id : {79, 86, 0, -1, 51, INT_MAX, INT_MIN})
        QTest::addRow("window %d", id) << id;
}

void tst_Plugin::unknownIds()
{
    QFETCH(int, id);
    PluginFixture host;
    QCOMPARE(host.window(id), nullptr);
    const int source = id == 51 ? 54 : id == 79 ? 50 : id;
    QCOMPARE(host.plugin()->requestSourceInterface(source), nullptr);
    QVERIFY(host.root()->children().isEmpty());
}

void tst_Plugin::voiceSourcesAreThree()
{
    PluginFixture host;
    QStringList names;
    QSet<SourceInterface *> sources;
    for (int id : host.plugin()->sourceInterfaceID()) {
        SourceInterface *source = host.plugin()->requestSourceInterface(id);
        QVERIFY(source);
        QCOMPARE(host.plugin()->requestSourceInterface(id), source);
        sources.insert(source);
        names.append(source->name());
    }
    QCOMPARE(names, (QStringList{"vtq_info_voice", "vtq_reco_voice", "vtq_warn_tone"}));
    QCOMPARE(sources.size(), 3);
    QCOMPARE(host.root()->children().size(), 3);
}

struct Trace
{
    QString function;
    QString message;
};
Q_DECLARE_METATYPE(QList<Trace>)

enum Request { Create, Window, Source };
using Requests = QList<QPair<Request, int>>;
Q_DECLARE_METATYPE(Requests)

void tst_Plugin::traceLines_data()
{
    QTest::addColumn<Requests>("requests"); // the last one's lines are looked at
    QTest::addColumn<QList<Trace>>("expected");

    const QString create = QStringLiteral("virtual void norda::Plugin::create()");
    const QString start = QStringLiteral("void norda::Plugin::startQuilloSevice()");
    const QString request =
        QStringLiteral("virtual WindowInterface* norda::Plugin::requestWindowInterface(int)");
    const auto asked = [request](int id) {
        return Trace{request, QStringLiteral(" norda_requestWindowInterface %1").arg(id)};
    };
    const Trace mark = {request, QString()};

    const auto row = [](const char *name, const Requests &requests, const QList<Trace> &lines) {
        QTest::newRow(name) << requests << lines;
    };
    row("create", {{Create, 0}},
        {{create, " norda"}, {start, " startNordaSevice"}, {start, " startNordaSevice123321"}});
    row("unknown window", {{Window, 79}}, {asked(79)});
    row("gauges window", {{Window, 80}}, {asked(80)});
    row("gauges window, again", {{Window, 80}, {Window, 80}}, {asked(80)});
    // One mark for the request, and one for the construction.
    row("settings window", {{Window, 84}}, {asked(84), mark, mark});
    row("settings window, again", {{Window, 84}, {Window, 84}}, {asked(84), mark});
    row("about window", {{Window, 85}}, {asked(85), mark, mark});
    row("about window, again", {{Window, 85}, {Window, 85}}, {asked(85), mark});
    row("first voice source", {{Source, 51}}, {});
    row("unknown source", {{Source, 50}}, {});
}

void tst_Plugin::traceLines()
{
    QFETCH(Requests, requests);
    QFETCH(QList<Trace>, expected);
    PluginFixture host;

    MessageCapture capture;
    QList<MessageCapture::Message> messages;
    for (const auto &[request, id] : requests) {
        if (request == Create)
            host.plugin()->create();
        else if (request == Window)
            host.window(id);
        else
            host.plugin()->requestSourceInterface(id);
        messages = capture.take();
    }

    QCOMPARE(messages.size(), expected.size());
    for (int i = 0; i < expected.size(); ++i) {
        const MessageCapture::Message &message = messages[i];
        QCOMPARE(message.type, QtDebugMsg);
        QCOMPARE(QString::fromLatin1(message.function), expected[i].function);
        QVERIFY(message.file.endsWith("plugin.cpp"));
        QCOMPARE(message.text, QStringLiteral("[DBG] %1 %2 %3 --%4")
                                   .arg(::syscall(SYS_gettid))
                                   .arg(expected[i].function)
                                   .arg(message.line)
                                   .arg(expected[i].message));
    }
}

void tst_Plugin::nothingIsTracedWhenDebugOutputIsOff()
{
    PluginFixture host;
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    MessageCapture capture;
    host.plugin()->create();
    host.window(84)->onCreate();
    QCOMPARE(capture.takeTexts(), QStringList());
}

NORDA_TEST_MAIN(tst_Plugin)
#include "tst_plugin.moc"
