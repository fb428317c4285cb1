#include "outputfile.h"
#include "testmain.h"
#include "testpaths.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace output;

/** What every file that is written has in common. */
class tst_Output : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        m_folder.reset(new QTemporaryDir);
        put("old", "old content");
    }

    void otherThanRegularFiles_data();
    void otherThanRegularFiles();
    void inputsAreKept_data();
    void inputsAreKept();
    void aResultAppearsAtOnce();
    void aResultThatIsGivenUp();
    void aGrowingFileIsReadableAtOnce();
    void twoWriters_data();
    void twoWriters();
    void aLinkIsWrittenThrough();
    void permissionsStay();
    void whatAKilledRunLeft();
    void noRoom();
    void closedStandardStreams();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QByteArray native(const QString &name) const { return QFile::encodeName(path(name)); }
    void put(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QByteArray content(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QStringList names() const
    {
        return QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

    QScopedPointer<QTemporaryDir> m_folder;
};

static void makeSocket(const QByteArray &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
    const int number = socket(AF_UNIX, SOCK_STREAM, 0);
    QCOMPARE(bind(number, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    close(number);
}

void tst_Output::otherThanRegularFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("problem");
    QTest::newRow("folder") << "folder"
                            << "expected a regular file, found a folder";
    QTest::newRow("pipe") << "pipe"
                          << "expected a regular file, found a pipe";
    QTest::newRow("link to a pipe") << "pipelink"
                                    << "expected a regular file, found a pipe";
    QTest::newRow("socket") << "socket"
                            << "expected a regular file, found a socket";
    QTest::newRow("device") << "/dev/full"
                            << "expected a regular file, found a device";
    QTest::newRow("link to nothing") << "dangling"
                                     << "expected a regular file, found a link to nothing";
    QTest::newRow("no such folder")
        << "none/file"
        << "expected a file that can be written: No such file or directory";
    QTest::newRow("below a file") << "old/file"
                                  << "expected a file that can be written: Not a directory";
}

void tst_Output::otherThanRegularFiles()
{
    QFETCH(QString, name);
    QFETCH(QString, problem);
    QDir(m_folder->path()).mkdir("folder");
    QCOMPARE(mkfifo(native("pipe").constData(), 0600), 0);
    QVERIFY(QFile::link("pipe", path("pipelink")));
    QVERIFY(QFile::link("nowhere", path("dangling")));
    makeSocket(native("socket"));
    const QStringList before = names();
    const QString file = name.startsWith('/') ? name : path(name);

    QString error;
    QVERIFY(!writeResult(file, "new", {}, &error));
    QCOMPARE(error, file + ": " + problem);
    QCOMPARE(GrowingFile(file, "new").error(), error);
    QCOMPARE(names(), before);
}

void tst_Output::inputsAreKept_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("output");
    for (const char *name : {"old", "./old", "hard", "symbolic"}) {
        QTest::addRow("written as %s", name) << "old" << name;
        QTest::addRow("read as %s", name) << name << "old";
    }
}

void tst_Output::inputsAreKept()
{
    QFETCH(QString, input);
    QFETCH(QString, output);
    QCOMPARE(link(native("old").constData(), native("hard").constData()), 0);
    QVERIFY(QFile::link("old", path("symbolic")));
    const InputFiles inputs = {path("none"), path(input)};
    const QString expected = path(output) + ": expected a file that is not read at the same time";
    QString error;
    QVERIFY(!writeResult(path(output), "new", inputs, &error));
    QCOMPARE(error, expected);
    QCOMPARE(GrowingFile(path(output), "new", inputs).error(), expected);
    QCOMPARE(refusal(path(output), inputs), expected);
    GrowingFile other(path("other"), "start", inputs);
    QVERIFY(!other.rename(path(output)));
    QCOMPARE(other.error(), expected);
    QCOMPARE(content("old"), QByteArray("old content"));
    QCOMPARE(refusal(path("other"), inputs), QString());
}

void tst_Output::aResultAppearsAtOnce()
{
    ResultFile file(path("old"));
    QVERIFY2(file.write("new ") && file.write("content"), qPrintable(file.error()));
    QCOMPARE(content("old"), QByteArray("old content"));
    QVERIFY(file.commit());
    QCOMPARE(content("old"), QByteArray("new content"));
    QCOMPARE(names(), QStringList("old"));
    QString error;
    QVERIFY(writeResult(path("first"), "", {}, &error));
    QVERIFY(QFile::exists(path("first")));
}

void tst_Output::aResultThatIsGivenUp()
{
    {
        ResultFile file(path("old"));
        QVERIFY(file.write("new"));
    }
    QCOMPARE(content("old"), QByteArray("old content"));
    QCOMPARE(names(), QStringList("old"));
}

void tst_Output::aGrowingFileIsReadableAtOnce()
{
    GrowingFile file(path("old"), "start\n");
    QCOMPARE(content("old"), QByteArray("start\n"));
    QVERIFY(file.write("line\n"));
    QCOMPARE(content("old"), QByteArray("start\nline\n"));
    QVERIFY(file.rename(path("older")) && file.write("last\n") && file.finish());
    QCOMPARE(content("older"), QByteArray("start\nline\nlast\n"));
    QCOMPARE(names(), QStringList("older"));
    QVERIFY(!file.write("after"));
}

void tst_Output::twoWriters_data()
{
    QTest::addColumn<QString>("first");
    for (const char *name : {"old", "new"})
        QTest::newRow(name) << name;
}

void tst_Output::twoWriters()
{
    QFETCH(QString, first);
    const QString busy = path(first) + ": expected a file that nothing else is writing";
    {
        GrowingFile file(path(first), "start");
        QCOMPARE(GrowingFile(path(first), "other").error(), busy);
        QCOMPARE(ResultFile(path(first)).error(), busy);
        QVERIFY(file.write("more"));
        QCOMPARE(content(first), QByteArray("startmore"));
    }
    ResultFile result(path(first));
    QCOMPARE(ResultFile(path(first)).error(), busy);
    QVERIFY(result.commit());
    QVERIFY(GrowingFile(path(first), "start").isOpen());
}

void tst_Output::aLinkIsWrittenThrough()
{
    QVERIFY(QFile::link("old", path("symbolic")));
    QString error;
    QVERIFY2(writeResult(path("symbolic"), "new", {}, &error), qPrintable(error));
    QVERIFY(QFileInfo(path("symbolic")).isSymLink());
    QCOMPARE(content("old"), QByteArray("new"));
}

void tst_Output::permissionsStay()
{
    QCOMPARE(chmod(native("old").constData(), 0640), 0);
    QString error;
    QVERIFY(writeResult(path("old"), "new", {}, &error));
    struct stat file;
    QCOMPARE(stat(native("old").constData(), &file), 0);
    QCOMPARE(file.st_mode & 07777u, 0640u);
}

void tst_Output::whatAKilledRunLeft()
{
    put(".old.part", "a long rest of a run that was killed");
    QString error;
    QVERIFY2(writeResult(path("old"), "new", {}, &error), qPrintable(error));
    QCOMPARE(content("old"), QByteArray("new"));
    QCOMPARE(names(), QStringList("old"));
}

/** A limit on file sizes, as a disk that has room up to a byte: what fits stays, as whole writes.
 */
void tst_Output::noRoom()
{
    GrowingFile growing(path("growing"), "start\n");
    ResultFile result(path("old"));
    rlimit before;
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit limited{200000, before.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &limited), 0);
    const QByteArray line = QByteArray(99999, 'x') + '\n';
    const bool isWritten[] = {growing.write(line), growing.write(line), growing.write("y")};
    result.write(line + line + line);
    setrlimit(RLIMIT_FSIZE, &before);

    QVERIFY(isWritten[0] && !isWritten[1] && !isWritten[2]);
    QCOMPARE(growing.error(),
             path("growing") + ": expected a file that can be written: File too large");
    QCOMPARE(content("growing"), "start\n" + line);
    QVERIFY(!result.commit());
    QCOMPARE(content("old"), QByteArray("old content"));
}

void tst_Output::closedStandardStreams()
{
    if (!testpaths::emulator().isEmpty())
        QSKIP("an emulator has no threads in a process that was forked");
    const QString file = path("new");
    const pid_t child = fork();
    if (child == 0) {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            close(stream);
        GrowingFile output(file, "start");
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            Q_UNUSED(!write(stream, "printed", 7))
        _exit(output.write(" end") && output.finish() ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    QCOMPARE(status, 0);
    QCOMPARE(content("new"), QByteArray("start end"));
}

NORDA_TEST_MAIN(tst_Output)
#include "tst_output.moc"
