#include "mem/settingscache.h"
#include "mem/settingsexe.h"
#include "mem/settingsfunc.h"
#include "mem/settingsutil.h"
#include "testmain.h"

#include <QDir>

static const QString file = QStringLiteral("/media/flash/nvm/factory/settings.ini");

/** The head unit's settings stores. */
class tst_Settings : public QObject
{
    Q_OBJECT
private slots:
    void init() { QDir(qEnvironmentVariable("NORDA_HOST_ROOT")).removeRecursively(); }

    void missingFileGivesDefaults();
    void writtenValuesAreOnDiskAtOnce();
    void whatAnotherProcessWroteIsSeen();
    void otherKeysSurviveAWrite();
    void valuesOfTheWrongKind_data();
    void valuesOfTheWrongKind();
    void damagedFileIsToldOnceAndKept();
    void folderInPlaceOfTheFile();
    void pathsCannotLeaveTheRoot();
    void generalStore();
    void cache();

private:
    QString local(const QString &path = file) const
    {
        return qEnvironmentVariable("NORDA_HOST_ROOT") + path;
    }
    void store(const QByteArray &content) const
    {
        QDir().mkpath(QFileInfo(local()).path());
        QFile target(local());
        QVERIFY(target.open(QIODevice::WriteOnly));
        target.write(content);
        target.close();
        QTest::qSleep(20); // so that no two contents share a time stamp
    }
    QByteArray stored() const
    {
        QFile source(local());
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
    }

    mem::SettingsExe m_saver;
};

void tst_Settings::missingFileGivesDefaults()
{
    QCOMPARE(m_saver.getValue("CameraInput", file, 7), 7);
    QCOMPARE(m_saver.getValue("RearInput", file, true), true);
    QVERIFY(!QFile::exists(local()));
}

void tst_Settings::writtenValuesAreOnDiskAtOnce()
{
    m_saver.setOtherPathValue("VantiqSplit", file, true, true, true);
    QVERIFY(stored().contains("VantiqSplit=true"));
    QCOMPARE(mem::SettingsExe().getValue("VantiqSplit", file, false), true);
    QCOMPARE(mem::SettingsUtil::instance()->getSaver()->getValue("VantiqSplit", file, false), true);
}

void tst_Settings::whatAnotherProcessWroteIsSeen()
{
    store("[General]\nCameraInput=1\n");
    QCOMPARE(m_saver.getValue("CameraInput", file, 0), 1);
    store("[General]\nCameraInput=2\n");
    QCOMPARE(m_saver.getValue("CameraInput", file, 0), 2);
}

void tst_Settings::otherKeysSurviveAWrite()
{
    store("[General]\nSomebodyElses=kept\n[Section]\nkey=also kept\n");
    m_saver.setOtherPathValue("VantiqCamera", file, true, true, true);
    QVERIFY(stored().contains("SomebodyElses=kept"));
    QVERIFY(stored().contains("key=also kept"));
}

void tst_Settings::valuesOfTheWrongKind_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("asInt");   // default 7
    QTest::addColumn<bool>("asBool"); // default true
    QTest::newRow("number") << QByteArray("3") << 3 << true;
    QTest::newRow("zero") << QByteArray("0") << 0 << false;
    QTest::newRow("one") << QByteArray("1") << 1 << true;
    QTest::newRow("false") << QByteArray("false") << 7 << false;
    QTest::newRow("true") << QByteArray("true") << 7 << true;
    QTest::newRow("text") << QByteArray("abc") << 7 << true;
    QTest::newRow("nothing") << QByteArray("") << 7 << true;
}

void tst_Settings::valuesOfTheWrongKind()
{
    QFETCH(QByteArray, text);
    QFETCH(int, asInt);
    QFETCH(bool, asBool);
    store("[General]\nkey=" + text + "\n");
    QCOMPARE(m_saver.getValue("key", file, 7), asInt);
    QCOMPARE(m_saver.getValue("key", file, true), asBool);
}

void tst_Settings::damagedFileIsToldOnceAndKept()
{
    const QByteArray noise("\x01\x02 no settings at all\n\xff\xfe\n");
    store(noise);
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(QStringLiteral("settings file %1: expected lines of the form "
                                                   "key=value; defaults are used")
                                        .arg(local())));
    QCOMPARE(m_saver.getValue("CameraInput", file, 5), 5);
    QCOMPARE(m_saver.getValue("RearInput", file, true), true);
    m_saver.setOtherPathValue("VantiqSplit", file, true, true, true);
    QCOMPARE(stored(), noise);
}

void tst_Settings::folderInPlaceOfTheFile()
{
    QVERIFY(QDir().mkpath(local()));
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(QStringLiteral("settings file %1: expected a readable file; "
                                                   "defaults are used")
                                        .arg(local())));
    QCOMPARE(m_saver.getValue("CameraInput", file, 5), 5);
    m_saver.setOtherPathValue("VantiqSplit", file, true, true, true);
    QVERIFY(QFileInfo(local()).isDir());
}

void tst_Settings::pathsCannotLeaveTheRoot()
{
    const QString outside = QStringLiteral("/../escaped.ini");
    QTest::ignoreMessage(QtWarningMsg, "settings file /../escaped.ini: lies outside of the host's "
                                       "root and is not used");
    m_saver.setOtherPathValue("key", outside, 1, 1, true);
    QVERIFY(!QFile::exists(local(outside)));
    QCOMPARE(m_saver.getValue("key", outside, 3), 3);
}

void tst_Settings::generalStore()
{
    mem::SettingsFunc *settings = mem::SettingsFunc::instance();
    QCOMPARE(settings->getValue("Camera_ISRear", false).toBool(), false);
    settings->setValue("Camera_ISRear", false, true, true);
    QCOMPARE(settings->getValue("Camera_ISRear", false).toBool(), true);
    QFile kept(local("/media/flash/nvm/settings.ini"));
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QVERIFY(kept.readAll().contains("Camera_ISRear=true"));

    settings->setValue("Passing", false, true, false);
    QCOMPARE(settings->getValue("Passing", false).toBool(), true);
    kept.seek(0);
    QVERIFY(!kept.readAll().contains("Passing"));
}

void tst_Settings::cache()
{
    mem::SettingsCache *cache = mem::SettingsCache::instance();
    QCOMPARE(cache->getValue(QStringLiteral("VOICE"), -1), -1);
    QCOMPARE(cache->getValue(QStringLiteral("SHOW"), true), true);
    QSignalSpy changes(cache, &mem::SettingsCache::changed);
    cache->setValue("VOICE", -1, 3);
    cache->setValue("SHOW", true, false);
    QCOMPARE(changes.count(), 2);
    QCOMPARE(cache->getValue(QStringLiteral("VOICE"), -1), 3);
    QCOMPARE(cache->getValue(QStringLiteral("SHOW"), true), false);
}

NORDA_TEST_MAIN(tst_Settings)
#include "tst_settings.moc"
