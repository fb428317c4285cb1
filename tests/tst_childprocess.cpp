#include "testmain.h"
#include "tools/childprocess.h"

#include <csignal>
#include <unistd.h>

using Work = void (*)(QIODevice *results);
Q_DECLARE_METATYPE(Work)
Q_DECLARE_METATYPE(ChildProcess::End)

/** How a child process may end, and that what it wrote arrives however it does. */
class tst_ChildProcess : public QObject
{
    Q_OBJECT
private slots:
    void ends_data();
    void ends();
    void longResults();
};

void tst_ChildProcess::ends_data()
{
    QTest::addColumn<Work>("work");
    QTest::addColumn<ChildProcess::End>("end");
    QTest::addColumn<bool>("hasSucceeded");
    QTest::addColumn<QString>("inWords");
    QTest::addColumn<QByteArray>("results");
    const auto row = [](const char *name, Work work, ChildProcess::End end, bool hasSucceeded,
                        const char *inWords, const char *results) {
        QTest::newRow(name) << work << end << hasSucceeded << QString::fromLatin1(inWords)
                            << QByteArray(results);
    };
    // The child leaves without the exit handlers of the test.
    row(
        "done",
        [](QIODevice *results) {
            results->write("all");
            ::_exit(0);
        },
        ChildProcess::Exited, true, "exit code 0", "all");
    row(
        "another exit code",
        [](QIODevice *results) {
            results->write("some");
            ::_exit(3);
        },
        ChildProcess::Exited, false, "exit code 3", "some");
    row(
        "crash",
        [](QIODevice *results) {
            results->write("half");
            ::raise(SIGUSR1);
        },
        ChildProcess::Crashed, false, "User defined signal 1", "half");
    row(
        "killed by somebody else", [](QIODevice *) { ::raise(SIGKILL); }, ChildProcess::Crashed,
        false, "Killed", "");
    row(
        "never ends",
        [](QIODevice *results) {
            results->write("begun");
            for (;;)
                ::pause();
        },
        ChildProcess::TimedOut, false, "out of time", "begun");
    row(
        "never ends without its pipe",
        [](QIODevice *results) {
            results->close();
            for (;;)
                ::pause();
        },
        ChildProcess::TimedOut, false, "out of time", "");
    row(
        "writes without an end",
        [](QIODevice *results) {
            for (;;) {
                results->write("");
                ::usleep(1000);
            }
        },
        ChildProcess::TimedOut, false, "out of time", "");
}

void tst_ChildProcess::ends()
{
    static constexpr int limitMs = 300;
    QFETCH(Work, work);
    QElapsedTimer clock;
    clock.start();
    const ChildProcess child = ChildProcess::run(work, limitMs);
    QVERIFY(clock.elapsed() < 20 * limitMs);
    QTEST(child.end(), "end");
    QTEST(child.hasSucceeded(), "hasSucceeded");
    QTEST(child.endInWords(), "inWords");
    QTEST(child.results(), "results");
}

/** More than a pipe holds. */
void tst_ChildProcess::longResults()
{
    static constexpr int size = 1'000'000;
    const ChildProcess child = ChildProcess::run(
        [](QIODevice *results) {
            results->write(QByteArray(size, 'x'));
            ::_exit(0);
        },
        10'000);
    QVERIFY(child.hasSucceeded());
    QCOMPARE(child.results().size(), size);
}

NORDA_TEST_MAIN(tst_ChildProcess)
#include "tst_childprocess.moc"
