#include "audiostage.h"
#include "callspy.h"
#include "mem/settingscache.h"
#include "norda/vtqservice.h"
#include "nordahost.h"
#include "panels/audiomonitor.h"
#include "screen.h"
#include "session/session.h"
#include "testmain.h"
#include "testpaths.h"
#include "virtualtime.h"
#include "windowstack.h"

/** The head unit's audio policy around the plugin's voice sources. */
class tst_AudioStage : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void voices_data();
    void voices();
    void aRefusedFocusLetsTheMusicGoOn();
    void mixComesBackAfterADelay();
    void mixComesBackAfterAJump();
    void mixComesBackWithoutAClock();
    void aNewVoiceKeepsTheMixApart();
    void voicesReplaceEachOther_data();
    void voicesReplaceEachOther();
    void blockedByTheDisplay();
    void noticesWithoutAVoice_data();
    void noticesWithoutAVoice();
    void speakersOfEveryMask();
    void timelineIsBounded();
    void pictureFollows();
    void aDriveIsTold();
    void timelineRunsForward();

private:
    void notify(int kind, int location = 0)
    {
        emit norda::VtqService::instance()->audioInterruptNotify(uchar(kind), uchar(location));
    }
    QStringList notes() const
    {
        QStringList lines;
        for (const AudioStage::Entry &entry : m_stage->timeline())
            lines.append(QStringLiteral("%1 %2").arg(entry.ms).arg(entry.text));
        return lines;
    }
    void moveTo(qint64 ms)
    {
        m_nowMs = ms;
        m_stage->advance();
    }

    QScopedPointer<Screen> m_screen;
    QScopedPointer<WindowStack> m_unit;
    QScopedPointer<AudioStage> m_stage;
    qint64 m_nowMs = 0;
};

void tst_AudioStage::init()
{
    m_screen.reset(new Screen);
    m_unit.reset(new WindowStack(m_screen.data()));
    QString error;
    QVERIFY2(m_unit->load(testpaths::pluginFile(), &error), qPrintable(error));
    m_stage.reset(new AudioStage(m_unit.data()));
    m_nowMs = 0;
    m_stage->setClock([this] { return m_nowMs; });
}

void tst_AudioStage::cleanup()
{
    notify(0);
    m_stage->setFocusGranted(true);
    QMetaObject::invokeMethod(nordaHostObject("SrcDsplCtrl"), "setCurrentDspl", Q_ARG(int, 0));
    m_stage.reset();
    m_unit.reset();
    m_screen.reset();
}

void tst_AudioStage::voices_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("source");
    QTest::addColumn<int>("status");
    QTest::newRow("information") << 2 << "Voice information"
                                 << "vtq_info_voice" << 23;
    QTest::newRow("recognition") << 3 << "Voice recognition"
                                 << "vtq_reco_voice" << 25;
    QTest::newRow("warning tone") << 4 << "Warning tone"
                                  << "vtq_warn_tone" << 21;
}

void tst_AudioStage::voices()
{
    QFETCH(int, kind);
    QFETCH(QString, name);
    QFETCH(QString, source);
    QFETCH(int, status);
    m_nowMs = 1234;
    notify(kind, 4);
    QCOMPARE(int(m_stage->voice()), kind - 1);
    QCOMPARE(m_stage->voiceName(), name);
    QVERIFY(m_stage->isDucked());
    QVERIFY(!m_stage->isVolumeShown());
    QCOMPARE(m_stage->voiceSpeakers(), int(RearLeftSpeaker)); // the mixer numbers them otherwise
    QCOMPARE(m_stage->musicSpeakers(), AllSpeakers - RearLeftSpeaker);

    m_nowMs = 2000;
    notify(0);
    QCOMPARE(int(m_stage->voice()), int(AudioStage::Silent));
    QVERIFY(!m_stage->isDucked());
    QVERIFY(m_stage->isVolumeShown());
    QCOMPARE(m_stage->voiceSpeakers(), 0);
    QCOMPARE(notes(), (QStringList{
                          QStringLiteral("1234 Module notice: kind %1, locations 4").arg(kind),
                          "1234 Volume display hidden",
                          QStringLiteral("1234 %1 begins, from rear left").arg(name),
                          QStringLiteral("1234 Audio status %1").arg(status),
                          QStringLiteral("1234 %1 requests the audio focus").arg(source),
                          "1234 Audio source 7: the music ducks",
                          "2000 Module notice: kind 0, locations 0",
                          QStringLiteral("2000 Audio status %1").arg(status + 1),
                          "2000 Volume display shown",
                          QStringLiteral("2000 %1 ends").arg(name),
                      }));
}

void tst_AudioStage::aRefusedFocusLetsTheMusicGoOn()
{
    m_stage->setFocusGranted(false);
    notify(2, 1);
    QCOMPARE(int(m_stage->voice()), int(AudioStage::Information));
    QVERIFY(!m_stage->isDucked());
    QCOMPARE(notes().last(), QStringLiteral("0 Audio focus denied: the music continues"));
    notify(0);
    m_stage->setFocusGranted(true);
    notify(2, 1);
    QVERIFY(m_stage->isDucked());
}

void tst_AudioStage::mixComesBackAfterADelay()
{
    notify(4, 3);
    moveTo(1000);
    notify(0);
    CallSpy calls;
    moveTo(1799);
    QCOMPARE(calls.take({"mcu"}), QStringList());
    QCOMPARE(m_stage->musicSpeakers(), AllSpeakers - 3);
    moveTo(1800);
    QCOMPARE(calls.take({"mcu"}), QStringList{"mcu::McuService::setMixChannel(63, 1)"});
    QCOMPARE(m_stage->musicSpeakers(), int(AllSpeakers));
    QCOMPARE(notes().last(), QStringLiteral("1800 Mix channels 63 on"));
    moveTo(9000);
    QCOMPARE(calls.take({"mcu"}), QStringList()); // once
}

// The moment of the restoring may lie behind a jump to an earlier one.
void tst_AudioStage::mixComesBackAfterAJump()
{
    moveTo(500000);
    notify(4, 3);
    notify(0);
    CallSpy calls;
    moveTo(1000);
    QCOMPARE(calls.take({"mcu"}), QStringList{"mcu::McuService::setMixChannel(63, 1)"});
    QCOMPARE(m_stage->musicSpeakers(), int(AllSpeakers));
}

// A unit without a bench has no drive time.
void tst_AudioStage::mixComesBackWithoutAClock()
{
    m_stage->setClock({});
    notify(4, 3);
    notify(0);
    CallSpy calls;
    QCOMPARE(fireTimers(m_stage.data()), 1);
    QCOMPARE(calls.take({"mcu"}), QStringList{"mcu::McuService::setMixChannel(63, 1)"});
    QCOMPARE(m_stage->musicSpeakers(), int(AllSpeakers));
    QCOMPARE(fireTimers(m_stage.data()), 0);
    notify(0);
    notify(4, 3); // before the mix is back
    QCOMPARE(fireTimers(m_stage.data()), 0);
}

void tst_AudioStage::aNewVoiceKeepsTheMixApart()
{
    notify(4, 1);
    notify(0);
    moveTo(500);
    notify(2, 2);
    CallSpy calls;
    moveTo(5000);
    QCOMPARE(calls.take({"mcu"}), QStringList());
    QCOMPARE(m_stage->musicSpeakers(), AllSpeakers - 2);
}

void tst_AudioStage::voicesReplaceEachOther_data()
{
    QTest::addColumn<QList<int>>("kinds");
    QList<int> kinds = {2, 3, 4};
    do {
        QTest::addRow("%d %d %d", kinds[0], kinds[1], kinds[2]) << kinds;
    } while (std::next_permutation(kinds.begin(), kinds.end()));
}

void tst_AudioStage::voicesReplaceEachOther()
{
    QFETCH(QList<int>, kinds);
    for (const int kind : qAsConst(kinds)) {
        notify(kind, 1);
        QCOMPARE(int(m_stage->voice()), kind - 1);
        QVERIFY(m_stage->isDucked());
    }
    QCOMPARE(notes().filter(QStringLiteral("is interrupted")).size(), 2);
    CallSpy calls;
    notify(0);
    QCOMPARE(int(m_stage->voice()), int(AudioStage::Silent));
    const QMap<int, int> ends = {{2, 24}, {3, 26}, {4, 22}};
    QCOMPARE(calls.take({"svaudio::AudioService::setMainAudioStatus"}),
             QStringList{QStringLiteral("svaudio::AudioService::setMainAudioStatus(%1)")
                             .arg(ends[kinds.last()])});
    QVERIFY(m_stage->isVolumeShown());
}

void tst_AudioStage::blockedByTheDisplay()
{
    QMetaObject::invokeMethod(nordaHostObject("SrcDsplCtrl"), "setCurrentDspl", Q_ARG(int, 4));
    notify(3, 12);
    QCOMPARE(int(m_stage->voice()), int(AudioStage::Silent));
    QCOMPARE(notes().size(), 1); // the notice itself
    QMetaObject::invokeMethod(nordaHostObject("SrcDsplCtrl"), "setCurrentDspl", Q_ARG(int, 0));
    notify(3, 12);
    QCOMPARE(int(m_stage->voice()), int(AudioStage::Recognition));
}

void tst_AudioStage::noticesWithoutAVoice_data()
{
    QTest::addColumn<int>("kind");
    for (const int kind : {0, 1, 5, 6, 127, 128, 255})
        QTest::addRow("kind %d", kind) << kind;
}

void tst_AudioStage::noticesWithoutAVoice()
{
    QFETCH(int, kind);
    notify(kind, 63);
    QCOMPARE(int(m_stage->voice()), int(AudioStage::Silent));
    QCOMPARE(notes().size(), kind == 0 ? 0 : 1);
    QVERIFY(m_stage->isVolumeShown());
}

void tst_AudioStage::speakersOfEveryMask()
{
    for (int location = 0; location < 64; ++location) {
        notify(2, location);
        const int mask = (location & 0x33) | (location & 4 ? RearLeftSpeaker : 0) |
                         (location & 8 ? RearRightSpeaker : 0);
        QCOMPARE(m_stage->voiceSpeakers(), mask);
        QCOMPARE(m_stage->musicSpeakers(), AllSpeakers & ~mask);
    }
    QCOMPARE(speakerNames(0), QStringLiteral("no speaker"));
    QCOMPARE(speakerNames(FrontLeftSpeaker | Subwoofer), QStringLiteral("front left, subwoofer"));
}

void tst_AudioStage::timelineIsBounded()
{
    for (int i = 0; i < 1500; ++i) {
        m_nowMs = i;
        notify(1);
    }
    QCOMPARE(m_stage->timeline().size(), 1000);
    QCOMPARE(m_stage->timeline().last().ms, 1499);
}

void tst_AudioStage::pictureFollows()
{
    AudioMonitor view(m_stage.data());
    view.resize(800, 480);
    const QImage silent = view.grab().toImage();
    notify(4, 1);
    const QImage left = view.grab().toImage();
    QVERIFY(left != silent);
    notify(4, 2);
    QVERIFY(view.grab().toImage() != left);
}

void tst_AudioStage::aDriveIsTold()
{
    QString error;
    Session session(module::openSource(QStringLiteral("simulator"), &error));
    session.connectAudio(m_stage.data());
    session.drive()->setSpeed(module::Drive::Unlimited);
    QSignalSpy finished(session.drive(), &module::Drive::finished);
    session.drive()->play();
    QVERIFY(finished.wait(30000));
    const QStringList lines = notes();
    for (const char *voice : {"Warning tone begins", "Voice information begins",
                              "Voice recognition begins", "Mix channels 63 on"})
        QVERIFY2(!lines.filter(QLatin1String(voice)).isEmpty(), voice);
    // The puncture is told in front, the parking tones come from behind.
    QVERIFY(!lines.filter("Warning tone begins, from front left, front right, centre").isEmpty());
    QVERIFY(lines.filter("Warning tone begins, from rear left, rear right").size() > 5);
    const QJsonArray kept = session.summary(0).value("audio").toArray();
    QCOMPARE(kept.size(), lines.size());
    QVERIFY(kept[0].toObject().value("t").toDouble() > 1);
    QCOMPARE(int(m_stage->voice()), int(AudioStage::Silent));
}

// However one jumps in the drive, what comes later stands later.
void tst_AudioStage::timelineRunsForward()
{
    QString error;
    Session session(module::openSource(QStringLiteral("none"), &error));
    session.connectAudio(m_stage.data());
    session.drive()->seek(573500);
    notify(4, 3);
    session.drive()->seek(295300);
    notify(0);
    notify(4, 3);
    qint64 before = 0;
    for (const AudioStage::Entry &entry : m_stage->timeline()) {
        QVERIFY2(entry.ms >= before, qPrintable(entry.text));
        before = entry.ms;
    }
}

NORDA_TEST_MAIN(tst_AudioStage)
#include "tst_audiostage.moc"
