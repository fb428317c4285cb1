#include "callspy.h"
#include "keyevent.h"
#include "mem/settingscache.h"
#include "messagecapture.h"
#include "norda/btvoicesource.h"
#include "nordahost.h"
#include "pluginfixture.h"
#include "testmain.h"

static const QString typeKey = QStringLiteral("QUILLO_VOICE_TYPE");
static const QString showKey = QStringLiteral("QUILLO_SHOW_VOL");
static const QString mixKey = QStringLiteral("QUILLO_VOICE_MIX_VALUE");

/** The three voice sources, reached as a host reaches them. */
class tst_VoiceSource : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void castsToItsInterface();
    void otherTypesAreInformation_data();
    void otherTypesAreInformation();
    void startAndStopFollowTheSettings_data();
    void startAndStopFollowTheSettings();
    void settingsAreWrittenInOrder();
    void refusedFocus();
    void notices_data();
    void notices();
    void mixMasks();
    void attributes_data();
    void attributes();
    void mixIsRestored();
    void everyOrder_data();
    void everyOrder();
    void logLines();
    void timedLines();

private:
    SourceInterface *source(int id) { return m_host->plugin()->requestSourceInterface(id); }
    QObject *object(int id) { return dynamic_cast<QObject *>(source(id)); }
    static mem::SettingsCache *cache() { return mem::SettingsCache::instance(); }

    QScopedPointer<PluginFixture> m_host;
};

void tst_VoiceSource::init()
{
    m_host.reset(new PluginFixture);
    cache()->setValue(typeKey, -1, -1);
    cache()->setValue(showKey, true, true);
    cache()->setValue(mixKey, 0, 0);
}

void tst_VoiceSource::cleanup()
{
    QMetaObject::invokeMethod(nordaHostObject("AudioManager"), "setFocusResult", Q_ARG(int, 0));
    QMetaObject::invokeMethod(nordaHostObject("SrcDsplCtrl"), "setCurrentDspl", Q_ARG(int, 0));
    m_host.reset();
}

void tst_VoiceSource::castsToItsInterface()
{
    for (int id : {51, 52, 53}) {
        QCOMPARE(object(id)->qt_metacast("com.stavel.Plugin.SourceInterface/1.0"),
                 static_cast<void *>(source(id)));
    }
}

void tst_VoiceSource::otherTypesAreInformation_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {0, 3, -1, INT_MAX, INT_MIN})
        QTest::addRow("%d", type) << type;
}

void tst_VoiceSource::otherTypesAreInformation()
{
    QFETCH(int, type);
    norda::BTVoiceSource source(type, nullptr);
    QCOMPARE(source.name(), QStringLiteral("vtq_info_voice"));
    QCOMPARE(source.clientId(), QStringLiteral("vtq_info_voice"));
    for (const int kind : {-1, 2, 3, 4}) {
        cache()->setValue(typeKey, -1, kind);
        QCOMPARE(source.attribute(), kind == 2 ? 7 : 3);
    }
}

void tst_VoiceSource::startAndStopFollowTheSettings_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("onStart"); // 0 for no announcement
    QTest::addColumn<int>("onStop");
    QTest::newRow("information") << 2 << 23 << 24;
    QTest::newRow("recognition") << 3 << 25 << 26;
    QTest::newRow("warning tone") << 4 << 21 << 22;
    QTest::newRow("none") << -1 << 0 << 0;
    QTest::newRow("unknown") << 9 << 0 << 0;
}

void tst_VoiceSource::startAndStopFollowTheSettings()
{
    QFETCH(int, kind);
    QFETCH(int, onStart);
    QFETCH(int, onStop);
    const auto status = [](int code) {
        return code ? QStringList{QStringLiteral("svaudio::AudioService::setMainAudioStatus(%1)")
                                      .arg(code)}
                    : QStringList();
    };
    const QStringList audio = {"svaudio", "AudioManager"};
    for (int id : {51, 52, 53}) { // whichever source it is
        cache()->setValue(typeKey, -1, kind);
        cache()->setValue(showKey, true, false);
        CallSpy calls;
        source(id)->start(QByteArray("ignored"));
        const QStringList focus = {
            QStringLiteral("AudioManager::requestAudioFocus(1, 1, %1)").arg(source(id)->name()),
            QStringLiteral("svaudio::AudioService::setMainAudioSource(7, false)")};
        QCOMPARE(calls.take(audio), status(onStart) + focus);
        source(id)->stop(QByteArray());
        QCOMPARE(calls.take(audio), status(onStop));
        QCOMPARE(cache()->getValue(typeKey, 0), -1);
        QCOMPARE(cache()->getValue(showKey, false), true);
    }
}

/** Each with its default; the mix of a warning tone is also read. */
void tst_VoiceSource::settingsAreWrittenInOrder()
{
    const auto set = [](const char *values) {
        return QStringLiteral("mem::SettingsCache::setValue(%1)").arg(values);
    };
    const QStringList writes = {"mem::SettingsCache::setValue"};
    CallSpy calls;
    QMetaObject::invokeMethod(object(53), "handingVTQAudioInterrupt", Q_ARG(uchar, 4),
                              Q_ARG(uchar, 6));
    QCOMPARE(calls.take(writes),
             (QStringList{set("QUILLO_VOICE_TYPE, -1, 4"), set("QUILLO_SHOW_VOL, true, false"),
                          set("QUILLO_VOICE_MIX_VALUE, 0, 0"), set("QUILLO_VOICE_MIX_VALUE, 0, 2"),
                          set("QUILLO_VOICE_MIX_VALUE, 0, 10")}));
    source(53)->start(QByteArray());
    const QStringList started = calls.take({"mem::SettingsCache"});
    QCOMPARE(started, (QStringList{"mem::SettingsCache::getValue(QUILLO_VOICE_TYPE, -1)",
                                   "mem::SettingsCache::getValue(QUILLO_VOICE_MIX_VALUE, 0)"}));
    source(53)->stop(QByteArray());
    QCOMPARE(calls.take(writes),
             (QStringList{set("QUILLO_VOICE_TYPE, -1, -1"), set("QUILLO_SHOW_VOL, true, true")}));
}

void tst_VoiceSource::refusedFocus()
{
    QMetaObject::invokeMethod(nordaHostObject("AudioManager"), "setFocusResult", Q_ARG(int, 1));
    CallSpy calls;
    source(51)->start(QByteArray());
    QCOMPARE(calls.take({"svaudio"}), QStringList());
}

void tst_VoiceSource::notices_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("location");
    QTest::addColumn<int>("display");
    QTest::addColumn<QStringList>("events");
    QTest::addColumn<int>("type"); // the settings afterwards
    QTest::addColumn<int>("mask");
    const auto event = [](int code) {
        return QStringLiteral("EventHandler::onEvent(%1)").arg(code);
    };
    QTest::newRow("information") << 2 << 1 << 0 << QStringList{event(29)} << 2 << 1;
    QTest::newRow("recognition, two that cross")
        << 3 << 12 << 0 << QStringList{event(31)} << 3 << 12;
    QTest::newRow("warning tone, one that crosses")
        << 4 << 4 << 0 << QStringList{event(33)} << 4 << 8;
    QTest::newRow("over") << 0 << 63 << 0 << QStringList{event(30), event(32), event(34)} << -1
                          << 0;
    QTest::newRow("kind 1") << 1 << 63 << 0 << QStringList() << -1 << 0;
    QTest::newRow("blocked by the display") << 3 << 12 << 4 << QStringList() << -1 << 0;
    QTest::newRow("over, but blocked") << 0 << 0 << 4 << QStringList() << -1 << 0;
    for (int kind = 5; kind <= 255; ++kind)
        QTest::addRow("kind %d", kind) << kind << 63 << 0 << QStringList() << -1 << 0;
}

void tst_VoiceSource::notices()
{
    QFETCH(int, kind);
    QFETCH(int, location);
    QFETCH(int, display);
    QFETCH(QStringList, events);
    QFETCH(int, type);
    QFETCH(int, mask);
    QMetaObject::invokeMethod(nordaHostObject("SrcDsplCtrl"), "setCurrentDspl",
                              Q_ARG(int, display));
    CallSpy calls;
    QVERIFY(QMetaObject::invokeMethod(object(52), "handingVTQAudioInterrupt",
                                      Q_ARG(uchar, uchar(kind)), Q_ARG(uchar, uchar(location))));
    QCOMPARE(calls.take({"EventHandler"}), events);
    QCOMPARE(cache()->getValue(typeKey, 0), type);
    QCOMPARE(cache()->getValue(showKey, false), type == -1);
    QCOMPARE(cache()->getValue(mixKey, -1), mask);
}

void tst_VoiceSource::mixMasks()
{
    for (int location = 0; location < 256; ++location) {
        const int expected = (location & 0x33) | (location & 4 ? 8 : 0) | (location & 8 ? 4 : 0);
        QMetaObject::invokeMethod(object(51), "handingVTQAudioInterrupt", Q_ARG(uchar, 2),
                                  Q_ARG(uchar, uchar(location)));
        QCOMPARE(cache()->getValue(mixKey, -1), expected);
    }
}

void tst_VoiceSource::attributes_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("ownKind");
    QTest::newRow("information") << 51 << 2;
    QTest::newRow("recognition") << 52 << 3;
    QTest::newRow("warning tone") << 53 << 4;
}

void tst_VoiceSource::attributes()
{
    QFETCH(int, id);
    QFETCH(int, ownKind);
    for (int kind : {-1, 0, 1, 2, 3, 4, 5}) {
        cache()->setValue(typeKey, -1, kind);
        QCOMPARE(source(id)->attribute(), kind == ownKind ? 7 : 3);
    }
}

void tst_VoiceSource::mixIsRestored()
{
    CallSpy calls;
    QVERIFY(QMetaObject::invokeMethod(object(53), "onDelayRestoreMixTimeOut"));
    QCOMPARE(calls.take(), QStringList{"mcu::McuService::setMixChannel(63, 1)"});
}

void tst_VoiceSource::everyOrder_data()
{
    QTest::addColumn<QList<int>>("starts");
    QTest::addColumn<QList<int>>("stops");
    QList<int> starts = {51, 52, 53};
    do {
        QList<int> stops = {51, 52, 53};
        do {
            QTest::addRow("%d %d %d, %d %d %d", starts[0], starts[1], starts[2], stops[0], stops[1],
                          stops[2])
                << starts << stops;
        } while (std::next_permutation(stops.begin(), stops.end()));
    } while (std::next_permutation(starts.begin(), starts.end()));
}

// What plays is a state of the whole unit: the last notice counts, and the first stop ends it.
void tst_VoiceSource::everyOrder()
{
    QFETCH(QList<int>, starts);
    QFETCH(QList<int>, stops);
    const auto status = [](int code) {
        return QStringLiteral("svaudio::AudioService::setMainAudioStatus(%1)").arg(code);
    };
    const QMap<int, int> startCodes = {{51, 23}, {52, 25}, {53, 21}};
    CallSpy calls;
    for (const int id : qAsConst(starts)) {
        const uchar kind = uchar(id - 49);
        QMetaObject::invokeMethod(object(id), "handingVTQAudioInterrupt", Q_ARG(uchar, kind),
                                  Q_ARG(uchar, 1));
        source(id)->start(QByteArray());
        QCOMPARE(calls.take({"svaudio::AudioService::setMainAudioStatus"}),
                 QStringList{status(startCodes[id])});
        for (const int other : {51, 52, 53})
            QCOMPARE(source(other)->attribute(), other == id ? 7 : 3);
    }
    QStringList announced;
    for (const int id : qAsConst(stops)) {
        source(id)->stop(QByteArray());
        announced += calls.take({"svaudio::AudioService::setMainAudioStatus"});
        QCOMPARE(cache()->getValue(typeKey, 0), -1);
        QCOMPARE(cache()->getValue(showKey, false), true);
    }
    QCOMPARE(announced, QStringList{status(startCodes[starts.last()] + 1)});
}

void tst_VoiceSource::logLines()
{
    MessageCapture capture;
    const auto logged = [&capture](const char *text) {
        return !capture.takeTexts().filter(QLatin1String(text)).isEmpty();
    };
    m_host.reset(); // a new plugin makes new sources
    m_host.reset(new PluginFixture);
    capture.take();
    source(53);
    QVERIFY(logged("init m_delayRestoreMix"));
    source(51);
    source(52);
    QVERIFY(!logged("init m_delayRestoreMix"));
    struct Row
    {
        uchar kind;
        const char *text;
        bool onStop;
    };
    for (const Row &row :
         {Row{2, "Voice Information Interrupt", true}, Row{3, "Voice Recognition Interrupt", true},
          Row{4, "Warning Tone Interrupt", false}}) {
        QMetaObject::invokeMethod(object(51), "handingVTQAudioInterrupt", Q_ARG(uchar, row.kind),
                                  Q_ARG(uchar, 12));
        QVERIFY(logged("VTQ_Voice_Mix 12"));
        source(51)->start(QByteArray());
        QVERIFY(logged(row.text));
        source(51)->stop(QByteArray());
        QCOMPARE(logged(row.text), row.onStop);
    }
    QMetaObject::invokeMethod(object(53), "onDelayRestoreMixTimeOut");
    QVERIFY(logged("timer out"));

    // A notice is logged with the display, even where that blocks it.
    for (const int display : {0, 4}) {
        QMetaObject::invokeMethod(nordaHostObject("SrcDsplCtrl"), "setCurrentDspl",
                                  Q_ARG(int, display));
        QMetaObject::invokeMethod(object(51), "handingVTQAudioInterrupt", Q_ARG(uchar, 1),
                                  Q_ARG(uchar, 12));
        QVERIFY(logged(qPrintable(QStringLiteral("-- 1 12 %1").arg(display))));
    }
    KeyEvent event(QEvent::KeyRelease, 42);
    QCOMPARE(source(51)->keyEvent(&event), 0);
    QVERIFY(logged("-- 42 7"));
}

/** Entry and exit, each with a line number of its own. */
void tst_VoiceSource::timedLines()
{
    const QRegularExpression timedLine("::(\\w+)\\(.* \"(\\d+)\" \"?\\[--(IN|OUT)--\\]");
    const auto timed = [&timedLine](const QStringList &lines) {
        QStringList found;
        for (const QString &line : lines) {
            const auto parts = timedLine.match(line);
            if (parts.hasMatch())
                found.append(parts.captured(1) + ' ' + parts.captured(2) + ' ' + parts.captured(3));
        }
        return found;
    };
    MessageCapture capture;
    source(52)->start(QByteArray());
    source(52)->stop(QByteArray());
    QCOMPARE(timed(capture.takeTexts()),
             (QStringList{"start 61 IN", "start 61 OUT", "stop 72 IN", "stop 72 OUT"}));
}

NORDA_TEST_MAIN(tst_VoiceSource)
#include "tst_voicesource.moc"
