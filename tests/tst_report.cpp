#include "benchfixture.h"
#include "program.h"
#include "report/axis.h"
#include "report/chart.h"
#include "report/drivecollector.h"
#include "report/html.h"
#include "report/picturetrail.h"
#include "session/warnings.h"
#include "window/filecommands.h"

#include <QAction>
#include <QFileDialog>

#include <cmath>

/** The page about a drive or about scenarios; tests/report.py reads it in a browser. */
class tst_Report : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void driveIsTold();
    void pageNeedsNothingElse();
    void recordedTouchesHavePictures();
    void recordingWithoutQuantitiesHasCurves();
    void textsAreEscaped_data();
    void textsAreEscaped();
    void scenariosAreTold();
    void crashedScenarioIsTold();
    void windowSavesOne();
    void warningsAreOfThisDrive();
    void savingEndsARewind();
    void oldPageStaysWhereNoneCanBeWritten();
    void ticks_data();
    void ticks();
    void times_data();
    void times();
    void timeTicks_data();
    void timeTicks();
    void gapsStayOpen();
    void curveWithOneValue();

private:
    QString path(const QString &name) const { return m_folder.filePath(name); }
    QString write(const QString &name, const QByteArray &text) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("%s cannot be written", qPrintable(file.fileName()));
        return file.fileName();
    }
    static QString read(const QString &file)
    {
        QFile page(file);
        return page.open(QIODevice::ReadOnly) ? QString::fromUtf8(page.readAll()) : QString();
    }
    /** The page after a run with these arguments. */
    QString report(const QStringList &arguments, int exitCode = 0) const
    {
        const ProgramResult result =
            runProgram(QStringList{testpaths::benchFile(), "--headless", "--report", path("out"),
                                   "--gallery", path("gallery")} +
                       arguments);
        if (result.exitCode != exitCode)
            qWarning("exit code %d: %s", result.exitCode, qPrintable(result.err));
        return read(path("out/report.html"));
    }
    static QStringList all(const QString &page, const char *pattern)
    {
        QStringList found;
        auto matches = QRegularExpression(QLatin1String(pattern)).globalMatch(page);
        while (matches.hasNext())
            found.append(matches.next().captured(1));
        return found;
    }
    static QStringList captions(const QString &page)
    {
        return all(page, "<img [^>]* alt=\"([^\"]*)");
    }

    QTemporaryDir m_folder;
};

void tst_Report::driveIsTold()
{
    const QString page = report({"--duration", "110", "--fault", "silence:0.1"});
    QCOMPARE(all(page, "<h1>(.*)</h1>"), QStringList{"Simulated car"});
    QVERIFY(page.contains("<dt>Drive time</dt>\n<dd>1:50.0</dd>"));
    QVERIFY(page.contains("<dt>silence:0.1 (do not arrive)</dt>"));
    QVERIFY(page.contains("No warnings"));
    QCOMPARE(all(page, "<figcaption><b>(.*)</b>").mid(0, 2),
             (QStringList{"Vehicle speed", "Engine speed"}));
    QVERIFY(page.contains("<td>Warning tone begins, from rear right</td>"));
    QVERIFY(page.contains("Asks for the audio focus"));
    QCOMPARE(captions(page).constFirst(), QStringLiteral("opened Gauges (80)"));
    QCOMPARE(captions(page).constLast(), QStringLiteral("the end of the session"));
    QVERIFY(captions(page).size() >= 8);
}

/** Every picture is in the page, and nothing in it leads elsewhere. */
void tst_Report::pageNeedsNothingElse()
{
    const QString page = report({"--duration", "5"});
    const QStringList sources = all(page, "src=\"([^\"]*)");
    QVERIFY(!sources.isEmpty());
    for (const QString &source : sources) {
        const QByteArray png = QByteArray::fromBase64(source.section(',', 1).toLatin1());
        QCOMPARE(source.section(',', 0, 0), QStringLiteral("data:image/png;base64"));
        QCOMPARE(QImage::fromData(png).size(), QSize(640, 360));
    }
    for (const QString &link : all(page, "href=\"([^\"]*)"))
        QVERIFY2(link.startsWith("#t="), qPrintable(link));
    QVERIFY(!page.contains("<link"));
    QVERIFY(!page.contains("@import"));
    QVERIFY(page.contains("default-src &#39;none&#39;"));
}

void tst_Report::recordedTouchesHavePictures()
{
    const QString scenario = write("touch.scenario", "0 page 82\n2 touch key_rear\n"
                                                     "4 page 84\n+0 expect page 84\n");
    const ProgramResult recorded =
        runProgram({testpaths::benchFile(), "--script", scenario, "--record", path("touch.jsonl")});
    QVERIFY2(recorded.exitCode == 0, qPrintable(recorded.err));
    const QString page = report({"--source", path("touch.jsonl")});
    QVERIFY2(captions(page).contains("touch key_rear"), qPrintable(captions(page).join(" | ")));
    QVERIFY(!captions(page).filter("opened Settings (84)").isEmpty());
}

void tst_Report::recordingWithoutQuantitiesHasCurves()
{
    const ProgramResult recorded = runProgram({testpaths::benchFile(), "--headless", "--duration",
                                               "20", "--record", path("drive.jsonl")});
    QVERIFY2(recorded.exitCode == 0, qPrintable(recorded.err));
    const QString page = report({"--source", path("drive.jsonl")});
    QVERIFY(!all(page, "<figcaption><b>(.*)</b>").isEmpty());
    QVERIFY(!all(page, "<path d=\"(M[^\"]+)\"").isEmpty());
}

void tst_Report::textsAreEscaped_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("written");
    QTest::newRow("element") << "<script>alert(1)</script>"
                             << "&lt;script&gt;alert(1)&lt;/script&gt;";
    QTest::newRow("entity") << "a &lt; b"
                            << "a &amp;lt; b";
    QTest::newRow("quotes") << "\" onload='x'"
                            << "&quot; onload=&#39;x&#39;";
    QTest::newRow("letters") << QStringLiteral("Grüße, 東京") << QStringLiteral("Grüße, 東京");
}

/** In texts and in attributes: a line of a scenario is both in its page. */
void tst_Report::textsAreEscaped()
{
    QFETCH(QString, title);
    QFETCH(QString, written);
    Html html;
    html.element("p", title, {{"title", title}});
    QCOMPARE(QString::fromUtf8(html.page()),
             QStringLiteral("<p title=\"%1\">%1</p>\n").arg(written));
    const QByteArray quoted = QString(title).replace('"', "\\\"").toUtf8();
    const QString scenario =
        write("own.scenario", "scenario \"" + quoted + "\"\n0 expect page 80\n");
    const QString page = report({"--script", scenario});
    QCOMPARE(all(page, "<h3>(.*)</h3>"), QStringList{written});
}

void tst_Report::scenariosAreTold()
{
    QDir(m_folder.path()).mkpath("suite");
    write("suite/a.scenario", "0 page 82\nexpect page 82\nexpect key_rear visible\n"
                              "expect no call doBeep\n");
    write("suite/b.scenario", "0 page 82\n1 touch key_rear\nexpect page 81\n+1 page 83\n");
    const QString page = report({"--script", path("suite")}, 1);
    QVERIFY(page.contains("1 passed"));
    QVERIFY(page.contains("1 failed"));
    QCOMPARE(all(page, "<details ([^>]*)>"),
             (QStringList{"class=\"panel\"", "class=\"panel\" open=\"\""}));
    QVERIFY(page.contains("as expected: Climate (82)"));
    QVERIFY(!page.contains("it is not"));
    QCOMPARE(page.count(">as expected</td>"), 2);
    QVERIFY(page.contains("b.scenario:3: expected page 81, seen: Climate (82)"));
    QCOMPARE(captions(page), (QStringList{"Before the last action", "At the failure in line 3"}));
    QCOMPARE(all(page, "<code>(page 83)</code>").size(), 1); // what follows a failure is done
    const QStringList sources = all(page, "src=\"([^\"]*)");
    QVERIFY(sources[0] != sources[1]);
}

/** The process is gone with its steps; the page has the line about it. */
void tst_Report::crashedScenarioIsTold()
{
    const QString scenario = write("crash.scenario", "0 expect page 80\n");
    const QString page = report(
        {"--plugin", testpaths::brokenPlugin("CRASH_IN_CONSTRUCTOR"), "--script", scenario}, 1);
    QVERIFY2(page.contains("expected to go on, it crashed"), qPrintable(page.right(2000)));
}

void tst_Report::windowSavesOne()
{
    const Warnings warnings;
    makeBench(QStringLiteral("simulator"));
    QString error;
    QVERIFY(m_rig->actions()->openPage(VehiclePage, &error));
    QTest::ignoreMessage(QtWarningMsg, "a <warning>");
    qWarning("a <warning>");
    const QString file = path("window.html");
    QVERIFY2(m_window->files()->saveReport(file, *m_window->pictureTrail(), &error),
             qPrintable(error));
    const QString page = read(file);
    QVERIFY(captions(page).constLast().contains("opened Vehicle (81)"));
    QVERIFY(page.contains("a &lt;warning&gt;"));
    QVERIFY(!m_window->files()->saveReport(path("none/window.html"), *m_window->pictureTrail(),
                                           &error));
    QVERIFY2(error.startsWith(path("none/window.html") + ": "), qPrintable(error));
    removeBench();
}

/** And from before the first one, such as a plugin's at start. */
void tst_Report::warningsAreOfThisDrive()
{
    const auto warn = [](const char *text) {
        QTest::ignoreMessage(QtWarningMsg, text);
        qWarning("%s", text);
    };
    const Warnings warnings;
    warn("at start");
    makeBench();
    warn("of the first drive");
    m_window->openDrive(QStringLiteral("simulator"));
    warn("of the second drive");
    warn("of the second drive");
    const DriveReport report = reportOn(m_rig.data(), *m_window->pictureTrail());
    QMap<QString, int> listed;
    int all = 0; // with those of the platform's plugin
    for (const DriveReport::Event &warning : report.warnings) {
        listed.insert(warning.text, warning.count);
        all += warning.count;
    }
    QCOMPARE(listed.value("at start"), 1);
    QCOMPARE(listed.value("of the first drive"), 0);
    QCOMPARE(listed.value("of the second drive"), 2);
    QCOMPARE(report.warningCount, all);
    removeBench();
}

/** Its last picture is of the present. */
void tst_Report::savingEndsARewind()
{
    makeBench(QStringLiteral("simulator"));
    QTRY_VERIFY(session()->drive()->positionMs() > 500);
    find<QAction>("previous")->trigger();
    QVERIFY(session()->isRewound());
    QTimer::singleShot(0, m_window.data(), [this] {
        auto *dialog = m_window->findChild<QFileDialog *>();
        QVERIFY(dialog);
        dialog->reject();
    });
    find<QAction>("save-report")->trigger();
    QVERIFY(!session()->isRewound());

    find<QAction>("previous")->trigger();
    QVERIFY(session()->isRewound());
    m_window->close(); // --report writes it now
    QVERIFY(!session()->isRewound());
    removeBench();
}

void tst_Report::oldPageStaysWhereNoneCanBeWritten()
{
    QDir(m_folder.path()).mkpath("kept/report.html");
    const ProgramResult result = runProgram(
        {testpaths::benchFile(), "--headless", "--duration", "1", "--report", path("kept")});
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.err.trimmed().count('\n'), 0);
    QVERIFY(QFileInfo(path("kept/report.html")).isDir());
}

void tst_Report::ticks_data()
{
    QTest::addColumn<double>("lowest");
    QTest::addColumn<double>("highest");
    QTest::addColumn<QString>("texts");
    QTest::newRow("speed") << 0.0 << 148.0 << "0 50 100";
    QTest::newRow("below zero") << -1.4 << 6.4 << "0 2 4 6";
    QTest::newRow("fractions") << 13.81 << 14.12 << "13.9 14.0 14.1";
    QTest::newRow("small") << 0.0 << 0.004 << "0.000 0.001 0.002 0.003 0.004";
    QTest::newRow("large") << 0.0 << 2.4e6 << "0 1000000 2000000";
}

void tst_Report::ticks()
{
    QFETCH(double, lowest);
    QFETCH(double, highest);
    const Ticks found = ticksOf(lowest, highest, 5);
    QStringList texts;
    for (const double value : found.values)
        texts.append(tickText(value, found.step));
    QTEST(texts.join(' '), "texts");
}

void tst_Report::times_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<double>("step");
    QTest::addColumn<QString>("text");
    QTest::newRow("start") << 0.0 << 1.0 << "0:00";
    QTest::newRow("seconds") << 7.0 << 1.0 << "0:07";
    QTest::newRow("fraction") << 7.25 << 0.001 << "0:07.250";
    QTest::newRow("minutes") << 600.0 << 60.0 << "10:00";
    QTest::newRow("hours") << 3723.0 << 1.0 << "1:02:03";
    QTest::newRow("rounded up to a minute") << 59.9996 << 0.001 << "1:00.000";
}

void tst_Report::times()
{
    QFETCH(double, seconds);
    QFETCH(double, step);
    QTEST(timeTickText(seconds, step), "text");
}

void tst_Report::timeTicks_data()
{
    QTest::addColumn<double>("end");
    QTest::addColumn<QString>("texts");
    QTest::newRow("a moment") << 0.001
                              << "0:00.0000 0:00.0002 0:00.0004 0:00.0006 0:00.0008 0:00.0010";
    QTest::newRow("seconds") << 20.0 << "0:00 0:05 0:10 0:15 0:20";
    QTest::newRow("ten minutes") << 600.0 << "0:00 2:00 4:00 6:00 8:00 10:00";
    QTest::newRow("hours") << 20000.0 << "0:00 1:00:00 2:00:00 3:00:00 4:00:00 5:00:00";
}

void tst_Report::timeTicks()
{
    QFETCH(double, end);
    const Ticks found = timeTicksOf(0, end, 7);
    QStringList texts;
    for (const double value : found.values)
        texts.append(timeTickText(value, found.step));
    QTEST(texts.join(' '), "texts");
}

void tst_Report::gapsStayOpen()
{
    Html html;
    writeChart(&html, {"Speed", "km/h", 0, 10, {{1, 5}, {2, 7}, {3, std::nan("")}, {6, 4}}});
    QCOMPARE(all(QString::fromUtf8(html.page()), "<path d=\"([^\"]*)\""),
             QStringList{"M1 5H2V7H3M6 4H10"});
}

void tst_Report::curveWithOneValue()
{
    for (const QVector<QPointF> &points : {QVector<QPointF>(), {{0, 3}}, {{0, std::nan("")}}}) {
        Html html;
        writeChart(&html, {"Speed", "km/h", 0, 1, points});
        const QString chart = QString::fromUtf8(html.page());
        QVERIFY2(!chart.contains("nan") && !chart.contains("inf"), qPrintable(chart));
        QVERIFY(all(chart, "class=\"value\">([^<]*)").size() >= 2);
    }
}

NORDA_TEST_MAIN(tst_Report)
#include "tst_report.moc"
