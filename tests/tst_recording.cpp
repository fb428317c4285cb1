#include "adaptorlink.h"
#include "norda/vtqadaptor.h"
#include "recording.h"
#include "recordingtools.h"
#include "signaltap.h"
#include "testmain.h"
#include "values.h"

using namespace module;

Q_DECLARE_METATYPE(module::Emission)

/** What is recorded plays back as it was. */
class tst_Recording : public QObject
{
    Q_OBJECT
private slots:
    void everySignalComesBack_data();
    void everySignalComesBack();
    void callsAreKept();
    void wholeSequence();
    void seekCatchesUp();
    void whatBringsAScreenUpToDate_data();
    void whatBringsAScreenUpToDate();
    void damagedRecordings_data();
    void damagedRecordings();
    void linkRefusesWhatTheAdaptorHasNot();
    void damagedTimes_data();
    void damagedTimes();

private:
    QString file() const { return m_folder.filePath(QStringLiteral("recording.jsonl")); }

    QTemporaryDir m_folder;
};

/** Values of a type that are easily lost on the way. */
static QVariantList valuesOf(int type)
{
    switch (type) {
    case QMetaType::UChar:
        return {QVariant::fromValue(uchar(0)), QVariant::fromValue(uchar(255))};
    case QMetaType::QString:
        return {QString(), QStringLiteral("\"quoted\" \\ ℉ \n line"), QStringLiteral("null")};
    case QMetaType::QStringList:
        return {QStringList(), QStringList{"", "a", "℉"}};
    case QMetaType::QByteArray:
        return {QByteArray(), QByteArray(""), QByteArray("\0\xff\x80", 3)};
    case QMetaType::QVariantList:
        return {QVariantList(), QVariantList{1, 2.5, true, QStringLiteral("x"), QByteArray("\1")}};
    default:
        if (type == qMetaTypeId<QList<int>>())
            return {QVariant::fromValue(QList<int>()),
                    QVariant::fromValue(QList<int>{0, -1, INT_MAX, INT_MIN})};
        return {};
    }
}

void tst_Recording::everySignalComesBack_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const ModuleSignal &signal : moduleSignals())
        QTest::newRow(signal.method.name()) << signal.method.name();
    QVERIFY(moduleSignal("audioInterruptNotify").emitter);
}

static bool sameValue(const QVariant &a, const QVariant &b)
{
    if (a.userType() != b.userType())
        return false;
    if (a.userType() == qMetaTypeId<QList<int>>())
        return a.value<QList<int>>() == b.value<QList<int>>();
    if (a.userType() == QMetaType::QString) // null or empty, it shows the same
        return a.toString() == b.toString();
    return a == b && a.isNull() == b.isNull();
}

static bool sameArguments(const QVariantList &a, const QVariantList &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameValue);
}

void tst_Recording::everySignalComesBack()
{
    QFETCH(QByteArray, name);
    const QMetaMethod signal = moduleSignal(name).method;
    QVERIFY(signal.isValid());
    QVector<QVariantList> sent;
    for (int choice = 0; choice < 3; ++choice) {
        QVariantList arguments;
        for (int i = 0; i < signal.parameterCount(); ++i) {
            const QVariantList values = valuesOf(signal.parameterType(i));
            QVERIFY2(!values.isEmpty(), "a parameter type without values");
            arguments.append(values[choice % values.size()]);
        }
        sent.append(arguments);
    }

    QVector<QVariantList> tapped;
    QString error;
    {
        RecordingWriter writer(file(), QStringLiteral("test"), &error);
        QVERIFY2(writer.isOpen(), qPrintable(error));
        bus::SignalTap tap(moduleEmitters(),
                           [&](const QByteArray &seen, const QVariantList &arguments) {
                               QCOMPARE(seen, name);
                               tapped.append(arguments);
                               writer.writeSignal(tapped.size(), seen, arguments);
                           });
        AdaptorLink link;
        for (const QVariantList &arguments : sent)
            QVERIFY(link.deliver({0, name, arguments}));
        writer.finish(99);
    }
    QCOMPARE(tapped.size(), sent.size());

    const auto source = RecordingSource::open(file(), &error);
    QVERIFY2(source, qPrintable(error));
    QCOMPARE(source->durationMs(), 99);
    for (int i = 0; i < sent.size(); ++i) {
        const Emission played = source->take();
        QCOMPARE(played.atMs, i + 1);
        QCOMPARE(played.signal, name);
        QVERIFY(sameArguments(tapped[i], sent[i]));
        QVERIFY2(sameArguments(played.arguments, sent[i]), qPrintable(QString::number(i)));
    }
    QCOMPARE(source->nextDueMs(), -1);
}

void tst_Recording::callsAreKept()
{
    QString error;
    RecordingWriter writer(file(), QStringLiteral("test"), &error);
    writer.writeCall(5, QStringLiteral("norda::VtqAdaptor::NordatriggerRearDefrostButton"),
                     {QVariant::fromValue(QMap<int, int>{{4, 128}, {5, 0}})});
    writer.finish(10);
    QFile text(file());
    QVERIFY(text.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = text.readAll().split('\n');
    QCOMPARE(lines[1], QByteArray("{\"args\":[{\"4\":128,\"5\":0}],\"call\":\"norda::VtqAdaptor::"
                                  "NordatriggerRearDefrostButton\",\"t\":5}"));
    const auto source = RecordingSource::open(file(), &error);
    QCOMPARE(source->statistics().value("calls").toInt(), 1);
    QCOMPARE(source->nextDueMs(), -1);
}

void tst_Recording::wholeSequence()
{
    // A recording of a recording is the same, byte for byte.
    QString error;
    auto simulator = openSource(QStringLiteral("simulator"), &error);
    const QString second = m_folder.filePath(QStringLiteral("second.jsonl"));
    const auto copy = [&error](VehicleSource *source, const QString &path) {
        RecordingWriter writer(path, QStringLiteral("same title"), &error);
        for (qint64 due = source->nextDueMs(); due >= 0 && due < 60000; due = source->nextDueMs()) {
            const Emission emission = source->take();
            if (!emission.isRepeat)
                writer.writeSignal(emission.atMs, emission.signal, emission.arguments);
        }
        writer.finish(60000);
    };
    copy(simulator.get(), file());
    const auto played = openSource(file(), &error);
    QVERIFY2(played, qPrintable(error));
    copy(played.get(), second);
    QFile a(file());
    QFile b(second);
    QVERIFY(a.open(QIODevice::ReadOnly));
    QVERIFY(b.open(QIODevice::ReadOnly));
    const QByteArray recorded = a.readAll();
    QVERIFY(recorded.count('\n') > 500);
    QCOMPARE(b.readAll(), recorded);
}

void tst_Recording::seekCatchesUp()
{
    QString error;
    {
        RecordingWriter writer(file(), QStringLiteral("test"), &error);
        writer.writeSignal(10, "doorStatus", {QVariant::fromValue(uchar(1))});
        writer.writeSignal(20, "batteryVoltage", {QStringLiteral("12.0V")});
        writer.writeSignal(30, "doorStatus", {QVariant::fromValue(uchar(2))});
        writer.writeSignal(40, "doorStatus", {QVariant::fromValue(uchar(3))});
        writer.finish(50);
    }
    const auto source = RecordingSource::open(file(), &error);
    source->seek(35);
    QStringList played;
    while (source->nextDueMs() >= 0) {
        const Emission emission = source->take();
        played.append(QStringLiteral("%1 %2 %3")
                          .arg(emission.atMs)
                          .arg(QString::fromLatin1(emission.signal),
                               emission.signal == "doorStatus"
                                   ? QString::number(emission.arguments[0].toInt())
                                   : emission.arguments[0].toString()));
    }
    QCOMPARE(played,
             (QStringList{"35 batteryVoltage 12.0V", "35 doorStatus 2", "40 doorStatus 3"}));
}

static Emission zone(const char *message)
{
    return {0, "parkingDistanceRear", {QByteArray::fromHex(message)}};
}

static Emission menuLine(int type, int line, const QString &text)
{
    return {0,
            "NordaConfigMenuTextInfo",
            {QVariant::fromValue(QList<int>{type, 0, line}), QStringList{text}, QStringList{}}};
}

void tst_Recording::whatBringsAScreenUpToDate_data()
{
    QTest::addColumn<QVector<Emission>>("said");
    QTest::addColumn<QVector<int>>("needed");
    const auto row = [](const char *name, const QVector<Emission> &said,
                        const QVector<int> &needed) { QTest::newRow(name) << said << needed; };
    row("the last zone", {zone("0703"), zone("0500"), zone("0704")}, {2});
    row("a zone and nobody beside", {zone("0703"), zone("0902"), zone("0000")}, {0, 2});
    row("a zone and somebody beside", {zone("0102"), zone("0804"), zone("0a03")}, {1, 2});
    row("nobody beside any more", {zone("0902"), zone("0703")}, {1});
    row("what is no zone", {zone("0703"), zone("0902"), zone("0b01"), zone("0105")}, {0, 1, 3});
    row("too short", {zone("0703"), zone("07")}, {0, 1});
    const Emission title = menuLine(1, 1, "Lights");
    row("a page of the menu", {title, menuLine(2, 2, "Fog"), menuLine(3, 3, "Dome")}, {0, 1, 2});
    row("a line that changes", {title, menuLine(2, 2, "Fog"), title, menuLine(2, 2, "On")}, {2, 3});
    row("a line once more",
        {title, menuLine(2, 2, "Off"), menuLine(2, 3, "A"), menuLine(2, 2, "On")}, {0, 2, 3});
    row("without a row", {title, menuLine(2, 17, "A"), menuLine(2, 99, "B"), menuLine(2, -1, "C")},
        {0, 2, 3});
}

/** The same whether somebody jumps in a recording or cuts it there. */
void tst_Recording::whatBringsAScreenUpToDate()
{
    QFETCH(QVector<Emission>, said);
    QFETCH(QVector<int>, needed);
    QString error;
    const QString part = m_folder.filePath("part.jsonl");
    {
        RecordingWriter writer(file(), QStringLiteral("test"), &error);
        for (const Emission &emission : qAsConst(said))
            writer.writeSignal(5, emission.signal, emission.arguments);
        writer.finish(50);
    }
    QVERIFY2(cutRecording(file(), 10, 50, part, &error), qPrintable(error));
    for (const QString &recording : {file(), part}) {
        const auto source = RecordingSource::open(recording, &error);
        if (recording == file())
            source->seek(10);
        for (const int index : qAsConst(needed)) {
            QVERIFY(source->nextDueMs() >= 0);
            const Emission emission = source->take();
            QCOMPARE(emission.signal, said[index].signal);
            QCOMPARE(argumentsText(emission.arguments), argumentsText(said[index].arguments));
        }
        if (recording == part) { // what catches up has an end of its own
            QVERIFY(source->isCatchingUp());
            QCOMPARE(source->take().signal, QByteArray(beginAction));
        }
        QVERIFY(!source->isCatchingUp());
        QCOMPARE(source->nextDueMs(), qint64(-1));
    }
}

void tst_Recording::damagedRecordings_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message"); // empty for one that plays
    QTest::addColumn<int>("badLines");
    const QByteArray header("{\"format\":\"norda-recording\",\"version\":1}\n");
    const QByteArray good("{\"t\":1,\"signal\":\"doorStatus\",\"args\":[1]}\n");
    QTest::newRow("cut in a line") << header + good + "{\"t\":2,\"sig"
                                   << "" << 1;
    QTest::newRow("unknown signal") << header + "{\"t\":1,\"signal\":\"nothing\",\"args\":[]}\n"
                                    << "" << 1;
    QTest::newRow("too few arguments")
        << header + "{\"t\":1,\"signal\":\"doorStatus\",\"args\":[]}\n"
        << "" << 1;
    const QByteArray signal = header + "{\"t\":1,\"signal\":";
    QTest::newRow("byte out of range") << signal + "\"doorStatus\",\"args\":[300]}\n"
                                       << "" << 1;
    QTest::newRow("text for a byte") << signal + "\"doorStatus\",\"args\":[\"x\"]}\n"
                                     << "" << 1;
    QTest::newRow("number for a text") << signal + "\"batteryVoltage\",\"args\":[12]}\n"
                                       << "" << 1;
    QTest::newRow("no hex") << signal + "\"parkingDistanceRear\",\"args\":[\"0g\"]}\n"
                            << "" << 1;
    QTest::newRow("text among integers")
        << signal + "\"Properties2TextInfo\",\"args\":[[1,\"2\"]]}\n"
        << "" << 1;
    QTest::newRow("list value of no kind")
        << signal + "\"listInfoNotify\",\"args\":[\"\",\"\",[],[{\"QObject*\":1}],\"\"]}\n"
        << "" << 1;
    QTest::newRow("moment beyond reason")
        << header + "{\"t\":1e300,\"signal\":\"doorStatus\",\"args\":[1]}\n"
        << "" << 1;
    QTest::newRow("time goes back") << header + "{\"t\":9,\"end\":true}\n" + good << "" << 1;
    QTest::newRow("no time") << header + "{\"signal\":\"doorStatus\",\"args\":[1]}\n"
                             << "" << 1;
    QTest::newRow("no header") << good + good
                               << ": line 1: expected the header of a recording, found "
                                  "'{\"t\":1,\"signal\":\"doorStatus\",\"args\":[1]}'"
                               << 0;
    QTest::newRow("damaged header") << "{\"format\":\"nord\n" + good
                                    << ": line 1: expected the header of a recording, found "
                                       "'{\"format\":\"nord'"
                                    << 0;
    QTest::newRow("another version")
        << QByteArray("{\"format\":\"norda-recording\",\"version\":7}\n")
        << ": line 1: expected a recording of version 1, found version 7" << 0;
}

void tst_Recording::damagedRecordings()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    QFETCH(int, badLines);
    QFile target(file());
    QVERIFY(target.open(QIODevice::WriteOnly));
    target.write(content);
    target.close();
    QString error;
    const auto source = openSource(file(), &error);
    if (!message.isEmpty()) {
        QVERIFY(!source);
        QCOMPARE(error, file() + message);
        return;
    }
    QVERIFY2(source, qPrintable(error));
    QCOMPARE(source->statistics().value("badLines").toInt(), badLines);
}

void tst_Recording::linkRefusesWhatTheAdaptorHasNot()
{
    AdaptorLink link;
    QTest::ignoreMessage(QtWarningMsg,
                         "nothing: expected a signal of the adaptor with its arguments");
    QVERIFY(!link.deliver({0, "nothing", {}}));
    QVERIFY(!link.deliver({0, "doorStatus", {}}));
    QVERIFY(!link.deliver({0, "doorStatus", {QVariant::fromValue(QList<int>{1})}}));
    for (const QVariant &unfit : {QVariant(300), QVariant(-1), QVariant("x")})
        QVERIFY(!link.deliver({0, "doorStatus", {unfit}}));
    QVERIFY(link.deliver({0, "doorStatus", {255}}));
    QCOMPARE(link.refused(), 6);
}

void tst_Recording::damagedTimes_data()
{
    QTest::addColumn<QVector<int>>("times");
    QTest::addColumn<QVector<int>>("played");
    const auto row = [](const char *name, const QVector<int> &times, const QVector<int> &played) {
        QTest::newRow(name) << times << played;
    };
    row("one far ahead", {1, 2, 1000000000, 4, 5}, {1, 2, 4, 5});
    row("the first", {1000000000, 2, 3}, {2, 3});
    row("the last", {1, 2, 1}, {1, 1});
    row("two far ahead", {1, 900000, 1000000, 4, 5, 6}, {1, 4, 5, 6});
    row("one far behind", {10, 11, 0, 12}, {10, 11, 12});
    row("equal times", {3, 3, 3}, {3, 3, 3});
}

void tst_Recording::damagedTimes()
{
    QFETCH(QVector<int>, times);
    QFETCH(QVector<int>, played);
    QString error;
    {
        RecordingWriter writer(file(), "test", &error);
        for (const int ms : qAsConst(times)) {
            writer.writeCall(ms, "Beep::play", {});
            writer.writeSignal(ms, "doorStatus", {QVariant::fromValue(uchar(1))});
        }
    }
    const auto source = RecordingSource::open(file(), &error);
    QVERIFY2(source, qPrintable(error));
    QCOMPARE(source->durationMs(), played.constLast());
    QCOMPARE(source->statistics().value("calls").toInt(), played.size());
    QCOMPARE(source->statistics().value("signals").toInt(), played.size());
    QCOMPARE(source->statistics().value("badLines").toInt(), 2 * (times.size() - played.size()));
    QVector<int> seen;
    while (source->nextDueMs() >= 0)
        seen.append(int(source->take().atMs));
    QCOMPARE(seen, played);
}

NORDA_TEST_MAIN(tst_Recording)
#include "tst_recording.moc"
