#include "adaptorlink.h"
#include "panels/callwords.h"
#include "testmain.h"
#include "testpaths.h"
#include "tools/headerwords.h"

#include <QDirIterator>

/** What the SDK's headers say of signals, arguments and commands. */
class tst_HeaderWords : public QObject
{
    Q_OBJECT
private slots:
    void commentIsRead_data();
    void commentIsRead();
    void onlyWhatFollowsACommentIsRead();
    void valuesAreNamed_data();
    void valuesAreNamed();
    void everyArgumentOfASignalHasWords();
    void everyOperationOfTheHostHasAMeaning();
    void callIsExplained_data();
    void callIsExplained();
};

void tst_HeaderWords::commentIsRead_data()
{
    QTest::addColumn<QString>("header");
    QTest::addColumn<QString>("brief");
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QString>("words");
    QTest::newRow("one line") << "/** Open doors. @param bits  bit 0 hood */ void f(int bits);"
                              << "Open doors"
                              << "bits"
                              << "bit 0 hood";
    QTest::newRow("several lines")
        << "/**\n     * Tires.\n     * @param flags  bit 0\n     *     "
           "left\n     * @param aux  not used\n     */\nvoid f(int, int);"
        << "Tires"
        << "flags"
        << "bit 0 left";
    QTest::newRow("next argument")
        << "/** T. @param flags  bit 0 @param aux  not used. */ void f();"
        << "T"
        << "aux"
        << "not used";
    QTest::newRow("two arguments share words")
        << "/** Fan. @param pressed, released  one of them is true */ void f(bool, bool);"
        << "Fan"
        << "released"
        << "one of them is true";
    QTest::newRow("result") << "/** A. @param a  one @return two */ int f(int a);"
                            << "A"
                            << "a"
                            << "one";
    QTest::newRow("code") << "/** As `g` is. */ void f();"
                          << "As g is"
                          << ""
                          << "";
}

void tst_HeaderWords::commentIsRead()
{
    QFETCH(QString, header);
    QFETCH(QString, argument);
    const MethodWords words = parseHeaderWords(header).value("f");
    QTEST(words.brief, "brief");
    QTEST(words.arguments.value(argument), "words");
}

void tst_HeaderWords::onlyWhatFollowsACommentIsRead()
{
    const auto words =
        parseHeaderWords("/** A class. */\nclass A {\npublic:\n    A();\n    /** It. "
                         "*/\n    Q_INVOKABLE\n    static A *f(const X<int> &a);\n"
                         "    void g();\n    /* not this */ void h();\n};");
    QCOMPARE(words.keys(), QStringList{"f"});
    QCOMPARE(words.value("f").brief, QString("It"));
}

void tst_HeaderWords::valuesAreNamed_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("described");
    const auto row = [](const char *name, const char *words, const QVariant &value,
                        const char *described) {
        QTest::newRow(name) << QString(words) << value << QString::fromUtf8(described);
    };
    row("value", "0 off, 1 on", 1, "1 on");
    row("unnamed value", "0 off, 1 on", 2, "2");
    row("other value", "0 off, any other value on", 7, "7 on");
    row("bits", "bit 0 hood, bit 1 trunk, bit 5 rear", 33, "33: hood, rear");
    row("no bit", "bit 0 hood, bit 1 trunk", 0, "0");
    row("range", "0 to 255", 1, "1");
    row("plain words", "the needle's position, 0 to 100", 1, "1");
    row("text", "the text to show", QString("a"), "\"a\"");
    row("list", "ten integers: 0 doors, 1 volts", QVariant::fromValue(QList<int>{4, 14, 9}),
        "doors 4, volts 14");
    row("short list", "0 doors, 1 volts", QVariant::fromValue(QList<int>{4}), "doors 4");
    row("empty list", "0 doors, 1 volts", QVariant::fromValue(QList<int>()), "[]");
    row("bytes", "two bytes: 0 zone, 1 level", QByteArray("\x05\xff"), "zone 5, level 255");
    row("texts", "by key: 0 first, 1 second", QStringList({"a", "b"}), "first a, second b");
}

void tst_HeaderWords::valuesAreNamed()
{
    QFETCH(QString, words);
    QFETCH(QVariant, value);
    QTEST(NamedValues::read(words, value.userType()).describe(value), "described");
}

void tst_HeaderWords::everyArgumentOfASignalHasWords()
{
    int arguments = 0;
    const QList<module::ModuleSignal> all = module::moduleSignals();
    for (const module::ModuleSignal &signal : all) {
        const MethodWords words = headerWords(QString::fromLatin1(signal.method.name()));
        QVERIFY2(!words.brief.isEmpty(), signal.method.methodSignature());
        const QList<QByteArray> names = signal.method.parameterNames();
        QCOMPARE(words.arguments.size(), names.size());
        for (const QByteArray &name : names) {
            const QString text = words.arguments.value(QString::fromLatin1(name));
            QVERIFY2(!text.isEmpty(), signal.method.methodSignature() + ' ' + name);
            ++arguments;
        }
    }
    QVERIFY(arguments > 80);
}

/** The operations that the host reports, as its sources have them. */
static QStringList reportedOperations()
{
    static const QRegularExpression report("CallLog::report\\(\\s*\"([^\"]+)\"");
    static const QRegularExpression command("void VtqAdaptor::(\\w+)\\([^)]*\\)\\s*\\{ send\\(");
    QStringList found;
    QDirIterator files(testpaths::source("host/src"), {"*.cpp"}, QDir::Files);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        const QString text = QString::fromUtf8(file.readAll());
        for (auto match = report.globalMatch(text); match.hasNext();)
            found.append(match.next().captured(1));
        for (auto match = command.globalMatch(text); match.hasNext();)
            found.append("norda::VtqAdaptor::" + match.next().captured(1));
    }
    return found;
}

void tst_HeaderWords::everyOperationOfTheHostHasAMeaning()
{
    const QStringList operations = reportedOperations();
    QVERIFY2(operations.size() > 100, qPrintable(QString::number(operations.size())));
    for (const QString &operation : operations) {
        for (const QVariantList &arguments : {QVariantList(), QVariantList{1, 1}})
            QVERIFY2(!meaningOfCall(operation, arguments).isEmpty(), qPrintable(operation));
    }
    QCOMPARE(meaningOfCall("some::Other::operation", {}), QString());
}

void tst_HeaderWords::callIsExplained_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QVariantList>("arguments");
    QTest::addColumn<QString>("meaning");
    const auto row = [](const char *operation, const QVariantList &arguments, const char *meaning) {
        QTest::newRow(meaning) << QString(operation) << arguments << QString(meaning);
    };
    row("norda::VtqAdaptor::gaugesSettings", {}, "Gauges: the screen's settings key was clicked");
    row("norda::VtqAdaptor::secoundrearZoneButton", {false, true},
        "Rear-zone key, second zone: released");
    row("mcu::McuService::setMixChannel", {63, 0},
        "Speakers: front left, front right, rear left, rear right, centre, subwoofer off");
    row("svaudio::AudioService::setMainAudioStatus", {21}, "Audio: a warning tone begins");
    row("cm::StatusBarControl::sethide", {true}, "Status bar: hidden");
    row("spplfctrl::SPPlatformControl::setVideoPath", {0, 256}, "Camera: split view");
    row("Translator::text", {252}, "Asks for a text: PageClimate");
    row("mem::SettingsCache::getValue", {"KEY", 0}, "Reads a shared value: KEY");
    row("cm::BaseWindow::onShow", {QByteArray()}, "Window shown");
}

void tst_HeaderWords::callIsExplained()
{
    QFETCH(QString, operation);
    QFETCH(QVariantList, arguments);
    QTEST(meaningOfCall(operation, arguments), "meaning");
}

NORDA_TEST_MAIN(tst_HeaderWords)
#include "tst_headerwords.moc"
