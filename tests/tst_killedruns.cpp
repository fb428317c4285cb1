#include "mem/settingsexe.h"
#include "recording.h"
#include "testmain.h"
#include "testpaths.h"

#include <QRandomGenerator>

#include <csignal>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace module;

static const QString settingsFile = QStringLiteral("/media/flash/nvm/settings.ini");

/** What a program had written when it was killed is there. */
class tst_KilledRuns : public QObject
{
    Q_OBJECT
private slots:
    void recordingAndSaving();

private:
    struct Progress
    {
        volatile int recorded; // signals
        volatile int saved;    // the last value of the setting
    };
    void run(int round, Progress *progress) const;
    QString recording() const { return m_folder.filePath("recording.jsonl"); }

    QTemporaryDir m_folder;
};

/** Until it is killed. */
void tst_KilledRuns::run(int round, Progress *progress) const
{
    static constexpr int signalsPerSetting = 10;
    QString error;
    RecordingWriter writer(recording(), QString::number(round), &error);
    for (int i = 1;; ++i) {
        writer.writeSignal(round, "batteryVoltage", {QString::number(round)});
        progress->recorded = i;
        if (i % signalsPerSetting != 0)
            continue;
        mem::SettingsExe().setOtherPathValue("Saved", settingsFile, 0, progress->saved + 1, true);
        progress->saved = progress->saved + 1;
    }
}

void tst_KilledRuns::recordingAndSaving()
{
    static constexpr int rounds = 200;
    static constexpr int longestRunUs = 60 * 1000;
    if (!testpaths::emulator().isEmpty())
        QSKIP("an emulator takes longer to fork than a run lasts");
    QRandomGenerator random(1);
    void *const shared =
        mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    QVERIFY(shared != MAP_FAILED);
    auto *const progress = new (shared) Progress{0, 0};
    int recorded = 0;
    for (int round = 1; round <= rounds; ++round) {
        progress->recorded = 0;
        const pid_t child = fork();
        if (child == 0)
            run(round, progress);
        usleep(useconds_t(random.bounded(longestRunUs)));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);

        const int saved = mem::SettingsExe().getValue("Saved", settingsFile, 0);
        QVERIFY2(saved == progress->saved || saved == progress->saved + 1,
                 qPrintable(QStringLiteral("%1 of %2").arg(saved).arg(progress->saved)));
        progress->saved = saved;
        recorded += progress->recorded;
        if (progress->recorded == 0)
            continue; // killed before the first signal
        QString error;
        const auto source = RecordingSource::open(recording(), &error);
        QVERIFY2(source, qPrintable(error));
        QCOMPARE(source->durationMs(), round);
        // A kill may end a write between two pages of memory, within the line being written.
        QVERIFY(source->statistics().value("badLines").toInt() <= 1);
        QVERIFY(source->statistics().value("signals").toInt() >= progress->recorded);
    }
    QVERIFY(recorded > rounds && progress->saved > 0);
    munmap(shared, sizeof(Progress));
}

NORDA_TEST_MAIN(tst_KilledRuns)
#include "tst_killedruns.moc"
