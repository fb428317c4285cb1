#include "adaptorlink.h"
#include "panels/callwords.h"
#include "panels/signalpresets.h"
#include "scenario/scenarioline.h"
#include "scenario/scenariowriter.h"
#include "session/journal.h"
#include "session/setup.h"
#include "testmain.h"
#include "values.h"

/** What happened in a session, what it means in words, and how it becomes a scenario. */
class tst_Journal : public QObject
{
    Q_OBJECT
private slots:
    void keepsOrderAndTotals();
    void letsTheOldestGo();
    void marksAreInOrderOfTime();
    void countsWithoutKeeping();
    void findsMoments();
    void meanings_data();
    void meanings();
    void presetsFit();
    void words_data();
    void words();
    void linesStayAsTheyAre_data();
    void linesStayAsTheyAre();
    void becomesAScenario();
};

void tst_Journal::keepsOrderAndTotals()
{
    Journal journal(100);
    journal.noteSignal(10, "doorStatus", {4});
    journal.note(10, Journal::Call, "A::b", {1, 2});
    journal.noteSignal(20, "doorStatus", {5});
    QCOMPARE(journal.entries().size(), 3);
    QCOMPARE(journal.nameOf(journal.entries()[1]), QStringLiteral("A::b"));
    QCOMPARE(journal.ofKind(Journal::Signal), (QVector<int>{0, 2}));
    QCOMPARE(journal.ofKind(Journal::Call), QVector<int>{1});
    const Journal::Total *doors = journal.totalOf(Journal::Signal, "doorStatus");
    QVERIFY(doors);
    QCOMPARE(doors->count, 2);
    QCOMPARE(doors->lastMs, qint64(20));
    QCOMPARE(doors->last, QVariantList{5});
    QVERIFY(!journal.totalOf(Journal::Call, "doorStatus"));
}

void tst_Journal::letsTheOldestGo()
{
    Journal journal(1000);
    int shifted = 0;
    connect(&journal, &Journal::shifted, this, [&](int entries) { shifted += entries; });
    for (int i = 0; i < 5000; ++i)
        journal.note(i, i % 3 ? Journal::Signal : Journal::Call, "x", {i});
    QVERIFY(journal.entries().size() <= 1000);
    QVERIFY(journal.entries().size() >= 900);
    QCOMPARE(journal.total(), qint64(5000));
    QCOMPARE(journal.dropped(), qint64(shifted));
    QCOMPARE(journal.endMs(), qint64(4999));
    QCOMPARE(journal.beginMs(), journal.dropped());
    QCOMPARE(journal.count(Journal::Call), 1667);
    for (const Journal::Kind kind : {Journal::Signal, Journal::Call}) {
        for (const int place : journal.ofKind(kind)) {
            const Journal::Entry &entry = journal.entries()[place];
            QCOMPARE(entry.kind, kind);
            QCOMPARE(entry.arguments[0].toInt() % 3 == 0, kind == Journal::Call);
        }
    }
}

void tst_Journal::marksAreInOrderOfTime()
{
    Journal journal(10);
    const auto marks = [&journal] {
        QStringList texts;
        for (const int place : journal.ofKind(Journal::Mark))
            texts.append(journal.nameOf(journal.entries()[place]));
        return texts.join(QLatin1Char(' '));
    };
    journal.noteSignal(10, "doorStatus", {4});
    journal.note(40, Journal::Mark, "live", {});
    journal.note(20, Journal::Mark, "rewound", {}); // to an earlier moment
    journal.note(40, Journal::Mark, "again", {});
    QCOMPARE(marks(), QStringLiteral("rewound live again"));
    QCOMPARE(journal.lowerBound(Journal::Mark, 30), 1);
    QCOMPARE(journal.beginMs(), qint64(10));
    QCOMPARE(journal.endMs(), qint64(10));
    for (int i = 0; i < 8; ++i)
        journal.noteSignal(50 + i, "doorStatus", {5});
    QCOMPARE(marks(), QStringLiteral("rewound again")); // those of the oldest entries are gone
}

void tst_Journal::countsWithoutKeeping()
{
    Journal journal;
    for (int i = 0; i < 100; ++i)
        journal.noteSignal(i, "doorStatus", {i});
    QCOMPARE(journal.entries().size(), 0);
    QCOMPARE(journal.count(Journal::Signal), 100);
    QCOMPARE(journal.totalOf(Journal::Signal, "doorStatus")->last, QVariantList{99});
}

void tst_Journal::findsMoments()
{
    Journal journal(100);
    for (const qint64 ms : {10, 20, 20, 30})
        journal.note(ms, Journal::Sound, "x", {});
    QCOMPARE(journal.lowerBound(Journal::Sound, 0), 0);
    QCOMPARE(journal.lowerBound(Journal::Sound, 20), 1);
    QCOMPARE(journal.lowerBound(Journal::Sound, 21), 3);
    QCOMPARE(journal.lowerBound(Journal::Sound, 31), 4);
    QCOMPARE(journal.lowerBound(Journal::Call, 5), 0);
}

void tst_Journal::meanings_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QVariantList>("arguments");
    QTest::addColumn<QString>("words");
    const QString adaptor = QStringLiteral("norda::VtqAdaptor::");
    const auto row = [](const char *name, const QString &operation, const QVariantList &arguments,
                        const char *words) {
        QTest::newRow(name) << operation << arguments << QString(words);
    };
    const auto bytes = [](int byte, int value) {
        QMap<int, int> map;
        for (int i = 4; i <= 10; ++i)
            map.insert(i, i == byte ? value : 0);
        return QVariantList{QVariant::fromValue(map)};
    };
    const QString key = adaptor + "NordatriggerRearDefrostButton";
    row("fan up", key, bytes(4, 32), "fan up");
    row("heated wheel", key, bytes(7, 8), "steering wheel heating");
    row("rear vents", key, bytes(10, 16), "rear vents");
    row("two at once", key, bytes(5, 16 | 8), "A/C and max A/C");
    row("no key", key, bytes(4, 0),
        "The climate screen's combined key map: sent for every touch of a climate key");
    row("first key", adaptor + "gaugesCustomControls", {0x12, 1}, "first key pressed");
    row("second key", adaptor + "vehicleCustomControls", {0x22, 2}, "second key released");
    row("climate's key", adaptor + "customCtrlsButton", {0x12, 2}, "first key released");
    row("gauge", adaptor + "centerGaugeMenu", {1}, "The centre gauge was touched: pressed");
    row("menu", adaptor + "NordaData_Request", {13},
        "Asks for a page of the module: the configuration menu");
    row("version", adaptor + "NordaData_Request", {5},
        "Asks for a page of the module: the version");
    row("unknown page", adaptor + "NordaData_Request", {6}, "Asks for a page of the module");
    row("row", adaptor + "NordaSetSelectedLineNumber", {2}, "Menu: row 1");
    row("rear zone", "norda::VtqService::setClimateRearZone", {true}, "the rear zone is shown");
    row("source", "norda::VtqService::syncRadioStatus", {0x21, 0x84, 100, 1, 128, 128},
        "Reports what plays: source 20 to 23");
    row("no source", "norda::VtqService::syncRadioStatus", {0x00, 0x84, 100, 1, 128, 128},
        "Reports what plays: source 5, or display 3");
    row("touch", "TouchEvent", {88, -1, -1}, "the vehicle page");
    row("camera", "TouchEvent", {61, -1, -1}, "the camera");
    row("temperature bar", adaptor + "manTempValue", {128, true}, "Temperature: 50 % of the bar");
    row("fan key", adaptor + "fanSpeedUpButton", {false, true}, "Fan up, front zone: released");
    row("speaks for itself", "svaudio::AudioService::doBeep", {0}, "Beep");
    row("no arguments", adaptor + "requestGaugesInfo", {},
        "Asks the module to resend the state of the gauges: on every connection and entry");
}

void tst_Journal::meanings()
{
    QFETCH(QString, operation);
    QFETCH(QVariantList, arguments);
    QTEST(meaningOfCall(operation, arguments), "words");
}

/** Every preset is a message that its signal can carry. */
void tst_Journal::presetsFit()
{
    int found = 0;
    for (const module::ModuleSignal &signal : module::moduleSignals()) {
        for (const SignalPreset &preset : presetsOf(signal.method.name())) {
            QVariantList arguments = preset.arguments;
            QString error;
            QVERIFY2(module::bindArguments(signal.method, &arguments, &error),
                     qPrintable(preset.title + ": " + error));
            for (QVariantList follower : preset.followers) {
                const QByteArray name = follower.takeFirst().toByteArray();
                QVERIFY2(
                    module::bindArguments(module::moduleSignal(name).method, &follower, &error),
                    qPrintable(preset.title + ": " + error));
            }
            ++found;
        }
    }
    QVERIFY2(found >= 40, "a preset names no signal");
}

void tst_Journal::words_data()
{
    QTest::addColumn<QVariantList>("arguments");
    QTest::addColumn<QString>("line");
    const auto row = [](const char *name, const QVariantList &arguments, const char *line) {
        QTest::newRow(name) << arguments << QString(line);
    };
    row("bare word", {"key_P1"}, "x key_P1");
    row("blanks", {"a b"}, "x \"a b\"");
    row("empty", {""}, "x \"\"");
    row("number", {12.5, 3}, "x 12.5 3");
    row("text of digits", {"35"}, "x \"35\"");
    row("remark sign", {"#1"}, "x \"#1\"");
    row("true and its text", {true, "true"}, "x true \"true\"");
    row("quotes", {"say \"hi\" \\"}, "x \"say \\\"hi\\\" \\\\\"");
    row("list", {QStringList{"a", "b]"}}, "x [\"a\",\"b]\"]");
    row("bytes", {QByteArray("\x05\x04")}, "x \"0504\"");
    row("null bytes", {QByteArray()}, "x null");
    row("map", {QVariant::fromValue(QMap<int, bool>{{1, true}})}, "x {\"1\":true}");
    row("other letters", {QStringLiteral("203 ℉")}, "x \"203 ℉\"");
}

/** What is written is read back as the same values. */
void tst_Journal::words()
{
    QFETCH(QVariantList, arguments);
    QFETCH(QString, line);
    QCOMPARE(scenarioLine("x", arguments), line);
    QVariantList read;
    QString error;
    QVERIFY2(splitScenarioLine(line + QStringLiteral(" # remark"), &read, &error),
             qPrintable(error));
    QCOMPARE(read.size(), arguments.size() + 1);
    for (int i = 0; i < arguments.size(); ++i)
        QCOMPARE(QJsonValue::fromVariant(read[i + 1]), module::toJson(arguments[i]));
}

void tst_Journal::linesStayAsTheyAre_data()
{
    QTest::addColumn<QString>("line");
    for (const char *line :
         {"page 81", "signal tirePressureStatus 32 0 [\"1\",\"\",\"3\"]",
          "signal listInfoNotify t 0a [\"r\"] [{\"QString\":\"x\"}] null",
          "host norda::VtqService setParkingAssistZones {\"1\":true,\"2\":false}",
          "expect call A::b 1 * \"x y\" null true [1,[2,{}]]"})
        QTest::newRow(line) << QString(line);
}

/** What was read from a line makes the same line again. */
void tst_Journal::linesStayAsTheyAre()
{
    QFETCH(QString, line);
    QVariantList words;
    QString error;
    QVERIFY2(splitScenarioLine(line, &words, &error), qPrintable(error));
    QCOMPARE(scenarioLine(words[0].toString(), words.mid(1)), line);
}

void tst_Journal::becomesAScenario()
{
    Journal journal(100);
    const QString adaptor = QStringLiteral("norda::VtqAdaptor::");
    journal.note(0, Journal::Page, "page", {81});
    journal.note(1000, Journal::Action, "press", {"key_settings", 4, 5});
    journal.noteSignal(1010, "doorStatus", {4});
    journal.note(1020, Journal::Action, "release", {});
    journal.note(1020, Journal::Call, adaptor + "vehicleSettings", {});
    journal.note(1020, Journal::Call, "svaudio::AudioService::doBeep", {0});
    journal.note(3000, Journal::Action, "press", {"bar", 4, 5});
    journal.note(3500, Journal::Action, "move", {300, 200});
    journal.note(3900, Journal::Action, "release", {});
    journal.note(5000, Journal::Call, adaptor + "requestVehicleInfo", {}); // nobody's doing
    journal.note(6000, Journal::Action, "page", {82});
    journal.note(6000, Journal::Page, "page", {82});
    Setup setup;
    setup.page = 81;
    setup.trim = module::Trim::NoRear;
    setup.language = "de";
    QString error;
    QVERIFY(setup.faults.add("silence:0.1", &error));
    QCOMPARE(
        scenarioOf(&journal, setup, "By hand").split('\n'),
        (QStringList{"scenario \"By hand\"", "source simulator", "trim no-rear", "language de",
                     "fault silence:0.1", "", "0        page 81", "1        touch key_settings 4 5",
                     "         expect call vehicleSettings", "3        press bar 4 5",
                     "3.5      move 300 200", "3.9      release", "6        page 82",
                     "         expect page 82", "+0       expect page 82", ""}));
}

NORDA_TEST_MAIN(tst_Journal)
#include "tst_journal.moc"
