#include "adaptorlink.h"
#include "calllog.h"
#include "linkends.h"
#include "service/moduleservice.h"

#include <QDBusPendingReply>

#include <climits>

using module::ModuleService;

class tst_ModuleLink : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void everySignalArrives_data();
    void everySignalArrives();
    void everyCommandArrives_data();
    void everyCommandArrives();
    void snapshotForALateUnit();
    void featuresComeBeforeTheirSignals();
    void queriesAreAnswered();
    void callsThatDoNotFit_data();
    void callsThatDoNotFit();
    void burst();
    void floodIsDroppedAndTheStateRequested();
    void closedLinkCarriesNothing();

private:
    void forgetEarlierSignals();

    /** Both ends, for all that does not restart one of them. */
    struct Link
    {
        PrivateBus bus;
        ModuleService service;
        std::unique_ptr<Unit> unit;
    };
    std::unique_ptr<Link> m_link;
};

/** Values at the ends of each type's range. */
static QVariantList valuesOf(int type)
{
    if (type == qMetaTypeId<QList<int>>())
        return {QVariant::fromValue(QList<int>()),
                QVariant::fromValue(QList<int>{0, -1, INT_MAX, INT_MIN})};
    if (type == qMetaTypeId<QMap<int, int>>())
        return {QVariant::fromValue(QMap<int, int>()),
                QVariant::fromValue(QMap<int, int>{{4, 0}, {-1, INT_MIN}, {INT_MAX, 255}})};
    if (type == qMetaTypeId<QMap<int, bool>>())
        return {QVariant::fromValue(QMap<int, bool>{{0, true}, {7, false}})};
    switch (type) {
    case QMetaType::UChar:
        return {QVariant::fromValue(uchar(0)), QVariant::fromValue(uchar(255))};
    case QMetaType::Int:
        return {0, INT_MIN, INT_MAX};
    case QMetaType::Bool:
        return {true, false};
    case QMetaType::QString:
        return {QString(""), QStringLiteral("77\u2109 \u20ac")};
    case QMetaType::QStringList:
        return {QStringList(), QStringList{"a", "", "\u00e9"}};
    case QMetaType::QByteArray:
        return {QByteArray(""), QByteArray("\0\x7f\xff", 3)};
    case QMetaType::QVariantList:
        return {QVariantList(),
                QVariantList{1, QStringLiteral("two"), true, QByteArray("\x03"),
                             QVariant::fromValue(QList<int>{4}), QStringList{"five"}}};
    default:
        return {};
    }
}

static QVector<QVariantList> argumentsOf(const QMetaMethod &method)
{
    QVector<QVariantList> choices;
    for (int choice = 0; choice < 3; ++choice) {
        QVariantList arguments;
        for (int i = 0; i < method.parameterCount(); ++i) {
            const QVariantList values = valuesOf(method.parameterType(i));
            if (values.isEmpty())
                return {};
            arguments.append(values[choice % values.size()]);
        }
        choices.append(arguments);
    }
    return choices;
}

static bool sameValue(const QVariant &a, const QVariant &b)
{
    if (a.userType() != b.userType())
        return false;
    if (a.userType() == qMetaTypeId<QList<int>>())
        return a.value<QList<int>>() == b.value<QList<int>>();
    if (a.userType() == qMetaTypeId<QMap<int, int>>())
        return a.value<QMap<int, int>>() == b.value<QMap<int, int>>();
    if (a.userType() == qMetaTypeId<QMap<int, bool>>())
        return a.value<QMap<int, bool>>() == b.value<QMap<int, bool>>();
    if (a.userType() != QMetaType::QVariantList)
        return a == b;
    const QVariantList left = a.toList();
    const QVariantList right = b.toList();
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), sameValue);
}

static bool sameArguments(const QVariantList &a, const QVariantList &b)
{
    return sameValue(a, b);
}

void tst_ModuleLink::initTestCase()
{
    QString error;
    m_link = std::make_unique<Link>();
    QVERIFY2(m_link->service.open(m_link->bus.address(), &error), qPrintable(error));
    m_link->unit = std::make_unique<Unit>(m_link->bus);
    TRY_CONNECTED(*m_link->unit);
}

void tst_ModuleLink::cleanupTestCase()
{
    m_link.reset();
}

// ---- What is carried ----------------------------------------------------------------------------

void tst_ModuleLink::everySignalArrives_data()
{
    QTest::addColumn<QString>("name");
    for (const module::ModuleSignal &signal : module::moduleSignals())
        QTest::newRow(signal.method.name()) << QString(signal.method.name());
}

void tst_ModuleLink::everySignalArrives()
{
    QFETCH(QString, name);
    const Unit &unit = *m_link->unit;
    const bus::Interface::Member signal = interface().signal(name);
    const QVector<QVariantList> sent = argumentsOf(signal.method);
    QCOMPARE(sent.size(), 3);
    module::AdaptorLink adaptor;
    const int before = unit.of(name).size();
    for (const QVariantList &arguments : sent)
        QVERIFY(adaptor.deliver({0, name.toLatin1(), arguments}));
    QTRY_COMPARE(unit.of(name).size(), before + sent.size());
    const QVector<QVariantList> arrived = unit.of(name).mid(before);
    for (int i = 0; i < sent.size(); ++i)
        QVERIFY2(sameArguments(arrived[i], sent[i]), qPrintable(QString::number(i)));
}

void tst_ModuleLink::everyCommandArrives_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : interface().commandNames()) {
        if (interface().command(name).resultSignature.isEmpty())
            QTest::newRow(qPrintable(name)) << name;
    }
}

void tst_ModuleLink::everyCommandArrives()
{
    QFETCH(QString, name);
    QVector<QVariantList> arrived;
    QObject receiver;
    connect(CallLog::instance(), &CallLog::called, &receiver,
            [&](const QString &operation, const QVariantList &arguments) {
                if (operation.endsWith("::" + name))
                    arrived.append(arguments);
            });
    const QMetaMethod method = interface().command(name).method;
    const QVector<QVariantList> sent = argumentsOf(method);
    for (const QVariantList &arguments : sent)
        m_link->unit->send(name, arguments);
    QTRY_COMPARE(arrived.size(), sent.size());
    for (int i = 0; i < sent.size(); ++i) {
        for (int j = 0; j < method.parameterCount(); ++j) {
            // The call log holds bytes as numbers.
            const bool isByte = method.parameterType(j) == QMetaType::UChar;
            QVERIFY(isByte ? arrived[i][j].toInt() == sent[i][j].toInt()
                           : sameValue(arrived[i][j], sent[i][j]));
        }
    }
}

void tst_ModuleLink::snapshotForALateUnit()
{
    const PrivateBus bus;
    ModuleService service;
    QString error;
    QVERIFY2(service.open(bus.address(), &error), qPrintable(error));
    auto *adaptor = norda::VtqAdaptor::instance();
    emit adaptor->doorStatus(1);
    emit adaptor->batteryVoltage(QStringLiteral("12.1V"));
    emit adaptor->doorStatus(4);

    const Unit unit(bus);
    TRY_CONNECTED(unit);
    QStringList names;
    for (const Record &record : unit.all)
        names.append(record.name);
    const QStringList expected = {"getFrontClimateControlFeatures",
                                  "getFrontClimateControlFeatures",
                                  "getRearClimateControlFeatures",
                                  "getRearClimateControlFeatures",
                                  "getParkingAssistZones",
                                  "batteryVoltage",
                                  "doorStatus"};
    QCOMPARE(names, expected);
    QCOMPARE(unit.all.last().arguments, QVariantList{QVariant::fromValue(uchar(4))});
}

/** What a test before has sent may still be on its way. */
void tst_ModuleLink::forgetEarlierSignals()
{
    static int count = 0;
    const QString last = QStringLiteral("signal %1").arg(++count);
    emit norda::VtqAdaptor::instance()->batteryVoltage(last);
    Unit &unit = *m_link->unit;
    QTRY_VERIFY(!unit.all.isEmpty() && unit.all.last().arguments == QVariantList{last});
    unit.all.clear();
}

void tst_ModuleLink::featuresComeBeforeTheirSignals()
{
    Unit &unit = *m_link->unit;
    forgetEarlierSignals();

    const QMap<int, bool> none = {{0, false}, {3, true}};
    norda::VtqService::instance()->setRearClimateControlFeatures(1, none);
    emit norda::VtqAdaptor::instance()->doorStatus(2);
    QTRY_COMPARE(unit.of(QStringLiteral("doorStatus")).size(), 1);
    QCOMPARE(unit.all.size(), 6);
    const auto rear = unit.of(QStringLiteral("getRearClimateControlFeatures"));
    const auto features = rear.at(1).value(1).value<QMap<int, bool>>();
    QCOMPARE(features, none);
    QCOMPARE(unit.all.last().name, QStringLiteral("doorStatus"));

    emit norda::VtqAdaptor::instance()->doorStatus(3);
    QTRY_COMPARE(unit.all.size(), 7); // not repeated
}

/** A client of its own, as a tool on the command line would be. */
static QDBusMessage ask(const PrivateBus &bus, const QString &member,
                        const QVariantList &arguments = {})
{
    QDBusConnection tool = QDBusConnection::connectToBus(bus.address(), QStringLiteral("tool"));
    QDBusMessage call = QDBusMessage::createMethodCall(QLatin1String(bus::serviceName),
                                                       QLatin1String(bus::objectPath),
                                                       QLatin1String(bus::interfaceName), member);
    call.setArguments(arguments);
    // The service answers from this thread's event loop.
    QDBusPendingCall pending = tool.asyncCall(call);
    const auto isAnswered = [&] { return pending.isFinished(); };
    [[maybe_unused]] const bool isDone = QTest::qWaitFor(isAnswered, patienceMs);
    QDBusConnection::disconnectFromBus(QStringLiteral("tool"));
    return pending.reply();
}

void tst_ModuleLink::queriesAreAnswered()
{
    const QMap<int, bool> zones = {{1, true}, {8, false}};
    norda::VtqService::instance()->setParkingAssistZones(zones);
    const QDBusMessage reply = ask(m_link->bus, QStringLiteral("getParkingAssistZones"));
    QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
    QCOMPARE(reply.signature(), QStringLiteral("a{ib}"));
    const QVariant answer =
        bus::fromWire(reply.arguments().value(0), qMetaTypeId<QMap<int, bool>>());
    const auto answered = answer.value<QMap<int, bool>>();
    QCOMPARE(answered, zones);
}

void tst_ModuleLink::callsThatDoNotFit_data()
{
    QTest::addColumn<QString>("member");
    QTest::addColumn<QVariantList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("unknown") << "fly" << QVariantList()
                             << "fly: expected a command of com.stavel.norda.Adaptor1";
    QTest::newRow("a signal") << "doorStatus" << QVariantList{QVariant::fromValue(uchar(1))}
                              << "doorStatus: expected a command of com.stavel.norda.Adaptor1";
    QTest::newRow("not for others") << "connectService" << QVariantList()
                                    << "connectService: expected a command of "
                                       "com.stavel.norda.Adaptor1";
    QTest::newRow("too few") << "fanSpeedUpButton" << QVariantList{true}
                             << "fanSpeedUpButton: expected arguments of type 'bb', got 'b'";
    QTest::newRow("another type") << "triggerACButton" << QVariantList{QStringLiteral("yes")}
                                  << "triggerACButton: expected arguments of type 'b', got 's'";
    QTest::newRow("another number") << "centerGaugeMenu" << QVariantList{1}
                                    << "centerGaugeMenu: expected arguments of type 'y', got 'i'";
}

void tst_ModuleLink::callsThatDoNotFit()
{
    QFETCH(QString, member);
    QFETCH(QVariantList, arguments);
    QFETCH(QString, message);
    QSignalSpy calls(CallLog::instance(), &CallLog::called);
    const QDBusMessage reply = ask(m_link->bus, member, arguments);
    QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
    QCOMPARE(reply.errorMessage(), message);
    QVERIFY(calls.isEmpty());
}

// ---- Many signals -------------------------------------------------------------------------------

void tst_ModuleLink::burst()
{
    static constexpr int count = 10000;
    Unit &unit = *m_link->unit;
    forgetEarlierSignals();
    for (int i = 0; i < count; ++i)
        emit norda::VtqAdaptor::instance()->batteryVoltage(QString::number(i));
    QTRY_COMPARE(unit.all.size(), count);
    for (int i = 0; i < count; ++i)
        QCOMPARE(unit.all[i].arguments.value(0).toInt(), i);
}

void tst_ModuleLink::floodIsDroppedAndTheStateRequested()
{
    static constexpr int count = 3 * bus::Inbox::Most;
    Unit &unit = *m_link->unit;
    forgetEarlierSignals();
    for (int i = 0; i < count; ++i)
        emit norda::VtqAdaptor::instance()->batteryVoltage(QString::number(i));
    // Meanwhile the screens do nothing.
    QThread::sleep(3);
    const QString voltage = QStringLiteral("batteryVoltage");
    const auto isUpToDate = [&] {
        return !unit.of(voltage).isEmpty() &&
               unit.of(voltage).last() == QVariantList{QString::number(count - 1)};
    };
    QTRY_VERIFY(isUpToDate());
    QVERIFY(unit.all.size() <= 2 * bus::Inbox::Most);
    QCOMPARE(unit.state(), Client::Connected);
}

void tst_ModuleLink::closedLinkCarriesNothing()
{
    Unit unit(m_link->bus);
    TRY_CONNECTED(unit);
    QSignalSpy calls(CallLog::instance(), &CallLog::called);
    unit.send(QStringLiteral("gaugesListNext"), {});
    QTRY_COMPARE(calls.size(), 1);
    unit.close();
    QCOMPARE(unit.state(), Client::Waiting);
    unit.all.clear();
    unit.send(QStringLiteral("gaugesListNext"), {});
    // Once another unit has received a signal, this one would have, too.
    forgetEarlierSignals();
    emit norda::VtqAdaptor::instance()->doorStatus(2);
    QTRY_COMPARE(m_link->unit->of(QStringLiteral("doorStatus")).size(), 1);
    QVERIFY(unit.all.isEmpty());
    QCOMPARE(calls.size(), 1);
}

NORDA_TEST_MAIN(tst_ModuleLink)
#include "tst_modulelink.moc"
