#include "benchfixture.h"
#include "panels/warningspanel.h"
#include "scenario/scenarioline.h"
#include "session/warnings.h"

#include <QAction>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>

#include <thread>
#include <vector>

enum Column { Time, Page, Count, Text };

/** The warnings of a run, from any thread, and the panel that shows them. */
class tst_WarningsPanel : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void warningIsShownWithPageAndTime();
    void equalTextsAreCounted();
    void warningsComeFromAnyThread();
    void warningsBeforeTheSessionAreShown();
    void differentTextsAreLimited();
    void longTextIsCut();
    void momentOfAWarningIsShown();
    void warningOfAnEarlierDriveHasNoMoment();
    void warningsAreFilteredAndCopied();
    void hiddenPanelTellsTheCount();

private:
    /** A warning that the test expects. */
    static void warn(const char *text, QtMsgType type = QtWarningMsg)
    {
        QTest::ignoreMessage(type, text);
        if (type == QtWarningMsg)
            qWarning("%s", text);
        else
            qCritical("%s", text);
    }
    int rows() const { return model("warnings")->rowCount(); }
    WarningsPanel *panel() const
    {
        return static_cast<WarningsPanel *>(find<QDockWidget>("warnings")->widget());
    }

    /** The time now, which stands still. */
    QString now() const { return QString::number(double(session()->nowMs()) / 1000, 'f', 3); }

    QScopedPointer<Warnings> m_warnings;
    int m_before = 0; // rows of the platform's own warnings
};

void tst_WarningsPanel::init()
{
    m_warnings.reset(new Warnings);
    makeBench();
    session()->drive()->pause();
    open("warnings");
    QCoreApplication::processEvents();
    m_before = m_warnings->entries().size();
    QTRY_COMPARE(rows(), m_before);
}

void tst_WarningsPanel::cleanup()
{
    removeBench();
    m_warnings.reset(); // gives the messages back
}

void tst_WarningsPanel::warningIsShownWithPageAndTime()
{
    windows()->openWindow(81);
    warn("doors: expected a byte");
    windows()->openWindow(82);
    warn("climate: expected 23 numbers", QtCriticalMsg);
    qInfo("no warning");
    QTRY_COMPARE(rows(), m_before + 2);
    QCOMPARE(cell("warnings", m_before, Text), QString("doors: expected a byte"));
    QCOMPARE(cell("warnings", m_before, Page), QString("Vehicle (81)"));
    QCOMPARE(cell("warnings", m_before, Time), now());
    QCOMPARE(cell("warnings", m_before, Count), QString("1"));
    QCOMPARE(cell("warnings", m_before + 1, Page), QString("Climate (82)"));
}

void tst_WarningsPanel::equalTextsAreCounted()
{
    for (int i = 0; i < 3; ++i)
        warn("the same");
    QTRY_COMPARE(rows(), m_before + 1);
    QCOMPARE(cell("warnings", m_before, Count), QString("3"));
    warn("the same");
    QTRY_COMPARE(cell("warnings", m_before, Count), QString("4"));
    QCOMPARE(rows(), m_before + 1);
    QVERIFY(model("warnings")
                ->index(m_before, Text)
                .data(Qt::ToolTipRole)
                .toString()
                .contains("4 times, from 0.000 s to 0.000 s."));
}

void tst_WarningsPanel::warningsComeFromAnyThread()
{
    static constexpr int each = 100;
    cleanup();
    // QtTest's own handler is for one thread.
    const QtMessageHandler strict =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    init();
    const int counted = Warnings::count();
    windows()->openWindow(83);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            for (int j = 0; j < each; ++j)
                qWarning("from a thread");
        });
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(Warnings::count(), counted + 4 * each);
    QTRY_COMPARE(rows(), m_before + 1);
    QCOMPARE(cell("warnings", m_before, Count), QString::number(4 * each));
    QCOMPARE(cell("warnings", m_before, Page), QString("Parking (83)"));
    cleanup();
    qInstallMessageHandler(strict);
}

void tst_WarningsPanel::warningsBeforeTheSessionAreShown()
{
    removeBench();
    warn("before the start");
    makeBench();
    open("warnings");
    QTRY_VERIFY(rowOf("warnings", "before the start", Text) >= 0);
}

void tst_WarningsPanel::differentTextsAreLimited()
{
    const int tooMany = Warnings::mostEntries + 7 - m_warnings->entries().size();
    for (int i = 0; i < tooMany; ++i)
        warn(qPrintable(QStringLiteral("different %1").arg(i)));
    QTRY_COMPARE(rows(), Warnings::mostEntries);
    QCOMPARE(m_warnings->notKept(), 7);
    const QString text = find<QLabel>("warnings-count")->text();
    QVERIFY2(text.endsWith("warnings, 7 of them not kept: the limit is 500 different texts"),
             qPrintable(text));
    QVERIFY(text.startsWith(QString::number(Warnings::count()) + ' '));
}

void tst_WarningsPanel::longTextIsCut()
{
    const QByteArray text(Warnings::longestText + 10, 'x');
    warn(text);
    QTRY_COMPARE(rows(), m_before + 1);
    QCOMPARE(cell("warnings", m_before, Text).size(), Warnings::longestText);
}

void tst_WarningsPanel::momentOfAWarningIsShown()
{
    warn("a moment");
    QTRY_COMPARE(rows(), m_before + 1);
    QSignalSpy moments(panel(), &WarningsPanel::momentRequested);
    auto *table = find<QTableView>("warnings");
    table->selectRow(m_before);
    emit table->doubleClicked(model("warnings")->index(m_before, Text));
    QTest::keyClick(table, Qt::Key_Return);
    table->findChild<QAction *>("go-to-moment")->trigger();
    QCOMPARE(moments.size(), 3);
    QCOMPARE(moments[0][0].toLongLong(), session()->nowMs());
    QVERIFY(find<QDockWidget>("timeline")->isVisible());
}

void tst_WarningsPanel::warningOfAnEarlierDriveHasNoMoment()
{
    warn("an earlier one");
    QTRY_COMPARE(rows(), m_before + 1);
    panel()->setSession(session());
    warn("an earlier one");
    QTRY_COMPARE(rows(), m_before + 2);
    QSignalSpy moments(panel(), &WarningsPanel::momentRequested);
    for (const int row : {m_before, m_before + 1})
        emit find<QTableView>("warnings")->doubleClicked(model("warnings")->index(row, Text));
    QCOMPARE(moments.size(), 1);
    QVERIFY(model("warnings")
                ->index(m_before, Text)
                .data(Qt::ToolTipRole)
                .toString()
                .contains("In an earlier drive."));
}

void tst_WarningsPanel::warningsAreFilteredAndCopied()
{
    windows()->openWindow(82);
    warn("status: got 3");
    warn("doors: got none");
    QTRY_COMPARE(rows(), m_before + 2);
    find<QLineEdit>("warnings-filter")->setText("3 CLIMATE");
    QCOMPARE(rows(), 1);
    QVERIFY(find<QLabel>("warnings-count")->text().startsWith("1 of "));
    auto *table = find<QTableView>("warnings");
    table->selectRow(0);
    const auto copied = [table](const char *action) {
        table->findChild<QAction *>(QLatin1String(action))->trigger();
        return QGuiApplication::clipboard()->text();
    };
    QCOMPARE(copied("copy-text"), now() + "\tClimate (82)\t1\tstatus: got 3");
    QCOMPARE(copied("copy-scenario"),
             timedLine(session()->nowMs(), "expect warning \"status: got 3\""));
    QCOMPARE(copied("copy-json"),
             QStringLiteral("{\"count\":1,\"page\":82,\"t\":%1,\"warning\":\"status: got 3\"}")
                 .arg(session()->nowMs()));
}

void tst_WarningsPanel::hiddenPanelTellsTheCount()
{
    find<QDockWidget>("warnings")->hide();
    QSignalSpy counts(panel(), &WarningsPanel::countChanged);
    warn("unseen");
    warn("unseen");
    QTRY_COMPARE(counts.size(), 1);
    QCOMPARE(counts[0][0].toInt(), Warnings::count());
}

NORDA_TEST_MAIN(tst_WarningsPanel)
#include "tst_warningspanel.moc"
