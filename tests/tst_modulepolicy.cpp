#include "interface.h"
#include "moduledprogram.h"
#include "norda/vtqadaptor.h"
#include "person.h"
#include "privatebus.h"
#include "service/moduleservice.h"
#include "serviceconnection.h"
#include "testfolder.h"
#include "testmain.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusReply>
#include <QDir>

#include <memory>

using norda::VtqAdaptor;

/**
 * Who may be the vehicle module, and who may talk to it: a system bus with the installed policy,
 * and people on it. Somebody other than the user of the test can be had as root only.
 */
class tst_ModulePolicy : public QObject
{
    Q_OBJECT
private slots:
    void owner_data();
    void owner();
    void commands_data();
    void commands();
    void receivers_data();
    void receivers();
    void strangersSignal_data();
    void strangersSignal();
    void unitListensToTheOwnerOnly();
    void nothingListensOnANetwork();
};

// ---- A system bus -------------------------------------------------------------------------------

/** As of every system: names and calls are forbidden unless a policy allows them. */
static const char systemRules[] = R"(<allow user="*"/>
<deny own="*"/><deny send_type="method_call"/><allow send_type="signal"/>
<allow send_requested_reply="true" send_type="method_return"/>
<allow send_requested_reply="true" send_type="error"/>
<allow receive_type="method_call"/><allow receive_type="method_return"/>
<allow receive_type="error"/><allow receive_type="signal"/>
<allow send_destination="org.freedesktop.DBus" send_interface="org.freedesktop.DBus"/>)";

/** A system bus with the installed policy for a module of another user than norda. */
class SystemBus
{
public:
    explicit SystemBus(const Person &module, const QByteArray &more = {})
        : m_bus(systemRules, include(module) + more)
    {
    }

    QString address() const { return m_bus.address(); }

private:
    QByteArray include(const Person &module) const
    {
        QFile installed(testpaths::source("moduled/com.stavel.norda.conf"));
        if (!installed.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(installed.fileName()));
        QByteArray policy = installed.readAll();
        policy.replace("user=\"norda\"", "user=\"" + module.user + '"');
        policy.replace("group=\"norda\"", "group=\"" + module.group + '"');
        return "<include>" + m_folder.write("policy.conf", policy).toLocal8Bit() + "</include>";
    }

    TestFolder m_folder;
    PrivateBus m_bus;
};

/** A connection of somebody, and what the module sends to it. */
class Client : public QObject
{
    Q_OBJECT
public:
    Client(const SystemBus &bus, const Person &person) : Client(bus.address(), person) {}
    Client(const QString &address, const Person &person)
        : m_name(QStringLiteral("client %1").arg(++m_count)), m_bus(m_name)
    {
        const AsPerson as(person);
        m_bus = QDBusConnection::connectToBus(address, m_name);
        m_bus.connect({}, bus::objectPath, bus::interfaceName, QStringLiteral("doorStatus"), this,
                      SLOT(onDoors(QDBusMessage)));
    }
    ~Client() override { QDBusConnection::disconnectFromBus(m_name); }

    QDBusConnection &bus() { return m_bus; }
    const QVariantList &doors() const { return m_doors; }

    bool owns() { return m_bus.registerService(bus::serviceName); }
    void emitDoors(int bits)
    {
        QDBusMessage signal =
            QDBusMessage::createSignal(bus::objectPath, bus::interfaceName, "doorStatus");
        signal.setArguments({QVariant::fromValue(uchar(bits))});
        m_bus.send(signal);
        // The bus has seen it once it has answered.
        m_bus.interface()->isServiceRegistered(bus::serviceName);
    }
    /** @return the name of the error of a command; empty when it was answered */
    QString command(const char *member)
    {
        const QDBusPendingCall call = m_bus.asyncCall(QDBusMessage::createMethodCall(
            bus::serviceName, bus::objectPath, bus::interfaceName, member));
        if (!QTest::qWaitFor([&call] { return call.isFinished(); }, 60000))
            return QStringLiteral("no answer");
        return call.isError() ? call.error().name() : QString();
    }

private slots:
    void onDoors(const QDBusMessage &message) { m_doors += message.arguments(); }

private:
    static int m_count;
    QString m_name;
    QDBusConnection m_bus;
    QVariantList m_doors;
};

int Client::m_count = 0;

/** Only the name of an owner matters to the bus, so the module can be of this process. */
static std::unique_ptr<module::ModuleService> moduleOf(const SystemBus &bus, const Person &person,
                                                       QString *error)
{
    const AsPerson as(person);
    auto service = std::make_unique<module::ModuleService>();
    if (!service->open(bus.address(), error))
        return nullptr;
    return service;
}

// ---- Who may ------------------------------------------------------------------------------------

/** What a module needs, for somebody who need not be the configured user. */
static const char moduleRules[] = R"(<policy user="%1"><allow own="com.stavel.norda.Module"/>
<allow send_interface="com.stavel.norda.Adaptor1" send_type="signal"/></policy>)";

static void addPeople(const char *ofGroup, const char *ofOthers)
{
    QTest::addColumn<Person>("configured");
    QTest::addColumn<Person>("person");
    QTest::addColumn<QString>("error");
    const Person me = Person::self();
    const Person module = Person::named("games");
    const Person others = me.user == "daemon" ? Person::named("games") : Person::named("daemon");
    const QString forGroup = QLatin1String(ofGroup);
    const QString forOthers = QLatin1String(ofOthers);
    QTest::newRow("the configured user") << me << me << QString();
    QTest::newRow("another user") << others << me << forOthers;
    if (!AsPerson::isPossible())
        return;
    QTest::newRow("the configured one of many users") << module << module << QString();
    QTest::newRow("a member of the group")
        << module << Person::named("man").memberOf(module) << forGroup;
    QTest::newRow("somebody else") << module << Person::named("nobody") << forOthers;
    QTest::newRow("root") << module << Person::named("root") << forOthers;
}

static const char denied[] = "org.freedesktop.DBus.Error.AccessDenied";

void tst_ModulePolicy::owner_data()
{
    addPeople(denied, denied);
}

void tst_ModulePolicy::owner()
{
    QFETCH(Person, configured);
    QFETCH(Person, person);
    QFETCH(QString, error);
    const SystemBus bus(configured);
    QString message;
    const auto service = moduleOf(bus, person, &message);
    QCOMPARE(bool(service), error.isEmpty());
    QCOMPARE(message.startsWith("com.stavel.norda.Module: expected the right to own it, got '"),
             !error.isEmpty());
    Client client(bus, person);
    QCOMPARE(client.bus().interface()->isServiceRegistered(bus::serviceName).value(),
             error.isEmpty());
    if (service)
        return;
    QVERIFY(!client.owns());
    QCOMPARE(client.bus().lastError().name(), error);
}

void tst_ModulePolicy::commands_data()
{
    addPeople("", denied);
}

/** The module has its rights from the policy or, where nobody else can be had, beside it. */
void tst_ModulePolicy::commands()
{
    QFETCH(Person, configured);
    QFETCH(Person, person);
    QFETCH(QString, error);
    const Person owner = AsPerson::isPossible() ? configured : Person::self();
    const SystemBus bus(configured, QByteArray(moduleRules).replace("%1", owner.user));
    QString message;
    const auto service = moduleOf(bus, owner, &message);
    QVERIFY2(service, qPrintable(message));
    Client client(bus, person);
    for (const char *member : {"Ping", "Snapshot", "requestVehicleInfo", "gaugesListBack"}) {
        const QString found = client.command(member);
        if (error.isEmpty())
            QVERIFY2(found != denied, member);
        else
            QCOMPARE(found, error);
    }
    if (error.isEmpty())
        QCOMPARE(client.command("Ping"), QString());
}

void tst_ModulePolicy::receivers_data()
{
    addPeople("", denied);
}

/** What the module sends is for the members of the group, too. */
void tst_ModulePolicy::receivers()
{
    QFETCH(Person, configured);
    QFETCH(Person, person);
    QFETCH(QString, error);
    const Person owner = AsPerson::isPossible() ? configured : Person::self();
    const SystemBus bus(configured, QByteArray(moduleRules).replace("%1", owner.user));
    QString message;
    const auto service = moduleOf(bus, owner, &message);
    QVERIFY2(service, qPrintable(message));
    Client client(bus, person);
    emit VtqAdaptor::instance()->doorStatus(5);
    if (error.isEmpty())
        QTRY_COMPARE(client.doors().size(), 1);
    QTest::qWait(200);
    QCOMPARE(client.doors().size(), int(error.isEmpty()));
}

void tst_ModulePolicy::strangersSignal_data()
{
    addPeople(denied, denied);
}

/** Nobody else's signals of the interface reach anybody. */
void tst_ModulePolicy::strangersSignal()
{
    QFETCH(Person, configured);
    QFETCH(Person, person);
    QFETCH(QString, error);
    const SystemBus bus(configured);
    Client listener(bus, AsPerson::isPossible() ? configured : Person::self());
    Client sender(bus, person);
    sender.emitDoors(7);
    listener.bus().interface()->isServiceRegistered(bus::serviceName);
    QTest::qWait(100);
    QCOMPARE(listener.doors().size(), int(error.isEmpty()));
}

// ---- The unit, and the network ------------------------------------------------------------------

/** Even where the bus allows everything. */
void tst_ModulePolicy::unitListensToTheOwnerOnly()
{
    const PrivateBus bus;
    Client owner(bus.address(), Person::self());
    Client stranger(bus.address(), Person::self());
    QVERIFY(owner.owns());
    QVERIFY(!stranger.owns());
    QSignalSpy doors(VtqAdaptor::instance(), &VtqAdaptor::doorStatus);
    ServiceConnection *unit = ServiceConnection::instance();
    unit->setAddress(bus.address());
    unit->open();
    QTRY_COMPARE(unit->state(), ServiceConnection::Connected);
    stranger.emitDoors(0x3F);
    owner.emitDoors(2);
    QTRY_COMPARE(doors.size(), 1);
    QCOMPARE(doors[0][0].toInt(), 2);
    unit->setAddress({});
    unit->open();
}

/** The sockets of a process, by their inodes. */
static QStringList socketsOf(const QString &process)
{
    QStringList inodes;
    const QDir files(process + "/fd");
    for (const QString &name : files.entryList(QDir::AllEntries | QDir::System)) {
        const QString target = QFile::symLinkTarget(files.filePath(name));
        if (target.contains("socket:["))
            inodes.append(target.section('[', 1).section(']', 0, 0));
    }
    return inodes;
}

void tst_ModulePolicy::nothingListensOnANetwork()
{
    const PrivateBus bus;
    const ModuledProgram program("--bus " + bus.address());
    QVERIFY2(program.serves(), qPrintable(program.err()));
    const QString process = QStringLiteral("/proc/%1").arg(program.pid());
    const QStringList sockets = socketsOf(process);
    QVERIFY(!sockets.isEmpty()); // that to the bus
    for (const char *protocol : {"tcp", "tcp6", "udp", "udp6", "raw", "raw6"}) {
        QFile table(process + "/net/" + protocol);
        if (!table.open(QIODevice::ReadOnly))
            continue;
        for (const QString &line : QString::fromLatin1(table.readAll()).split('\n'))
            QVERIFY2(!sockets.contains(line.simplified().section(' ', 9, 9)), qPrintable(line));
    }
}

NORDA_TEST_MAIN(tst_ModulePolicy)
#include "tst_modulepolicy.moc"
