#include "benchfixture.h"
#include "candump.h"
#include "ecuprogram.h"
#include "livebus.h"
#include "testfolder.h"

/** The pages of a car that is connected: norda-ecu in another process, with all that goes wrong. */
class tst_LiveCar : public QObject, public BenchFixture
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup();
    void followsTheTrip_data();
    void followsTheTrip();
    void knowsHalfOfTheValues();
    void losesOneAnswerInTen_data();
    void losesOneAnswerInTen();
    void outlivesThePulledCable_data();
    void outlivesThePulledCable();
    void leavesTheBusToAnotherTester();
    void neverAsks();
    void isPlayedFromItsLog_data();
    void isPlayedFromItsLog();

private:
    /** The bench with a car that norda-ecu serves. */
    void connectTo(const EcuProgram &program, const QString &kind,
                   module::Asking asking = module::Asking::Auto);
    /** The frames of the log so far. */
    QVector<module::LoggedFrame> logged() const;
    module::VehicleSource *source() const { return session()->drive()->source(); }
    int requests() const { return source()->statistics().value("requests").toInt(); }
    QString findings() const { return source()->findings().join(QLatin1Char('\n')); }
    static QString textOf(const QVariantList &arguments)
    {
        QStringList texts;
        for (const QVariant &argument : arguments) {
            const bool isNumber = argument.userType() == QMetaType::UChar;
            texts.append(isNumber ? QString::number(argument.toUInt()) : argument.toString());
        }
        return texts.join(QLatin1Char('|'));
    }
    /** The arguments that a signal had last, as text. */
    QString last(const char *signal) const
    {
        const Journal *journal = session()->journal();
        const QVector<int> &places = journal->ofKind(Journal::Signal);
        for (int i = places.size() - 1; i >= 0; --i) {
            const Journal::Entry &entry = journal->entries()[places[i]];
            if (journal->nameOf(entry) == QLatin1String(signal))
                return textOf(entry.arguments);
        }
        return QStringLiteral("never");
    }
    /** The first of them: the text that a page shows. */
    QString shown(const char *signal) const { return last(signal).section(QLatin1Char('|'), 0, 0); }

    TestFolder m_folder;
    QString m_idling; // a drive with the same values all the time
};

static QString busOption()
{
    return QStringLiteral("--can virtualcan:tcp://127.0.0.1:%1/can0").arg(freePort());
}

void tst_LiveCar::initTestCase()
{
    QByteArray lines;
    for (const char *second : {"1", "3601"}) {
        for (const char *answer : {"04410C1AF8", "0341057B", "03410D33", "04414236B0", "03410466"})
            lines += QByteArray("(") + second + ".0) can0 7E8#" + answer + '\n';
    }
    m_idling = m_folder.write("idling.log", lines);
}

void tst_LiveCar::cleanup()
{
    removeBench();
    m_options.setup.live = {};
}

void tst_LiveCar::connectTo(const EcuProgram &program, const QString &kind, module::Asking asking)
{
    static const QMap<QString, QString> prefixes = {
        {"can", "can:"}, {"pty", "elm327:"}, {"tcp", "elm327:tcp:"}};
    m_options.setup.live.asking = asking;
    m_options.setup.live.log = m_folder.filePath("seen.log");
    QFile::remove(m_options.setup.live.log);
    const QString place = program.place(kind);
    QVERIFY2(!place.isEmpty(), qPrintable(program.err()));
    makeBench(prefixes.value(kind) + place);
}

QVector<module::LoggedFrame> tst_LiveCar::logged() const
{
    QVector<module::LoggedFrame> frames;
    QFile file(m_folder.filePath("seen.log"));
    if (!file.open(QIODevice::ReadOnly))
        return frames;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (const auto frame = module::parseCandumpLine(line))
            frames.append(*frame);
    }
    return frames;
}

static bool isAnswer(const module::LoggedFrame &frame, const char *start)
{
    return frame.id == 0x7E8 && frame.data.mid(1).startsWith(QByteArray::fromHex(start));
}

void tst_LiveCar::followsTheTrip_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("options");
    QTest::newRow("bus") << "can" << busOption();
    QTest::newRow("terminal") << "pty"
                              << "--pty";
    QTest::newRow("port") << "tcp"
                          << "--tcp 0";
}

/** Engine speed five times a second or more often, within twenty requests a second. */
void tst_LiveCar::followsTheTrip()
{
    QFETCH(QString, kind);
    QFETCH(QString, options);
    EcuProgram program(options);
    connectTo(program, kind);
    for (const char *signal : {"centerGaugeValueNotify", "gauTopBarTextNotify", "batteryVoltage"})
        QTRY_VERIFY2(!QStringList({"never", "--"}).contains(shown(signal)), signal);
    static constexpr int windowMs = 5000;
    double hertz = 0;
    double perSecond = 0;
    for (int tries = 0; tries < 6 && hertz < 5; ++tries) {
        const int before = requests();
        const qint64 beforeMs = source()->liveMs();
        QTest::qWait(windowMs);
        perSecond = 1000.0 * (requests() - before) / double(source()->liveMs() - beforeMs);
        const QVector<module::LoggedFrame> frames = logged();
        const qint64 sinceUs = frames.last().timeUs - (windowMs - 1000) * 1000;
        hertz = 0;
        for (const module::LoggedFrame &frame : frames)
            hertz += frame.timeUs > sinceUs && isAnswer(frame, "410c");
        hertz *= 1000.0 / (windowMs - 1000);
    }
    const QByteArray rates = QByteArray::number(hertz) + " Hz in " + QByteArray::number(perSecond) +
                             " requests a second";
    qInfo("engine speed: %s", rates.constData());
    QVERIFY2(hertz >= 5, rates);
    QVERIFY2(perSecond <= 20.5, rates);
}

/** Its pages show dashes, and the panel why. */
void tst_LiveCar::knowsHalfOfTheValues()
{
    EcuProgram program("--tcp 0 --without 0C,05,42 --source " + m_idling);
    connectTo(program, "tcp");
    QTRY_VERIFY(findings().contains("Vehicle speed: 51 km/h"));
    QCOMPARE(shown("centerGaugeValueNotify"), QStringLiteral("--"));
    QStringList missing;
    for (const module::Findings &page : source()->findingsByPage()) {
        if (!page.missing.isEmpty())
            QCOMPARE(page.whyMissing, QStringLiteral("Not known to this car"));
        missing += page.missing;
    }
    QVERIFY2(missing.contains("engine speed"), qPrintable(missing.join('|')));
    QVERIFY2(missing.contains("battery voltage"), qPrintable(missing.join('|')));
    QTRY_VERIFY(logged().size() > 50);
    for (const module::LoggedFrame &frame : logged()) // nor is it asked for them
        QVERIFY(!(frame.id == 0x7DF && frame.data.mid(1, 2) == QByteArray::fromHex("010c")));
}

void tst_LiveCar::losesOneAnswerInTen_data()
{
    followsTheTrip_data();
}

/** The values stay, and so does the connection. */
void tst_LiveCar::losesOneAnswerInTen()
{
    QFETCH(QString, kind);
    QFETCH(QString, options);
    EcuProgram program(options + " --lose 0.1 --seed 3 --source " + m_idling);
    connectTo(program, kind);
    QTRY_COMPARE(shown("centerGaugeValueNotify"), QStringLiteral("1726"));
    QTRY_VERIFY(requests() > 100);
    const QJsonObject statistics = source()->statistics();
    QCOMPARE(statistics.value("losses").toInt(), 0);
    const int answers = statistics.value("answers").toInt();
    QVERIFY2(answers > 0.6 * requests(), qPrintable(QString::number(answers)));
    QVERIFY2(answers < requests(), "nothing was lost");
    QCOMPARE(shown("centerGaugeValueNotify"), QStringLiteral("1726"));
}

void tst_LiveCar::outlivesThePulledCable_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("notice");
    QTest::newRow("bus") << "can" << busOption() << "The car does not answer";
    QTest::newRow("terminal") << "pty"
                              << "--pty " + m_folder.filePath("tty") << "No connection to the car";
    QTest::newRow("port") << "tcp"
                          << "--tcp 0"
                          << "No connection to the car";
}

/** For ten seconds: the unit says so, and shows no number from before. */
void tst_LiveCar::outlivesThePulledCable()
{
    QFETCH(QString, kind);
    QFETCH(QString, options);
    QFETCH(QString, notice);
    EcuProgram program(options + " --pull 12:10 --source " + m_idling);
    connectTo(program, kind);
    const QString speed = QStringLiteral("51 km/h   32 mph");
    QTRY_COMPARE(shown("centerGaugeValueNotify"), QStringLiteral("1726"));
    QTRY_COMPARE(shown("gauTopBarTextNotify"), speed);
    QTRY_COMPARE(shown("gauTopBarTextNotify"), notice);
    QCOMPARE(shown("vehTopBarText"), notice);
    QCOMPARE(shown("centerGaugeValueNotify"), QStringLiteral("--"));
    QCOMPARE(shown("batteryVoltage"), QStringLiteral("--"));
    QTRY_COMPARE(shown("centerGaugeValueNotify"), QStringLiteral("1726"));
    QTRY_COMPARE(shown("gauTopBarTextNotify"), speed);
}

void tst_LiveCar::leavesTheBusToAnotherTester()
{
    EcuProgram program(busOption() + " --tester 100 --source " + m_idling);
    connectTo(program, "can");
    QTRY_VERIFY(findings().contains("Another tester asks the car: waiting until it stops"));
    const int before = requests();
    QTest::qWait(3000);
    QCOMPARE(requests(), before);
    QTRY_COMPARE(shown("centerGaugeValueNotify"), QStringLiteral("1726")); // that one's answers
}

/** A third device on the bus sees no frame of it. */
void tst_LiveCar::neverAsks()
{
    EcuProgram program(busOption() + " --source " + m_idling);
    const auto port = module::canPortOf(program.place("can"));
    QVERIFY(port);
    VirtualBus witness(*port);
    connectTo(program, "can", module::Asking::Never);
    QTest::qWait(3000);
    QCOMPARE(witness.received(), QByteArrayList());
    QCOMPARE(requests(), 0);
    QVERIFY2(findings().contains("The car is not asked"), qPrintable(findings()));
}

void tst_LiveCar::isPlayedFromItsLog_data()
{
    followsTheTrip_data();
}

/** Played back, the log makes the same pages, with the symbol and texts of the trouble codes. */
void tst_LiveCar::isPlayedFromItsLog()
{
    QFETCH(QString, kind);
    QFETCH(QString, options);
    EcuProgram program(options + " --codes P0304,U0100,C0123 --source " + m_idling);
    connectTo(program, kind);
    const QString codes = QStringLiteral("Trouble codes: 3|P0304, U0100, C0123");
    QTRY_COMPARE(last("vehicleInfoText"), codes);
    QTRY_COMPARE(shown("checkEngineStatus"), QStringLiteral("2"));
    QTRY_COMPARE(shown("centerGaugeValueNotify"), QStringLiteral("1726"));
    const QStringList gauges = {"1726 RPM", "181 \u2109", "40 %", "51 km/h   32 mph"};
    QTRY_COMPARE(numbersOn(80), gauges);
    QTRY_VERIFY(shown("batteryVoltage") != QLatin1String("--"));
    QStringList vehicle;
    const auto showsCodes = [&] {
        vehicle = numbersOn(81);
        return vehicle.join('|').contains("P0304, U0100, C0123");
    };
    QTRY_VERIFY2(showsCodes(), qPrintable(vehicle.join('|')));
    removeBench();

    m_options.setup.live = {};
    makeBench(m_folder.filePath("seen.log"));
    QTRY_COMPARE(last("vehicleInfoText"), codes);
    QTRY_COMPARE(shown("checkEngineStatus"), QStringLiteral("2"));
    QTRY_COMPARE(numbersOn(80), gauges);
    QTRY_COMPARE(numbersOn(81), vehicle);
}

NORDA_TEST_MAIN(tst_LiveCar)
#include "tst_livecar.moc"
