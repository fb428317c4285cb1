#include "linkends.h"
#include "service/moduleservice.h"

#include <QDBusConnectionInterface>

using module::ModuleService;

/** Modules and buses that go, restart, or do not keep to the interface. */
class tst_ModuleLosses : public QObject
{
    Q_OBJECT
private slots:
    void moduleGoesAndComesBack();
    void briefRestartShowsNothingMissing();
    void touchesAreNotQueued();
    void silentModule();
    void quietModuleIsLeftAlone();
    void quietModuleFreezes();
    void refusedUnitSaysSo();
    void signalsThatDoNotFit_data();
    void signalsThatDoNotFit();
    void signalsOfOthersAreIgnored();
    void answersThatDoNotFit_data();
    void answersThatDoNotFit();
    void nameThatIsTaken();
    void busThatIsNotThere();
    void nameThatIsNotAllowed();
    void busRestarts();
};

// ---- Modules that come and go -------------------------------------------------------------------

void tst_ModuleLosses::moduleGoesAndComesBack()
{
    const PrivateBus bus;
    QString error;
    auto service = std::make_unique<ModuleService>();
    QVERIFY2(service->open(bus.address(), &error), qPrintable(error));
    emit norda::VtqAdaptor::instance()->batteryVoltage(QStringLiteral("12.1V"));
    const QString voltage = QStringLiteral("batteryVoltage");
    Unit unit(bus);
    TRY_CONNECTED(unit);
    QCOMPARE(unit.of(voltage).last(), QVariantList{"12.1V"});

    service.reset();
    TRY_WAITING(unit);
    QCOMPARE(unit.of(voltage).last(), QVariantList{"12.1V"}); // for the promised period
    QTRY_COMPARE(unit.of(voltage).last(), QVariantList{"--"});
    QVERIFY(!unit.of(QStringLiteral("audioInterruptNotify")).isEmpty());

    service = std::make_unique<ModuleService>();
    QVERIFY2(service->open(bus.address(), &error), qPrintable(error));
    emit norda::VtqAdaptor::instance()->batteryVoltage(QStringLiteral("12.3V"));
    TRY_CONNECTED(unit);
    QTRY_COMPARE(unit.of(voltage).last(), QVariantList{"12.3V"});
}

void tst_ModuleLosses::briefRestartShowsNothingMissing()
{
    const PrivateBus bus;
    auto module = std::make_unique<ForeignModule>(bus);
    module->missingAfterMs = 3000;
    Unit unit(bus);
    TRY_CONNECTED(unit);
    module.reset();
    TRY_WAITING(unit);
    module = std::make_unique<ForeignModule>(bus);
    TRY_CONNECTED(unit);
    QTest::qWait(3500);
    QVERIFY(unit.all.isEmpty());
}

void tst_ModuleLosses::touchesAreNotQueued()
{
    const PrivateBus bus;
    Unit unit(bus);
    unit.send(QStringLiteral("triggerACButton"), {true});
    ForeignModule module(bus);
    TRY_CONNECTED(unit);
    unit.send(QStringLiteral("gaugesListBack"), {});
    QTRY_VERIFY(module.calls.contains("gaugesListBack"));
    QVERIFY(!module.calls.contains(QStringLiteral("triggerACButton")));
}

void tst_ModuleLosses::silentModule()
{
    const PrivateBus bus;
    ForeignModule module(bus);
    Unit unit(bus);
    TRY_CONNECTED(unit);
    module.send(QStringLiteral("batteryVoltage"), {QStringLiteral("12.0V")});
    QTRY_COMPARE(unit.all.size(), 1);

    module.isAnswering = false;
    TRY_WAITING(unit);
    QCOMPARE(unit.all.last().arguments, QVariantList{"--"});
    unit.send(QStringLiteral("triggerACButton"), {true});

    module.isAnswering = true;
    module.snapshot = {{QStringLiteral("batteryVoltage"), {QStringLiteral("11.9V")}}};
    module.send(QStringLiteral("doorStatus"), {QVariant::fromValue(uchar(1))});
    TRY_CONNECTED(unit);
    QCOMPARE(unit.all.last().arguments, QVariantList{"11.9V"});
    unit.send(QStringLiteral("gaugesListBack"), {});
    QTRY_VERIFY(module.calls.contains("gaugesListBack"));
    QVERIFY(!module.calls.contains(QStringLiteral("triggerACButton")));
}

void tst_ModuleLosses::quietModuleIsLeftAlone()
{
    const PrivateBus bus;
    ForeignModule module(bus);
    module.missingAfterMs = 50;
    Unit unit(bus);
    TRY_CONNECTED(unit);
    module.send(QStringLiteral("doorStatus"), {QVariant::fromValue(uchar(1))});
    QTRY_COMPARE(module.calls.count("Ping"), 1);
    module.calls.clear();
    QTest::qWait(10 * module.missingAfterMs);
    // One may be under way for the signal that came while the first was answered.
    QVERIFY2(module.calls.size() <= 1, qPrintable(module.calls.join(' ')));
    QCOMPARE(unit.state(), Client::Connected);
}

/** It would carry a touch out whenever it goes on. */
void tst_ModuleLosses::quietModuleFreezes()
{
    const PrivateBus bus;
    ForeignModule module(bus);
    module.missingAfterMs = 50;
    Unit unit(bus);
    TRY_CONNECTED(unit);
    QTRY_VERIFY(module.calls.contains("Ping"));
    QTest::qWait(2 * module.missingAfterMs);
    QCOMPARE(unit.state(), Client::Connected);
    module.isAnswering = false;
    unit.send(QStringLiteral("gaugesListBack"), {});
    TRY_WAITING(unit);
    unit.send(QStringLiteral("triggerACButton"), {true});
    module.isAnswering = true;
    module.send(QStringLiteral("doorStatus"), {QVariant::fromValue(uchar(1))});
    TRY_CONNECTED(unit);
    QVERIFY(!module.calls.contains(QStringLiteral("triggerACButton")));
}

/** Once, however often it tries. */
void tst_ModuleLosses::refusedUnitSaysSo()
{
    const PrivateBus bus;
    ForeignModule module(bus);
    module.refusal = QStringLiteral("not in the group");
    QTest::ignoreMessage(QtWarningMsg, "vehicle module: MissingValues: expected the right to call "
                                       "it: not in the group");
    Unit unit(bus);
    QTRY_VERIFY(module.calls.count("MissingValues") >= 3);
    QCOMPARE(unit.state(), Client::Waiting);
    module.refusal.clear();
    TRY_CONNECTED(unit);
}

// ---- Modules that do not keep to the interface --------------------------------------------------

void tst_ModuleLosses::signalsThatDoNotFit_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariantList>("arguments");
    QTest::addColumn<QByteArray>("warning");
    const QByteArray types = ": expected arguments of type ";
    QTest::newRow("unknown") << "flightLevel" << QVariantList{1}
                             << QByteArray("flightLevel: expected a signal of "
                                           "com.stavel.norda.Adaptor1");
    QTest::newRow("none") << "doorStatus" << QVariantList() << "doorStatus" + types + "'y'";
    QTest::newRow("another type") << "doorStatus" << QVariantList{"open"}
                                  << "doorStatus" + types + "'y'";
    QTest::newRow("more") << "batteryVoltage" << QVariantList{"12V", "13V"}
                          << "batteryVoltage" + types + "'s'";
    QTest::newRow("variants for numbers")
        << "Properties2TextInfo" << QVariantList{QVariant(QVariantList{1, 2})}
        << "Properties2TextInfo" + types + "'ai'";
    QTest::newRow("features") << "FeaturesChanged" << QVariantList{"getParkingAssistZones"}
                              << "FeaturesChanged" + types + "'sia{ib}'";
}

void tst_ModuleLosses::signalsThatDoNotFit()
{
    QFETCH(QString, name);
    QFETCH(QVariantList, arguments);
    QFETCH(QByteArray, warning);
    const PrivateBus bus;
    ForeignModule module(bus);
    Unit unit(bus);
    TRY_CONNECTED(unit);
    QTest::ignoreMessage(QtWarningMsg, "vehicle module: " + warning); // once
    for (int i = 0; i < 3; ++i)
        module.send(name, arguments);
    module.send(QStringLiteral("doorStatus"), {QVariant::fromValue(uchar(4))});
    QTRY_COMPARE(unit.all.size(), 1);
    QCOMPARE(unit.all.first().arguments, QVariantList{QVariant::fromValue(uchar(4))});
}

void tst_ModuleLosses::signalsOfOthersAreIgnored()
{
    const PrivateBus bus;
    ForeignModule module(bus);
    ForeignModule other(bus, false);
    Unit unit(bus);
    TRY_CONNECTED(unit);
    other.send(QStringLiteral("doorStatus"), {QVariant::fromValue(uchar(255))});
    other.connection.interface()->serviceOwner(QLatin1String(bus::serviceName)); // it was sent
    module.send(QStringLiteral("doorStatus"), {QVariant::fromValue(uchar(1))});
    QTRY_COMPARE(unit.all.size(), 1);
    QCOMPARE(unit.all.first().arguments, QVariantList{QVariant::fromValue(uchar(1))});
}

void tst_ModuleLosses::answersThatDoNotFit_data()
{
    QTest::addColumn<Record>("record");
    QTest::addColumn<QByteArray>("warning");
    QTest::newRow("unknown") << Record{"flightLevel", {1}}
                             << QByteArray("flightLevel: expected a signal of "
                                           "com.stavel.norda.Adaptor1");
    QTest::newRow("too few") << Record{"doorStatus", {}}
                             << QByteArray("doorStatus: expected arguments of type 'y'");
    QTest::newRow("another type") << Record{"doorStatus", {1}}
                                  << QByteArray("doorStatus: expected arguments of type 'y'");
    QTest::newRow("features") << Record{"FeaturesChanged", {"getParkingAssistZones", 0, 1}}
                              << QByteArray(
                                     "FeaturesChanged: expected arguments of type 'sia{ib}'");
}

void tst_ModuleLosses::answersThatDoNotFit()
{
    QFETCH(Record, record);
    QFETCH(QByteArray, warning);
    const PrivateBus bus;
    ForeignModule module(bus);
    module.snapshot = {record, {QStringLiteral("batteryVoltage"), {QStringLiteral("12.0V")}}};
    QTest::ignoreMessage(QtWarningMsg, "vehicle module: " + warning);
    const Unit unit(bus);
    TRY_CONNECTED(unit);
    QCOMPARE(unit.all.size(), 1);
    QCOMPARE(unit.all.first().name, QStringLiteral("batteryVoltage"));
}

void tst_ModuleLosses::nameThatIsTaken()
{
    const PrivateBus bus;
    QString error;
    ModuleService first;
    QVERIFY2(first.open(bus.address(), &error), qPrintable(error));
    ModuleService second;
    QVERIFY(!second.open(bus.address(), &error));
    QCOMPARE(error, QStringLiteral("com.stavel.norda.Module: expected a free name, another module "
                                   "has it"));
    Unit unit(bus);
    TRY_CONNECTED(unit);
}

// ---- The bus itself -----------------------------------------------------------------------------

void tst_ModuleLosses::busThatIsNotThere()
{
    PrivateBus bus;
    bus.stop();
    QString error;
    ModuleService service;
    QVERIFY(!service.open(bus.address(), &error));
    QVERIFY2(error.startsWith(bus.address() + ": expected a D-Bus, got '"), qPrintable(error));
    Unit unit(bus);
    QTest::qWait(700); // more than a try
    QCOMPARE(unit.state(), Client::Waiting);
    bus.start();
    const ForeignModule module(bus);
    TRY_CONNECTED(unit);
}

void tst_ModuleLosses::nameThatIsNotAllowed()
{
    const PrivateBus bus(R"(<allow receive_sender="*"/>)");
    QString error;
    ModuleService service;
    QVERIFY(!service.open(bus.address(), &error));
    const QString expected =
        QStringLiteral("com.stavel.norda.Module: expected the right to own it, got '");
    QVERIFY2(error.startsWith(expected), qPrintable(error));
    const Unit unit(bus);
    QTest::qWait(700); // more than a try
    QCOMPARE(unit.state(), Client::Waiting);
}

void tst_ModuleLosses::busRestarts()
{
    PrivateBus bus;
    QString error;
    ModuleService service;
    QVERIFY2(service.open(bus.address(), &error), qPrintable(error));
    QSignalSpy losses(&service, &ModuleService::lost);
    Unit unit(bus);
    TRY_CONNECTED(unit);
    bus.stop();
    TRY_WAITING(unit);
    QTRY_COMPARE(losses.size(), 1);
    bus.start();
    QTRY_COMPARE(losses.size(), 2);
    TRY_CONNECTED(unit);
    unit.all.clear();
    emit norda::VtqAdaptor::instance()->doorStatus(7);
    QTRY_COMPARE(unit.of(QStringLiteral("doorStatus")).size(), 1);
}

NORDA_TEST_MAIN(tst_ModuleLosses)
#include "tst_modulelosses.moc"
