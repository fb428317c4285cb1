#include "live/canobdlink.h"
#include "live/elm327link.h"
#include "livebus.h"
#include "testmain.h"

using namespace module;

/** Links to a car over what a desk has: the virtual CAN bus, a pseudo terminal, a local port. */
class tst_ObdLinks : public QObject
{
    Q_OBJECT
private slots:
    void asksOnABus();
    void listensOnly();
    void seesAnotherTester();
    void busesThatCannotBeUsed_data();
    void busesThatCannotBeUsed();
    void asksThroughAnAdapter_data();
    void asksThroughAnAdapter();
    void losesAnAdapter_data();
    void losesAnAdapter();
    void portsThatCannotBeUsed_data();
    void portsThatCannotBeUsed();
};

/** What a link has reported. */
struct Report
{
    explicit Report(ObdLink *link)
    {
        QObject::connect(link, &ObdLink::ready, &context, [this] { lines.append("ready"); });
        QObject::connect(link, &ObdLink::lost, &context,
                         [this](const QString &why) { lines.append("lost: " + why); });
        QObject::connect(link, &ObdLink::otherTesterSeen, &context,
                         [this] { lines.append("other tester"); });
        QObject::connect(link, &ObdLink::failed, &context,
                         [this](ObdFailure, const QString &why) { lines.append("no: " + why); });
        QObject::connect(link, &ObdLink::answered, &context,
                         [this](const QVector<ObdAnswer> &answers) {
                             for (const ObdAnswer &answer : answers)
                                 lines.append(answer.message.toHex());
                         });
        QObject::connect(
            link, &ObdLink::frameSeen, &context, [this](const CanFrame &frame, bool isSent) {
                frames.append((isSent ? "> " : "< ") + QByteArray::number(frame.id, 16));
            });
    }

    /** A frame is lost where the bus has not accepted the link yet: waits until one is seen. */
    void waitForBus(VirtualBus *bus)
    {
        const auto isSeen = [&] {
            bus->send(0x7FF, "00");
            QTest::qWait(20);
            return !frames.isEmpty();
        };
        QTRY_VERIFY(isSeen());
    }
    QByteArrayList framesSinceThen() const
    {
        QByteArrayList others = frames;
        others.removeAll("< 7ff");
        return others;
    }

    QObject context;
    QStringList lines;
    QByteArrayList frames;
};

void tst_ObdLinks::asksOnABus()
{
    VirtualBus bus;
    CanObdLink link(bus.port());
    Report report(&link);
    link.open();
    QTRY_COMPARE(report.lines, QStringList{"ready"});
    link.ask({QByteArray::fromHex("010c"), 0x7E8, 1});
    QTRY_COMPARE(bus.received(), QByteArrayList{"7e0#02010c5555555555"});
    bus.send(0x123, "0102");
    bus.send(0x7E8, "04410c1af8aaaaaa");
    QTRY_COMPARE(report.lines, (QStringList{"ready", "410c1af8"}));
    QCOMPARE(report.frames, (QByteArrayList{"> 7e0", "< 123", "< 7e8"}));
}

/** Nothing is sent, whatever it hears: also no flow control, and no request after a while. */
void tst_ObdLinks::listensOnly()
{
    VirtualBus bus;
    CanObdLink link(bus.port());
    Report report(&link);
    link.open();
    QTRY_COMPARE(report.lines, QStringList{"ready"});
    report.waitForBus(&bus);
    bus.send(0x7E8, "1014490201314434");
    bus.send(0x123, "00");
    QTRY_COMPARE(report.framesSinceThen().size(), 2);
    QTest::qWait(100);
    QCOMPARE(bus.received(), QByteArrayList());
}

void tst_ObdLinks::seesAnotherTester()
{
    VirtualBus bus;
    CanObdLink link(bus.port());
    Report report(&link);
    link.open();
    QTRY_COMPARE(report.lines, QStringList{"ready"});
    report.waitForBus(&bus);
    link.ask({QByteArray::fromHex("0100"), 0, 0});
    bus.send(0x7DF, "02010caaaaaaaaaa");
    // On a slow machine the patience with the car ends first.
    QTRY_COMPARE(report.lines.size(), 3);
    QVERIFY(report.lines.contains("other tester"));
    QVERIFY(report.lines.contains("no: the car does not answer"));
}

void tst_ObdLinks::busesThatCannotBeUsed_data()
{
    QTest::addColumn<QString>("plugin");
    QTest::addColumn<QString>("interface");
    QTest::addColumn<QString>("line");
    QTest::newRow("no such plugin") << "nosuchbus"
                                    << "can0"
                                    << "lost: No such plugin: 'nosuchbus'";
    QTest::newRow("no such interface") << "socketcan"
                                       << "can77"
                                       << "lost: expected a CAN interface, found nothing";
}

void tst_ObdLinks::busesThatCannotBeUsed()
{
    QFETCH(QString, plugin);
    QFETCH(QString, interface);
    CanObdLink link({plugin, interface, 0});
    Report report(&link);
    link.open();
    QTRY_VERIFY(!report.lines.isEmpty());
    QTEST(report.lines.join(QLatin1Char('|')), "line");
}

void tst_ObdLinks::asksThroughAnAdapter_data()
{
    QTest::addColumn<bool>("isSerial");
    QTest::newRow("pseudo terminal") << true;
    QTest::newRow("local port") << false;
}

void tst_ObdLinks::asksThroughAnAdapter()
{
    QFETCH(bool, isSerial);
    FakeAdapter adapter(isSerial);
    Elm327Link link(adapter.port());
    Report report(&link);
    link.open();
    QTRY_COMPARE(report.lines, QStringList{"ready"});
    QVERIFY2(link.description().startsWith(QStringLiteral("ELM327 v1.5 at ")),
             qPrintable(link.description()));
    link.ask({QByteArray::fromHex("010c"), 0x7E8, 1});
    QTRY_COMPARE(report.lines, (QStringList{"ready", "410c1af8"}));
    QCOMPARE(report.frames, (QByteArrayList{"> 7df", "< 7e8"}));
}

void tst_ObdLinks::losesAnAdapter_data()
{
    asksThroughAnAdapter_data();
}

/** And finds it again. */
void tst_ObdLinks::losesAnAdapter()
{
    QFETCH(bool, isSerial);
    FakeAdapter adapter(isSerial);
    Elm327Link link(adapter.port());
    Report report(&link);
    link.open();
    QTRY_COMPARE(report.lines, QStringList{"ready"});
    adapter.unplug();
    QTRY_COMPARE(report.lines.size(), 2);
    QVERIFY(report.lines[1].startsWith(QStringLiteral("lost: ")));
    adapter.plugIn();
    link.open();
    QTRY_COMPARE(report.lines.value(2), QStringLiteral("ready"));
}

void tst_ObdLinks::portsThatCannotBeUsed_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("line");
    QTest::newRow("nothing") << "/dev/ttyNOSUCH0"
                             << "lost: expected a serial port, found nothing";
    QTest::newRow("folder") << "/dev"
                            << "lost: expected a serial port, found a file or a folder";
    QTest::newRow("no serial port")
        << "/dev/null"
        << "lost: expected a serial port: Inappropriate ioctl for device";
    QTest::newRow("refusing host") << "tcp 127.0.0.1"
                                   << "lost: Connection refused";
    // Known before connecting returns.
    QTest::newRow("no way to the host") << "tcp 255.255.255.255"
                                        << "lost: Network unreachable";
}

void tst_ObdLinks::portsThatCannotBeUsed()
{
    QFETCH(QString, device);
    ElmPort port;
    if (device.startsWith(QLatin1String("tcp "))) {
        port.host = device.mid(4);
        port.port = freePort();
    } else {
        port.device = device;
    }
    Elm327Link link(port);
    Report report(&link);
    link.open();
    QTRY_VERIFY(!report.lines.isEmpty());
    QTEST(report.lines.join(QLatin1Char('|')), "line");
}

NORDA_TEST_MAIN(tst_ObdLinks)
#include "tst_obdlinks.moc"
