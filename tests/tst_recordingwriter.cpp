#include "recording.h"
#include "testfolder.h"
#include "testmain.h"

#include <sys/resource.h>

using namespace module;

/** What a recording leaves on the disk: complete lines, within a limit, and in files of its own. */
class tst_RecordingWriter : public QObject
{
    Q_OBJECT
private slots:
    void longRecordingStaysBounded();
    void nameOfThePreviousPart_data();
    void nameOfThePreviousPart();
    void eachLineIsInTheFileAtOnce();
    void twoRecorders();
    void ownSource_data();
    void ownSource();
    void fullDisk();

private:
    QString file() const { return m_folder.filePath("recording.jsonl"); }

    TestFolder m_folder;
};

/** A day of signals: what is on the disk stays within the limit and can be played. */
void tst_RecordingWriter::longRecordingStaysBounded()
{
    static constexpr qint64 limit = 200 * 1000;
    static constexpr int seconds = 24 * 3600;
    const QString before = m_folder.filePath("recording.1.jsonl");
    QString error;
    RecordingWriter writer(file(), "A day", &error);
    writer.setLimit(limit);
    writer.writeSignal(0, "gauTopBarTextNotify", {QStringLiteral("said once")});
    QStringList notices;
    for (int second = 0; second < seconds; second += 10) {
        writer.writeSignal(second * 1000, "batteryVoltage", {QString::number(second)});
        const QString notice = writer.takeNotice();
        if (!notice.isEmpty())
            notices.append(notice);
        QVERIFY(QFileInfo(file()).size() + QFileInfo(before).size() <= limit + 8192);
    }
    writer.finish(seconds * 1000);
    QVERIFY(notices.size() >= 3);
    QVERIFY2(
        notices[0].startsWith(file() + ": half of the limit was reached at ") &&
            notices[0].endsWith("; the previous part is " + before + ", older parts are deleted"),
        qPrintable(notices[0]));

    // The two parts follow each other without a gap, and each begins with what was said before.
    int last = -1;
    for (const QString &part : {before, file()}) {
        const auto source = RecordingSource::open(part, &error);
        QVERIFY2(source, qPrintable(error));
        QVERIFY(source->durationMs() < 3600 * 1000 * 12);
        QStringList first;
        while (source->nextDueMs() >= 0) {
            const Emission emission = source->take();
            if (first.size() < 2)
                first.append(emission.arguments[0].toString());
            if (emission.signal != "batteryVoltage" || emission.atMs == 0)
                continue;
            const int second = emission.arguments[0].toInt();
            QVERIFY(last < 0 || second - last == 10 || second - last == 20);
            last = second;
        }
        QCOMPARE(first[0], QStringLiteral("said once"));
        QCOMPARE(source->statistics().value("badLines").toInt(), 0);
    }
    QCOMPARE(last, seconds - 10);
}

void tst_RecordingWriter::nameOfThePreviousPart_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("previous");
    QTest::newRow("one suffix") << "rec.jsonl"
                                << "rec.1.jsonl";
    QTest::newRow("two suffixes") << "rec.old.jsonl"
                                  << "rec.old.1.jsonl";
    QTest::newRow("none") << "rec"
                          << "rec.1";
}

void tst_RecordingWriter::nameOfThePreviousPart()
{
    QFETCH(QString, name);
    QFETCH(QString, previous);
    QTemporaryDir folder;
    QString error;
    RecordingWriter writer(folder.filePath(name), "test", &error);
    writer.setLimit(200);
    for (int i = 0; i < 4; ++i)
        writer.writeSignal(i, "doorStatus", {QVariant::fromValue(uchar(i))});
    writer.finish(9);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
             (name < previous ? QStringList{name, previous} : QStringList{previous, name}));
}

/** Whatever ends the program, its recording ends with the last line. */
void tst_RecordingWriter::eachLineIsInTheFileAtOnce()
{
    QString error;
    RecordingWriter writer(file(), "test", &error);
    for (int ms = 0; ms < 10; ++ms) {
        writer.writeSignal(ms, "doorStatus", {QVariant::fromValue(uchar(ms))});
        QCOMPARE(RecordingSource::open(file(), &error)->durationMs(), ms);
    }
}

void tst_RecordingWriter::twoRecorders()
{
    QString error;
    RecordingWriter first(file(), "test", &error);
    first.writeSignal(1, "doorStatus", {QVariant::fromValue(uchar(1))});
    RecordingWriter second(file(), "test", &error);
    QVERIFY(!second.isOpen());
    QCOMPARE(error, file() + ": expected a file that nothing else is writing");
    second.writeSignal(1, "doorStatus", {QVariant::fromValue(uchar(2))});
    first.finish(2);
    QString ignored;
    QCOMPARE(RecordingSource::open(file(), &ignored)->statistics().value("signals").toInt(), 1);
}

void tst_RecordingWriter::ownSource_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("the recording") << "own.jsonl";
    QTest::newRow("its previous part") << "own.1.jsonl";
}

void tst_RecordingWriter::ownSource()
{
    QFETCH(QString, source);
    const QString path = m_folder.path() + '/' + source;
    QString error;
    RecordingWriter(path, "the source", &error).finish(7);
    RecordingWriter writer(m_folder.filePath("own.jsonl"), "test", &error, {path});
    QVERIFY(!writer.isOpen());
    QCOMPARE(error, path + ": expected a file that is not read at the same time");
    QCOMPARE(RecordingSource::open(path, &error)->durationMs(), 7);
    QFile::remove(path);
}

/** Reported once, and what was written before can be played. */
void tst_RecordingWriter::fullDisk()
{
    QString error;
    RecordingWriter writer(file(), "test", &error);
    rlimit before;
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit limited{100000, before.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &limited), 0);
    QStringList notices;
    for (int ms = 0; ms < 10000; ++ms) {
        writer.writeSignal(ms, "doorStatus", {QVariant::fromValue(uchar(1))});
        const QString notice = writer.takeNotice();
        if (!notice.isEmpty())
            notices.append(notice);
    }
    writer.finish(10000);
    setrlimit(RLIMIT_FSIZE, &before);

    QVERIFY(writer.hasFailed());
    QCOMPARE(notices.size(), 1);
    QVERIFY2(notices[0].startsWith(file() + ": expected a file that can be written: File too "
                                            "large; the recording ends at 2."),
             qPrintable(notices[0]));
    const auto source = RecordingSource::open(file(), &error);
    QCOMPARE(source->statistics().value("badLines").toInt(), 0);
    QVERIFY(source->durationMs() > 1000);
}

NORDA_TEST_MAIN(tst_RecordingWriter)
#include "tst_recordingwriter.moc"
