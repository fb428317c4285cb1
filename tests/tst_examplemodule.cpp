#include "pluginfixture.h"
#include "privatebus.h"
#include "program.h"
#include "serviceconnection.h"
#include "startedprogram.h"
#include "testmain.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QLabel>

/** A module that others have written, and the unit that it drives. */
class tst_ExampleModule : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void isShort();
    void opensTheDoors();
    void secondOneEnds();

private:
    static QString example() { return testpaths::source("examples/module.py"); }
    QString command(const PrivateBus &bus) const
    {
        return QStringLiteral("env DBUS_SESSION_BUS_ADDRESS=%1 %2 '%3'")
            .arg(bus.address(), m_python, example());
    }

    QString m_python;
};

void tst_ExampleModule::initTestCase()
{
    // The packages belong to the system's interpreter, which need not be the first on the path.
    for (const char *python : {"python3", "/usr/bin/python3"}) {
        if (runProgram({python, "-c", "import dbus, gi"}).exitCode == 0) {
            m_python = QLatin1String(python);
            return;
        }
    }
    QSKIP("python3 finds no dbus or gi (packages python3-dbus and python3-gi)");
}

void tst_ExampleModule::isShort()
{
    QFile file(example());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().count('\n') < 60);
}

/** The doors that a vehicle page shows as open. */
static int openDoors(QWidget *page)
{
    int open = 0;
    for (const char *door : {"icon_door_front_left", "icon_door_front_right", "icon_door_rear_left",
                             "icon_door_rear_right", "icon_hood", "icon_trunk"})
        open += int(find<QLabel>(page, door)->isVisibleTo(page));
    return open;
}

void tst_ExampleModule::opensTheDoors()
{
    PrivateBus bus;
    ServiceConnection *connection = ServiceConnection::instance();
    connection->setAddress(bus.address());
    PluginFixture host;
    host.plugin()->create(); // connects
    QWidget *page = host.open(81);
    QCOMPARE(connection->state(), ServiceConnection::Waiting);
    QCOMPARE(openDoors(page), 0);

    StartedProgram module(command(bus));
    QTRY_COMPARE(connection->state(), ServiceConnection::Connected);
    QTRY_VERIFY(openDoors(page) > 0);
    for (int doors = openDoors(page); doors < 6; ++doors)
        QTRY_COMPARE(openDoors(page), doors + 1);
    QTRY_COMPARE(openDoors(page), 0);

    QCOMPARE(module.err(), QString());
    module.end(SIGKILL);
    QTRY_COMPARE(connection->state(), ServiceConnection::Waiting);
    connection->setAddress({});
    connection->open();
}

void tst_ExampleModule::secondOneEnds()
{
    PrivateBus bus;
    StartedProgram first(command(bus));
    QDBusConnection client = QDBusConnection::connectToBus(bus.address(), "example");
    const auto isOwned = [&client] {
        return client.interface()->isServiceRegistered("com.stavel.norda.Module").value();
    };
    QTRY_VERIFY(isOwned());
    StartedProgram second(command(bus));
    QCOMPARE(second.exitCode(), 1);
    QCOMPARE(second.err(),
             "com.stavel.norda.Module: expected a free name, another module has it\n");
    QDBusConnection::disconnectFromBus("example");
}

NORDA_TEST_MAIN(tst_ExampleModule)
#include "tst_examplemodule.moc"
