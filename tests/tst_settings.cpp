#include "mem/settingscache.h"
#include "mem/settingsexe.h"
#include "mem/settingsfunc.h"
#include "mem/settingsutil.h"
#include "messagecapture.h"
#include "testmain.h"
#include "testpaths.h"

#include <QDir>
#include <QScopeGuard>

#include <sys/wait.h>
#include <unistd.h>

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
    void everyChangeIsSeenAtOnce();
    void otherKeysSurviveAWrite();
    void theOwnersTextSurvivesAWrite();
    void valuesComeBack_data();
    void valuesComeBack();
    void sections();
    void byteOrderMark();
    void aLongLineIsALine();
    void readOnlyFileIsReadAndKept();
    void unstorableValues_data();
    void unstorableValues();
    void relativeRoot();
    void rootsInAllShapes_data();
    void rootsInAllShapes();
    void processesThatStartAtOnce();
    void valuesOfTheWrongKind_data();
    void valuesOfTheWrongKind();
    void damagedFileIsToldOnceAndKept();
    void folderInPlaceOfTheFile();
    void pathsCannotLeaveTheRoot();
    void generalStore();
    void generalStoreSeesOthers();
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

void tst_Settings::everyChangeIsSeenAtOnce()
{
    for (int i = 0; i < 200; ++i) { // one size, and many of them within one time stamp
        store("[General]\nCameraInput=" + QByteArray::number(i % 10) + "\n");
        QCOMPARE(m_saver.getValue("CameraInput", file, -1), i % 10);
    }
}

void tst_Settings::otherKeysSurviveAWrite()
{
    store("[General]\nSomebodyElses=kept\n[Section]\nkey=also kept\n");
    m_saver.setOtherPathValue("VantiqCamera", file, true, true, true);
    QVERIFY(stored().contains("SomebodyElses=kept"));
    QVERIFY(stored().contains("key=also kept"));
}

void tst_Settings::theOwnersTextSurvivesAWrite()
{
    store("; of the factory\n[Section]\nVantiqSplit = other ; one\n\n"
          "[General]\n# cameras\nCameraInput = 1 ; rear\nVantiqSplit=false\n\n[Last]\nkey=1\n");
    m_saver.setOtherPathValue("VantiqSplit", file, true, true, true);
    m_saver.setOtherPathValue("VantiqCamera", file, true, true, true);
    QCOMPARE(stored(), QByteArray("; of the factory\n[Section]\nVantiqSplit = other ; one\n\n"
                                  "[General]\n# cameras\nCameraInput = 1 ; rear\nVantiqSplit=true\n"
                                  "VantiqCamera=true\n\n[Last]\nkey=1\n"));
    QCOMPARE(m_saver.getValue("CameraInput", file, 0), 1);
}

void tst_Settings::valuesComeBack_data()
{
    QTest::addColumn<QVariant>("value");
    for (const QVariant &value :
         {QVariant(true), QVariant(false), QVariant(0), QVariant(-7), QVariant(INT_MAX)})
        QTest::newRow(qPrintable(value.toString())) << value;
    QTest::newRow("nothing") << QVariant(QString(""));
    QTest::newRow("spaces") << QVariant(" two  words ");
    QTest::newRow("quotes") << QVariant("say \"here\"; a=b, c\\d");
    QTest::newRow("lines") << QVariant("one\ntwo\r\n\tthree");
    QTest::newRow("letters") << QVariant(QString::fromUtf8("Größe ℉"));
}

void tst_Settings::valuesComeBack()
{
    QFETCH(QVariant, value);
    auto *settings = mem::SettingsFunc::instance();
    const QVariant none = QVariant(value.userType(), nullptr);
    settings->setValue("kept", none, value, true);
    QCOMPARE(settings->getValue("kept", none), value);
    settings->setValue("kept", none, none, true);
    settings->setValue("after", 1, 2, true);
    QCOMPARE(settings->getValue("after", 1), QVariant(2));
}

void tst_Settings::sections()
{
    store("first=1\n[Camera]\nrear=2\n[General]\nfirst=3\n");
    QCOMPARE(m_saver.getValue("first", file, 0), 3); // the last one counts
    QCOMPARE(m_saver.getValue("Camera/rear", file, 0), 2);
    QCOMPARE(m_saver.getValue("rear", file, 9), 9);
    m_saver.setOtherPathValue("Camera/front", file, 4, 4, true);
    m_saver.setOtherPathValue("New/one", file, 5, 5, true);
    QCOMPARE(stored(), QByteArray("first=1\n[Camera]\nrear=2\nfront=4\n[General]\nfirst=3\n"
                                  "[New]\none=5\n"));
}

void tst_Settings::byteOrderMark()
{
    store("\xEF\xBB\xBF"
          "CameraInput=3\n");
    QCOMPARE(m_saver.getValue("CameraInput", file, 0), 3);
    m_saver.setOtherPathValue("CameraInput", file, 0, 4, true);
    QCOMPARE(stored(), QByteArray("\xEF\xBB\xBF"
                                  "CameraInput=4\n"));
}

void tst_Settings::aLongLineIsALine()
{
    store("[General]\nlong=" + QByteArray(5000, 'x') + "\nCameraInput=3\n");
    QCOMPARE(m_saver.getValue("CameraInput", file, 0), 3);
}

void tst_Settings::readOnlyFileIsReadAndKept()
{
    const QByteArray content("[General]\nCameraInput=3\n");
    store(content);
    QVERIFY(QFile::setPermissions(local(), QFile::ReadOwner));
    QTest::ignoreMessage(
        QtWarningMsg,
        qPrintable(QStringLiteral("settings file %1: cannot be written; the setting is lost")
                       .arg(local())));
    for (int i = 0; i < 3; ++i) // one warning is enough
        m_saver.setOtherPathValue("CameraInput", file, 0, 4, true);
    QCOMPARE(m_saver.getValue("CameraInput", file, 0), 3);
    QCOMPARE(stored(), content);
}

void tst_Settings::unstorableValues_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    for (const char *key : {"", "a=b", "a\nb", "a\n", "[a]", ";a", " a", "/a", "a/", "a/b/c"})
        QTest::addRow("key '%s'", QByteArray(key).replace('\n', ' ').constData())
            << QString(key) << QVariant(1);
    QTest::newRow("a list") << "key" << QVariant(QVariantList{1});
}

void tst_Settings::unstorableValues()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    const QByteArray content("[General]\nCameraInput=3\n");
    store(content);
    MessageCapture messages;
    m_saver.setOtherPathValue(key, file, value, value, true);
    QCOMPARE(stored(), content);
    for (const QString &message : messages.takeTexts())
        QVERIFY2(message.contains("expected a plain key and a truth value, a number or a text"),
                 qPrintable(message));
}

void tst_Settings::relativeRoot()
{
    const QByteArray root = qgetenv("NORDA_HOST_ROOT");
    const QString before = QDir::currentPath();
    QVERIFY(QDir().mkpath(root));
    QVERIFY(QDir::setCurrent(root));
    qputenv("NORDA_HOST_ROOT", "here/there");
    m_saver.setOtherPathValue("CameraInput", file, 0, 4, true);
    QCOMPARE(m_saver.getValue("CameraInput", file, 0), 4);
    QVERIFY(QFile::exists(root + "/here/there" + file));
    qputenv("NORDA_HOST_ROOT", root);
    QDir::setCurrent(before);
}

void tst_Settings::rootsInAllShapes_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QByteArray>("value"); // ROOT is a folder of this test's own
    QTest::addColumn<QByteArray>("root");
    QTest::newRow("data folder") << QByteArray("XDG_DATA_HOME") << QByteArray("ROOT/data")
                                 << QByteArray("ROOT/data/norda-host");
    QTest::newRow("data folder, slash at its end")
        << QByteArray("XDG_DATA_HOME") << QByteArray("ROOT/data/")
        << QByteArray("ROOT/data/norda-host");
    QTest::newRow("data folder, two slashes")
        << QByteArray("XDG_DATA_HOME") << QByteArray("ROOT//data")
        << QByteArray("ROOT/data/norda-host");
    QTest::newRow("data folder, by way of another")
        << QByteArray("XDG_DATA_HOME") << QByteArray("ROOT/other/../data")
        << QByteArray("ROOT/data/norda-host");
    QTest::newRow("home") << QByteArray("HOME") << QByteArray("ROOT/home/")
                          << QByteArray("ROOT/home/.local/share/norda-host");
    QTest::newRow("host root, by way of another")
        << QByteArray("NORDA_HOST_ROOT") << QByteArray("ROOT//a/../b/") << QByteArray("ROOT/b");
    QTest::newRow("no home") << QByteArray("HOME") << QByteArray()
                             << QByteArray("/.local/share/norda-host");
    QTest::newRow("home is /") << QByteArray("HOME") << QByteArray("/")
                               << QByteArray("/.local/share/norda-host");
    QTest::newRow("host root is /")
        << QByteArray("NORDA_HOST_ROOT") << QByteArray("/") << QByteArray();
}

/** What lies outside of the test's folder is only read. */
void tst_Settings::rootsInAllShapes()
{
    QFETCH(QByteArray, variable);
    QFETCH(QByteArray, value);
    QFETCH(QByteArray, root);
    // Each row has a file of its own, as a problem with one is reported only once.
    const QString file =
        QStringLiteral("/media/%1.ini").arg(qHash(QByteArray(QTest::currentDataTag())));
    const char *const names[] = {"NORDA_HOST_ROOT", "XDG_DATA_HOME", "HOME"};
    QMap<QByteArray, QByteArray> before;
    for (const char *name : names)
        before.insert(name, qgetenv(name));
    const auto restore = qScopeGuard([&before] {
        for (auto it = before.cbegin(); it != before.cend(); ++it)
            it->isNull() ? qunsetenv(it.key()) : qputenv(it.key(), *it);
    });
    const QByteArray own = before.value("NORDA_HOST_ROOT");
    for (const char *name : names)
        qunsetenv(name);
    if (!value.isNull())
        qputenv(variable, value.replace("ROOT", own));
    if (!root.contains("ROOT")) {
        MessageCapture messages;
        QCOMPARE(m_saver.getValue("CameraInput", file, 7), 7);
        QCOMPARE(messages.takeTexts(), QStringList());
        return;
    }
    m_saver.setOtherPathValue("CameraInput", file, 0, 4, true);
    QCOMPARE(m_saver.getValue("CameraInput", file, 0), 4);
    QVERIFY(QFile::exists(QString::fromLocal8Bit(root.replace("ROOT", own)) + file));
}

/** Each on a root that does not exist yet, and each saves keys of its own. */
void tst_Settings::processesThatStartAtOnce()
{
    const int processes = testpaths::emulator().isEmpty() ? 6 : 3; // none may wait for too long
    static constexpr int keys = 20;
    const auto name = [](int process, int key) {
        return QStringLiteral("p%1.%2").arg(process).arg(key);
    };
    QVector<pid_t> children;
    for (int process = 0; process < processes; ++process) {
        children.append(fork());
        if (children.last() != 0)
            continue;
        for (int key = 0; key < keys; ++key)
            mem::SettingsExe().setOtherPathValue(name(process, key), file, 0, key, true);
        _exit(0);
    }
    for (const pid_t child : qAsConst(children))
        waitpid(child, nullptr, 0);
    for (int process = 0; process < processes; ++process) {
        for (int key = 0; key < keys; ++key)
            QCOMPARE(m_saver.getValue(name(process, key), file, -1), key);
    }
    QCOMPARE(QDir(QFileInfo(local()).path()).entryList(QDir::Files | QDir::Hidden),
             QStringList("settings.ini"));
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
    QTest::ignoreMessage(QtWarningMsg, "settings file /../escaped.ini: is outside the host's "
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

void tst_Settings::generalStoreSeesOthers()
{
    mem::SettingsFunc *settings = mem::SettingsFunc::instance();
    settings->setValue("Camera_ISRear", false, true, true);
    QFile shared(local("/media/flash/nvm/settings.ini"));
    QVERIFY(shared.open(QIODevice::WriteOnly));
    shared.write("[General]\nCamera_ISRear=false\n");
    shared.close();
    QCOMPARE(settings->getValue("Camera_ISRear", true), QVariant(false));
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
