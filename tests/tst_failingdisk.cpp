#include "program.h"
#include "testmain.h"
#include "testpaths.h"

#include <QDir>
#include <QRegularExpression>

// A process with a sanitizer starts slowly. Each byte has its turn without one.
#ifdef __SANITIZE_ADDRESS__
static constexpr int bytesApart = 7;
#else
static constexpr int bytesApart = 1;
#endif

/**
 * What becomes of an output on a disk that fails, at each byte and each call of a run: the old file
 * or the new one stays, and a failure is reported.
 */
class tst_FailingDisk : public QObject
{
    Q_OBJECT
private slots:
    void everyFailure_data();
    void everyFailure();
    void slowDisk();
    void diskFailsAfterTheWrite_data();
    void diskFailsAfterTheWrite();

private:
    QString path(const QString &name) const { return m_folder.filePath(name); }
    void put(const QString &name, const QByteArray &content) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    /** Without the time when it was written, which some outputs name. */
    QByteArray content(const QString &name) const
    {
        static const QRegularExpression time("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d");
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly)
                   ? QString::fromLatin1(file.readAll()).remove(time).toLatin1()
                   : QByteArray();
    }
    void prepare(const QString &output, const QByteArray &old)
    {
        QDir(m_folder.path()).removeRecursively(); // the same name, which a part's title has
        put(output, old);
        put("source", "{\"format\":\"norda-recording\",\"version\":1}\n"
                      "{\"t\":1,\"signal\":\"doorStatus\",\"args\":[1]}\n"
                      "{\"t\":2,\"signal\":\"doorStatus\",\"args\":[2]}\n"
                      "{\"t\":3,\"end\":true}\n");
    }
    ProgramResult run(const QString &kind, const QString &fault = {}) const
    {
        const QString tests = testpaths::buildFolder() + "/tests/";
        return runProgram({"env", "LD_PRELOAD=" + tests + "libfaultio.so",
                           "ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0",
                           "NORDA_FAULTIO=" + fault, "NORDA_FAULTIO_FOLDER=" + m_folder.path(),
                           tests + "norda-output-runs", kind, m_folder.path()});
    }

    QTemporaryDir m_folder;
};

void tst_FailingDisk::everyFailure_data()
{
    struct Output
    {
        const char *kind;
        const char *file;
        const char *old;
        bool grows; // the new file may end with any of its lines
    };
    static constexpr Output outputs[] = {
        {"recording", "result", "old\n", true},
        {"can-log", "result", "old\n", true},
        {"cut", "result", "old\n", false},
        {"summary", "result", "old\n", false},
        {"junit", "result", "old\n", false},
        {"report", "result", "old\n", false},
        {"picture", "result", "old\n", false},
        {"settings", "media/flash/nvm/settings.ini", "[General]\nother=1\n", false},
    };
    static constexpr const char *faults[] = {
        "open:%1:EROFS", "write:%1:EIO",  "write:%1:ENOSPC", "write:%1:short", "bytes:%1:ENOSPC",
        "fsync:%1:EIO",  "rename:%1:EIO", "rename:%1:EROFS", "close:%1:EIO",
    };
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("old");
    QTest::addColumn<bool>("grows");
    QTest::addColumn<QString>("fault");
    for (const Output &output : outputs) {
        for (const char *fault : faults)
            QTest::addRow("%s, %s", output.kind, QByteArray(fault).replace("%1", "N").constData())
                << output.kind << output.file << QByteArray(output.old) << output.grows << fault;
    }
}

void tst_FailingDisk::everyFailure()
{
    if (!testpaths::emulator().isEmpty())
        QSKIP("an emulator would preload the library itself");
    QFETCH(QString, kind);
    QFETCH(QString, file);
    QFETCH(QByteArray, old);
    QFETCH(bool, grows);
    QFETCH(QString, fault);
    prepare(file, old);
    const ProgramResult whole = run(kind);
    QVERIFY2(whole.exitCode == 0, qPrintable(whole.err));
    const QByteArray complete = content(file);
    QVERIFY(complete != old);

    static constexpr int longest = 4096; // of an output that is tried at each byte
    const int step = !fault.startsWith("bytes")  ? 1
                     : complete.size() > longest ? complete.size() / 400 * bytesApart
                                                 : bytesApart;
    int n = 0;
    for (bool isInjected = true; isInjected;) {
        n += step;
        prepare(file, old);
        const ProgramResult result = run(kind, fault.arg(n));
        const QByteArray found = content(file);
        const QByteArray about =
            QString::number(n).toLatin1() + ": " + result.err.toUtf8() + "found:\n" + found;
        const bool isPart = grows && complete.startsWith(found) && found.endsWith('\n');
        QVERIFY2(found == old || found == complete || isPart, about);
        QVERIFY2(result.exitCode == (found == complete ? result.exitCode : 1), about);
        QVERIFY2(result.exitCode == 0 || result.exitCode == 1, about);
        QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden).filter(".part"),
                 QStringList());
        isInjected = result.err.contains("faultio: injected");
    }
    QVERIFY2(n > 1, "nothing failed");
}

void tst_FailingDisk::slowDisk()
{
    if (!testpaths::emulator().isEmpty())
        QSKIP("an emulator would preload the library itself");
    prepare("result", "old\n");
    const ProgramResult result = run("recording", "write:2:slow");
    QCOMPARE(result.exitCode, 0);
    QVERIFY(result.err.contains("faultio: injected"));
}

void tst_FailingDisk::diskFailsAfterTheWrite_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"recording", "can-log"})
        QTest::newRow(kind) << kind;
}

/** The file seems whole, and is not on the disk. */
void tst_FailingDisk::diskFailsAfterTheWrite()
{
    if (!testpaths::emulator().isEmpty())
        QSKIP("an emulator would preload the library itself");
    QFETCH(QString, kind);
    prepare("result", "old\n");
    const ProgramResult result = run(kind, "fdatasync:1:EIO");
    QVERIFY2(result.err.contains("faultio: injected"), qPrintable(result.err));
    QVERIFY2(result.err.contains(path("result") + ": expected a file that can be written"),
             qPrintable(result.err));
    QCOMPARE(result.exitCode, 1);
}

NORDA_TEST_MAIN(tst_FailingDisk)
#include "tst_failingdisk.moc"
