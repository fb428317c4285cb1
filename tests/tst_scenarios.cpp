#include "pages.h"
#include "program.h"
#include "testmain.h"
#include "testpaths.h"

#include <QXmlStreamReader>

static QString pageIds()
{
    QStringList ids;
    for (const Page &page : pages)
        ids.append(QString::number(page.window));
    return ids.join(QStringLiteral(", "));
}

/** Scenarios as their author meets them: what is refused, what fails and how it is told. */
class tst_Scenarios : public QObject
{
    Q_OBJECT
private slots:
    void shippedOnesPass();
    void unusable_data();
    void unusable();
    void namesWithPercentSigns();
    void fails_data();
    void fails();
    void passes_data();
    void passes();
    void unusableDrive();
    void noScratchFolder();
    void crashIsOneFailure();
    void nothingIsLeftForTheNext();
    void picturesOfFailures();
    void picturesWithoutAGallery();
    void report();

private:
    QString write(const QString &name, const QByteArray &text) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("%s cannot be written", qPrintable(file.fileName()));
        return file.fileName();
    }
    QString path(const QString &name) const { return m_folder.filePath(name); }
    ProgramResult play(const QStringList &arguments) const
    {
        return runProgram(
            QStringList{testpaths::benchFile(), "--gallery", path("pictures")} + arguments, 500);
    }

    QTemporaryDir m_folder;
};

void tst_Scenarios::shippedOnesPass()
{
    const ProgramResult result = play({"--script", testpaths::source("bench/scenario/library")});
    QVERIFY2(result.exitCode == 0, qPrintable(result.out + result.err));
    const QStringList lines = result.out.split(QLatin1Char('\n'));
    QVERIFY(lines.filter(QRegularExpression("^pass ")).size() >= 25);
    QVERIFY(lines.contains(QStringLiteral("%1 passed, 0 failed")
                               .arg(lines.filter(QRegularExpression("^pass ")).size())));
}

void tst_Scenarios::unusable_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("message"); // behind the file's name
    const auto row = [](const char *name, const char *text, const char *message) {
        QTest::newRow(name) << QByteArray(text) << QString(message);
    };
    row("empty", "", "expected a scenario that expects something, found none");
    row("expects nothing", "0 page 81\n", "expected a scenario that expects something, found none");
    row("unknown heading", "title X\n",
        "line 1: expected scenario, source, dbc, map, trim, language, seed, fault or "
        "allow-warnings, got 'title'");
    row("no DBC file", "dbc nowhere.dbc\n+0 expect page 80\n",
        "line 1: expected a DBC file, found no file 'nowhere.dbc'");
    row("no map", "map nowhere.json\n+0 expect page 80\n",
        "line 1: expected a map, found no file 'nowhere.json'");
    row("heading without a value", "\n# remark\nsource\n",
        "line 3: expected a time, or scenario, source, dbc, map, trim, language, seed or fault "
        "with a value, or allow-warnings, got 'source'");
    row("no such drive", "source nowhere.jsonl\n",
        "line 1: expected none, simulator or a recorded drive, found no file 'nowhere.jsonl'");
    row("trim", "trim sports\n", "line 1: expected full, no-rear or manual, got 'sports'");
    row("language", "language xx\n", "line 1: expected 'en', 'de', 'fr' or 'es', got 'xx'");
    row("changed language", "0 language xx\n",
        "line 1: expected 'en', 'de', 'fr' or 'es' after 'language'");
    row("seed", "seed x\n", "line 1: expected a seed from 0 to 4294967295, got 'x'");
    row("seed with a fraction", "seed 1.5\n",
        "line 1: expected a seed from 0 to 4294967295, got '1.5'");
    row("fault", "fault silence:2\n",
        "line 1: expected silence with a number from 0 to 1, got '2'");
    row("open text", "0 signal batteryVoltage \"12\n",
        "line 1: expected a text, list or object, got \"12");
    row("no list", "0 signal gaugeTitlesNotify [1,,2]\n",
        "line 1: expected a text, list or object, got [1,,2]");
    row("time alone", "0.5\n", "line 1: expected an action or an expectation after the time");
    row("back in time", "2 page 81\n1 page 80\n",
        "line 2: expected a time of 2 s or later, up to a day, got 1");
    row("too late", "1e9 page 81\n",
        "line 1: expected a time of 0 s or later, up to a day, got 1e+09");
    row("too late by a step", "2 page 81\n+1e12 page 81\n",
        "line 2: expected a time of 2 s or later, up to a day, got +1e12");
    row("unknown action", "0 fly\n",
        "line 1: expected one of expect, wait, picture, page, back, split, key, touch, press, "
        "move, release, signal, host, invoke, car, fault, focus, language, seek, got 'fly'");
    row("page", "0 page gauges\n", "line 1: expected the number of a page after 'page'");
    row("back", "0 back 1\n", "line 1: expected nothing after 'back'");
    row("touch", "0 touch\n",
        "line 1: expected a widget, a widget and a place in it, or a place after 'touch'");
    row("move", "0 move key\n", "line 1: expected a place on the screen after 'move'");
    row("signal", "0 signal doorOpen 1\n",
        "line 1: expected a signal of the module, got 'doorOpen'");
    row("argument missing", "0 signal doorStatus\n",
        "line 1: expected doorStatus with 1 arguments, got 0");
    row("byte", "0 signal doorStatus 256\n",
        "line 1: argument 1 of doorStatus: expected a number from 0 to 255");
    row("text", "0 signal batteryVoltage 12\n",
        "line 1: argument 1 of batteryVoltage: expected a text");
    row("bytes", "0 signal parkingDistanceRear \"7\"\n",
        "line 1: argument 1 of parkingDistanceRear: expected bytes as a hex text or null");
    row("texts", "0 signal gaugeTitlesNotify [1]\n",
        "line 1: argument 1 of gaugeTitlesNotify: expected a list of texts");
    row("host object", "0 host Radio play\n",
        "line 1: expected an object of the host, got 'Radio'");
    row("host method", "0 host AudioManager play\n",
        "line 1: expected a method of AudioManager with 0 arguments, got 'play'");
    row("method of every object", "0 host AudioManager deleteLater\n",
        "line 1: expected a method of AudioManager with 0 arguments, got 'deleteLater'");
    row("its private slot", "0 host AudioManager _q_reregisterTimers null\n",
        "line 1: expected a method of AudioManager with 1 arguments, got '_q_reregisterTimers'");
    row("host map", "0 host norda::VtqService setParkingAssistZones {\"1\": \"x\"}\n",
        "line 1: argument 1 of setParkingAssistZones: expected an object of true or false by "
        "number");
    row("control", "0 car wing open\n", "line 1: expected one of engine, speed, engine-speed, ");
    row("control's value", "0 car hood 1\n",
        "line 1: expected hood with closed, open or auto, got '1'");
    row("focus", "0 focus maybe\n", "line 1: expected 'granted' or 'refused' after 'focus'");
    row("seek", "0 seek -1\n", "line 1: expected a time in seconds after 'seek'");
    row("wait", "0 wait 11\n", "line 1: expected up to 10 seconds after 'wait'");
    row("wait back", "0 wait -1\n", "line 1: expected up to 10 seconds after 'wait'");
    row("picture", "0 picture a/b\n", "line 1: expected a name without a folder after 'picture'");
    row("expected page", "0 expect page\n", "line 1: expected the number of a page after 'page'");
    row("expected camera", "0 expect camera open\n",
        "line 1: expected shown, split or hidden after 'camera'");
    row("expected signal", "0 expect signal doorOpen\n",
        "line 1: expected a signal and, if they matter, its arguments after 'signal'");
    row("expected no", "0 expect no page\n",
        "line 1: expected call, signal or sound with what must not have been after 'no'");
    row("expected widget", "0 expect key_P1\n",
        "line 1: expected a widget with visible, hidden, enabled, disabled, checked, unchecked, or "
        "a property and its value");
}

void tst_Scenarios::unusable()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, message);
    const QString file = write("bad.scenario", text);
    const ProgramResult result = play({"--script", file});
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.out, QString());
    const QString wanted = file + QStringLiteral(": ") + message;
    QVERIFY2(result.err.contains(wanted), qPrintable(result.err + "\nwanted: " + wanted));
    QCOMPARE(result.err.count(QLatin1Char('\n')), 1);
}

// They look like the places of a message's values.
void tst_Scenarios::namesWithPercentSigns()
{
    const QString unusable = write("b%2%1.scenario", "bogus %3 %1\n");
    const ProgramResult refused = play({"--script", unusable});
    QCOMPARE(refused.exitCode, 2);
    QVERIFY2(refused.err.startsWith(unusable + ": line 1: expected "), qPrintable(refused.err));

    const QString failing = write("f%3%2%1.scenario", "source none\n0 expect page 81\n");
    const ProgramResult failed = play({"--script", failing});
    QCOMPARE(failed.exitCode, 1);
    QVERIFY2(failed.out.contains(failing + ":2: expected page 81"), qPrintable(failed.out));
    QVERIFY2(QFile::exists(path("pictures/f%3%2%1-line-2.png")), qPrintable(failed.out));
}

void tst_Scenarios::fails_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("message"); // behind the file's name and line
    const auto row = [](const char *name, const char *text, const char *message) {
        QTest::newRow(name) << QByteArray(text) << QString(message);
    };
    row("page", "0 page 81\nexpect page 82\n", "2: expected page 82, seen: Vehicle (81)");
    row("no such page", "0 page 99\nexpect page 80\n",
        qPrintable(QStringLiteral("1: expected a page of the plugin (%1), got 99").arg(pageIds())));
    row("camera", "0 expect camera split\n", "1: expected camera split, seen: hidden");
    row("call", "0 page 81\nexpect call vehicleSettings\n",
        "2: expected call vehicleSettings, seen: ");
    row("arguments of a call", "0 touch norda_key_about\nexpect call NordaData_Request 13\n",
        "2: expected call NordaData_Request 13, seen: ");
    row("order of calls", "0 page 81\nexpect call onEnter\nexpect call onShow\n",
        "3: expected call onShow, seen: ");
    row("a call that must not be", "0 page 81\nexpect no call requestVehicleInfo\n",
        "2: expected no call requestVehicleInfo, seen: norda::VtqAdaptor::requestVehicleInfo");
    row("signal", "0 signal doorStatus 4\nexpect signal doorStatus 5\n",
        "2: expected signal doorStatus 5, seen: doorStatus 4");
    row("sound", "0 expect sound beep\n", "1: expected sound beep, seen: none");
    row("no such widget", "0 expect key_nowhere visible\n",
        "1: expected key_nowhere visible, seen: no such widget");
    row("state", "0 expect Txt_ready hidden\n", "1: expected Txt_ready hidden, seen: it is not");
    row("text", "0 signal gauTopBarTextNotify \"a\"\nexpect Txt_fork text \"b\"\n",
        "2: expected Txt_fork text b, seen: \"a\"");
    row("part of a text", "0 signal gauTopBarTextNotify \"abc\"\nexpect Txt_fork text contains x\n",
        "2: expected Txt_fork text contains x, seen: \"abc\"");
    row("no such property", "0 expect Txt_fork speed 3\n",
        "1: expected Txt_fork speed 3, seen: no such property");
    row("image", "0 page 83\nexpect bkg_car image \":/none.png\"\n",
        "2: expected bkg_car image :/none.png, seen: :/icon/");
    row("hidden key", "0 touch key_settings\nexpect page 80\n",
        "1: expected 'key_settings' on the screen, it is hidden");
    row("no key", "0 touch key_x\nexpect page 80\n",
        "1: expected 'key_x' on the screen, found no such widget");
    row("covered key", "0 page 83\n1 touch key_camera\n2 touch key_camera\nexpect page 83\n",
        "3: expected to reach 'key_camera', 'CameraView#0' lies over it");
    row("beside the screen", "0 touch 2000 10\nexpect page 80\n",
        "1: expected a place on the screen of 1280 x 720");
    row("release", "0 release\nexpect page 80\n", "1: expected a press before");
    row("car of a recording", "0 car hood open\nexpect page 80\n",
        "1: expected the simulated car, this drive cannot be changed");
    row("method of a widget", "0 invoke page flyAway\nexpect page 80\n",
        "1: expected a method of page with 0 arguments, got 'flyAway'");
    row("method of every widget", "0 invoke page deleteLater\nexpect page 80\n",
        "1: expected a method of page with 0 arguments, got 'deleteLater'");
    row("warning", "0 expect warning short\n", "1: expected warning short, seen: none");
}

void tst_Scenarios::fails()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, message);
    const QString file = write("failing.scenario", text);
    const ProgramResult result = play({"--script", file});
    QCOMPARE(result.exitCode, 1);
    const QString wanted = file + QStringLiteral(":") + message;
    QVERIFY2(result.out.contains(wanted), qPrintable(result.out + "\nwanted: " + wanted));
    QVERIFY(result.out.startsWith(QStringLiteral("FAIL  failing.scenario: failing\n")));
    QVERIFY(result.out.endsWith(QStringLiteral("0 passed, 1 failed\n")));
}

void tst_Scenarios::passes_data()
{
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char *name, const char *text) {
        QTest::newRow(name) << QByteArray(text);
    };
    row("times and remarks", "# a\n0.5 page 81 # b\n+0.5 page 82\n\n+0 expect page 82\n");
    row("hexadecimal", "0 page 81\nsignal doorStatus 0x3F\nexpect icon_hood visible\n");
    row("any argument", "0 touch norda_key_about\nexpect call TouchEvent 92 * *\n");
    row("whole name", "0 page 81\nexpect call norda::VtqAdaptor::requestVehicleInfo\n");
    row("a place", "0 touch norda_key_about 5 5\nexpect page 85\n");
    row("press and slide off", "0 press norda_key_about\nmove 640 300\nrelease\nexpect page "
                               "80\nexpect no call TouchEvent\n");
    row("text that looks like a number", "0 signal centerGaugeValueNotify \"700\" RPM 7\nexpect "
                                         "Txt_center_value text \"700 RPM\"\n");
    row("null bytes", "0 page 83\nsignal parkingDistanceFront null\nexpect warning \"parking\"\n");
    row("warnings allowed", "allow-warnings\n0 page 83\nsignal parkingDistanceFront null\n"
                            "expect page 83\n");
    row("seek", "source simulator\n1 seek 500\nexpect Txt_fork text contains \"mph\"\n");
    row("late start", "source simulator\nfault late-start:3\n2 expect Txt_fork text \"\"\n"
                      "4 expect Txt_fork text contains \"mph\"\n");
    row("fault underway", "source simulator\n1 fault silence:1\n2 expect no signal "
                          "batteryVoltage\n3 fault none\n5 expect signal batteryVoltage\n");
    row("language", "language fr\n0 page 82\nexpect Txt_rear text \"Arrière\"\n");
    row("English without it", "0 page 82\nexpect Txt_rear text Rear\n");
    row("language underway", "0 page 81\nlanguage de\npage 82\nexpect Txt_rear text Hinten\n"
                             "expect camera hidden\n");
    row("trim", "source simulator\ntrim no-rear\n0 page 82\n1 touch key_rear\n"
                "invoke page onSecondCliTopBarTextNotify x\n"
                "expect key_left_seat_heat_2 hidden\n");
}

void tst_Scenarios::passes()
{
    QFETCH(QByteArray, text);
    const ProgramResult result = play({"--script", write("passing.scenario", text)});
    QVERIFY2(result.exitCode == 0, qPrintable(result.out + result.err));
}

/** It cannot be played, which is no failure of an expectation. */
void tst_Scenarios::unusableDrive()
{
    write("noise.txt", "noise\n");
    const ProgramResult result =
        play({"--script", write("noise.scenario", "source noise.txt\n0 expect page 80\n")});
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.out, QStringLiteral("0 passed, 1 failed\n"));
    QVERIFY2(result.err.contains("noise.txt: line 1: expected "), qPrintable(result.err));
    QCOMPARE(result.err.count(QLatin1Char('\n')), 1);
}

/** Without a folder for what the plugin keeps, the user's own would be used. */
void tst_Scenarios::noScratchFolder()
{
    const QString file = write("keeps.scenario", "0 host mem::SettingsFunc setValue Kept 0 5 true\n"
                                                 "expect page 80\n");
    const ProgramResult result =
        runProgram({"env", "TMPDIR=/nonexistent", "NORDA_HOST_ROOT=" + path("user"),
                    testpaths::benchFile(), "--script", file});
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.out, QStringLiteral("0 passed, 1 failed\n"));
    QVERIFY2(result.err.startsWith("/nonexistent: expected a place for a temporary folder: "),
             qPrintable(result.err));
    QCOMPARE(result.err.count(QLatin1Char('\n')), 1);
    QVERIFY(!QFile::exists(path("user")));
}

void tst_Scenarios::crashIsOneFailure()
{
    const QString file = write("crash.scenario", "0 expect page 80\n");
    const ProgramResult result = play({"--script", file, "--script", file, "--plugin",
                                       testpaths::brokenPlugin("CRASH_IN_CONSTRUCTOR")});
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.out.count(QStringLiteral("FAIL  crash.scenario")), 2);
    QVERIFY2(result.out.contains(file + ": expected "), qPrintable(result.out));
}

void tst_Scenarios::nothingIsLeftForTheNext()
{
    const QString first = write("1.scenario", "0 page 83\nsplit\nfocus refused\n"
                                              "touch key_camera\nexpect camera split\n");
    const QString second =
        write("2.scenario", "source simulator\n0 page 83\ntouch key_camera\nexpect camera shown\n"
                            "car prompt information\n2 expect sound \"the music ducks\"\n");
    const ProgramResult result = play({"--script", first, "--script", second});
    QVERIFY2(result.exitCode == 0, qPrintable(result.out + result.err));
}

void tst_Scenarios::picturesOfFailures()
{
    const QString file = write("seen.scenario", "0 page 81\npicture asked-for\nexpect page 80\n");
    const ProgramResult result = play({"--script", file});
    QCOMPARE(result.exitCode, 1);
    for (const char *name : {"asked-for", "seen-line-3"}) {
        const QImage picture(path(QStringLiteral("pictures/%1.png").arg(QLatin1String(name))));
        QCOMPARE(picture.size(), QSize(1280, 720));
    }
    QVERIFY(result.out.contains(QStringLiteral("picture: ") + path("pictures/seen-line-3.png")));
}

/** Without a folder for them only failures leave pictures, where the bench was called. */
void tst_Scenarios::picturesWithoutAGallery()
{
    const auto playHere = [this](const char *text) {
        const QString file = write("here.scenario", text);
        return runProgram({"sh", "-c", "cd \"$0\" && exec \"$1\" --script \"$2\"", m_folder.path(),
                           testpaths::benchFile(), file});
    };
    QCOMPARE(playHere("0 picture asked\nexpect page 80\n").exitCode, 0);
    QVERIFY(!QFile::exists(path("scenario-failures")));
    QCOMPARE(playHere("0 picture asked\nexpect page 81\n").exitCode, 1);
    QCOMPARE(QDir(path("scenario-failures")).entryList(QDir::Files),
             QStringList{"here-line-2.png"});
}

void tst_Scenarios::report()
{
    QDir(m_folder.path()).mkpath("both");
    write("both/a.scenario", "scenario \"It is <there> & \\\"here\\\"\"\n0 expect page 80\n");
    write("both/b.scenario", "0 expect page 81\n");
    const ProgramResult result = play({"--script", path("both"), "--junit", path("report.xml")});
    QCOMPARE(result.exitCode, 1);
    QFile file(path("report.xml"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    QStringList seen;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes of = xml.attributes();
        if (xml.name() == QLatin1String("testsuite"))
            seen.append(of.value("tests").toString() + "/" + of.value("failures").toString());
        else if (xml.name() == QLatin1String("testcase"))
            seen.append(of.value("classname").toString() + ": " + of.value("name").toString());
        else
            seen.append(of.value("message").toString().section(QLatin1Char('/'), -1));
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QCOMPARE(seen, (QStringList{"2/1", "a: It is <there> & \"here\"", "b: b",
                                "b.scenario:1: expected page 81, seen: Gauges (80)"}));
}

NORDA_TEST_MAIN(tst_Scenarios)
#include "tst_scenarios.moc"
