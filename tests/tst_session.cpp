#include "benchfixture.h"
#include "panels/timelineview.h"
#include "session/rewind.h"
#include "tools/imagenames.h"

#include <QLabel>
#include <QSlider>
#include <QToolButton>

using norda::VtqAdaptor;

/** A session at the bench: played, rewound, kept and remembered. */
class tst_Session : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void init()
    {
        m_options = Options();
        makeBench();
    }
    void cleanup() { removeBench(); }

    void callLeadsToItsMoment();
    void screenAsItWas();
    void whatCameInPartsAsItWas();
    void lineZoomsAndMoves();
    void panelsAreRemembered();
    void journalShowsWhatWasDropped();
    void windowPlaysAndSeeks();
    void modifiersAreNoKeys_data();
    void modifiersAreNoKeys();
};

enum CallColumn { Time, Operation, Meaning, Arguments };

void tst_Session::callLeadsToItsMoment()
{
    open("timeline");
    open("calls");
    windows()->openWindow(81);
    auto *table = find<QTableView>("calls");
    QTRY_VERIFY(rowOf("calls", "requestVehicleInfo", Operation) >= 0);
    const QModelIndex index =
        model("calls")->index(rowOf("calls", "requestVehicleInfo", Operation), Operation);
    table->scrollTo(index);
    emit table->doubleClicked(index);
    QVERIFY(session()->isRewound());
    QVERIFY(!find<TimelineView>("timeline")->follows());
    QTest::mouseClick(find<QToolButton>("live"), Qt::LeftButton);
    QVERIFY(!session()->isRewound());
}

void tst_Session::screenAsItWas()
{
    makeBench("simulator");
    open("timeline");
    module::Drive *drive = session()->drive();
    Journal *journal = session()->journal();
    drive->setSpeed(100);
    QTRY_VERIFY(journal->totalOf(Journal::Signal, "centerGaugeValueNotify") &&
                drive->positionMs() > 12000);
    click("norda_key_vehicle");
    QTRY_VERIFY(drive->positionMs() > 30000);
    QVERIFY(screen()->widgetNamed("icon_door_front_left")->isHidden());

    // The module speaks for a moment.
    norda::VtqService *service = norda::VtqService::instance();
    emit service->audioInterruptNotify(4, 19);
    QCOMPARE(audio()->voice(), AudioStage::WarningTone);
    const qint64 spoken = session()->nowMs();
    QTRY_VERIFY(session()->nowMs() > spoken + 500);
    emit service->audioInterruptNotify(0, 0);
    QCOMPARE(audio()->voice(), AudioStage::Silent);

    // At 2 s the driver's door was open, and the gauges were on the screen.
    auto *line = find<TimelineView>("timeline");
    line->setRange(0, 40000);
    QTest::mouseClick(line, Qt::LeftButton, {}, QPoint(line->xAt(2000), line->height() / 2));
    QVERIFY(!drive->isPlaying());
    QCOMPARE(windows()->currentWindow(), 80);
    QCOMPARE(text("Txt_center_value"), QStringLiteral("0 RPM"));
    const qint64 known = journal->total();
    emit line->momentRequested(spoken + 100);
    QCOMPARE(audio()->voice(), AudioStage::Silent); // what is past is seen and not heard
    // Along the scale, the screen follows the pointer.
    QTest::mousePress(line, Qt::LeftButton, {}, QPoint(line->xAt(3000), 5));
    for (const int ms : {10000, 20000, 29000}) {
        QMouseEvent move(QEvent::MouseMove, QPoint(line->xAt(ms), 5), Qt::NoButton, Qt::LeftButton,
                         {});
        QCoreApplication::sendEvent(line, &move);
    }
    QTest::mouseRelease(line, Qt::LeftButton, {}, QPoint(line->xAt(29000), 5));
    QCOMPARE(line->beginMs(), qint64(0));
    QCOMPARE(windows()->currentWindow(), 81);
    QVERIFY(text("Txt_battery").startsWith("1"));
    QTest::qWait(50);
    QCOMPARE(journal->total(), known); // a rewind is not part of the session

    QTest::keyClick(m_window.data(), Qt::Key_Space); // the key for it goes on
    QVERIFY(drive->isPlaying());
    emit line->momentRequested(29000);
    QVERIFY(!drive->isPlaying());

    // A touch of the past brings the present back, and nothing else.
    click("norda_key_about");
    QVERIFY(drive->isPlaying());
    QCOMPARE(windows()->currentWindow(), 81);
    emit line->momentRequested(2000);
    QVERIFY(!drive->isPlaying());
    QTest::mouseClick(find<QToolButton>("live"), Qt::LeftButton);
    QVERIFY(drive->isPlaying());
    QCOMPARE(windows()->currentWindow(), 81);
    const qint64 position = drive->positionMs();
    QTRY_VERIFY(drive->positionMs() > position);
    QTRY_VERIFY(journal->total() > known);
}

void tst_Session::whatCameInPartsAsItWas()
{
    auto *look = m_window->findChild<Rewind *>();
    const auto now = [this] { return session()->nowMs(); };
    const auto send = [](int type, int line, const QString &text) {
        emit VtqAdaptor::instance()->NordaConfigMenuTextInfo({type, 0, line}, {text}, {});
    };
    const auto rows = [this] {
        QStringList texts;
        for (int row = 1; row <= 15; ++row) {
            const QByteArray name = "Txt_item_" + QByteArray::number(row);
            if (screen()->widgetNamed(name)->isVisible())
                texts.append(text(name.constData()));
        }
        return text("Txt_pop_title") + ": " + texts.join(' ');
    };
    windows()->openWindow(84);
    send(1, 1, "Lights");
    send(2, 2, "Fog");
    const qint64 shortPage = now();
    QTRY_VERIFY(now() > shortPage);
    send(1, 1, "Doors");
    send(2, 2, "Left");
    send(2, 3, "Right");
    QCOMPARE(rows(), QStringLiteral("Doors: Left Right"));
    QTRY_VERIFY(now() > shortPage + 50);
    look->show(shortPage);
    QCOMPARE(rows(), QStringLiteral("Lights: Fog"));
    look->end();
    QCOMPARE(rows(), QStringLiteral("Doors: Left Right"));

    // Nobody beside the car says nothing about what is behind it.
    const auto zoneImage = [this] {
        return imagesShownBy(screen()->widgetNamed("icon_rear_right_mid_radar")).join(' ');
    };
    windows()->openWindow(83);
    emit VtqAdaptor::instance()->parkingDistanceRear(QByteArray::fromHex("0702"));
    emit VtqAdaptor::instance()->parkingDistanceRear(QByteArray::fromHex("0000"));
    const qint64 farther = now();
    QTRY_VERIFY(now() > farther);
    emit VtqAdaptor::instance()->parkingDistanceRear(QByteArray::fromHex("0704"));
    QCOMPARE(zoneImage(), QStringLiteral(":/icon/radaricon/R_D_M_4.png"));
    look->show(farther);
    QCOMPARE(zoneImage(), QStringLiteral(":/icon/radaricon/R_D_M_2.png"));
    look->end();
    QCOMPARE(zoneImage(), QStringLiteral(":/icon/radaricon/R_D_M_4.png"));
}

void tst_Session::lineZoomsAndMoves()
{
    open("timeline");
    auto *line = find<TimelineView>("timeline");
    line->setRange(100000, 60000);
    const int x = line->width() / 2;
    const qint64 under = line->msAt(x);
    QWheelEvent wheel(QPointF(x, 20), line->mapToGlobal(QPoint(x, 20)), QPoint(), QPoint(0, 240),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(line, &wheel);
    QVERIFY(line->spanMs() < 45000);
    QVERIFY2(qAbs(line->msAt(x) - under) < 200, "the moment under the pointer stays there");

    const qint64 begin = line->beginMs();
    QTest::mousePress(line, Qt::LeftButton, {}, QPoint(x, 40));
    QMouseEvent move(QEvent::MouseMove, QPoint(x - 100, 40), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(line, &move);
    QTest::mouseRelease(line, Qt::LeftButton, {}, QPoint(x - 100, 40));
    QVERIFY(line->beginMs() > begin);
    QVERIFY(!session()->isRewound()); // a drag is no click
}

void tst_Session::panelsAreRemembered()
{
    find<QDockWidget>("service")->hide();
    find<QDockWidget>("audio")->hide();
    m_window->close();
    removeBench();
    makeRig();
    showWindow();
    QVERIFY(!find<QDockWidget>("timeline")->isHidden());
    QVERIFY(find<QDockWidget>("service")->isHidden());
    QVERIFY(find<QDockWidget>("audio")->isHidden());
}

void tst_Session::journalShowsWhatWasDropped()
{
    open("timeline");
    open("calls");
    Journal *journal = session()->journal();
    journal->setLimit(100);
    for (int i = 0; i < 250; ++i) {
        emit VtqAdaptor::instance()->doorStatus(uchar(i));
        journal->note(0, Journal::Call, "A::b", {i});
    }
    QTRY_VERIFY(
        find<QLabel>("timelineState")->text().contains("are no longer kept; the limit is 100."));
    QTRY_COMPARE(model("calls")->rowCount(), journal->ofKind(Journal::Call).size());
    QCOMPARE(cell("calls", model("calls")->rowCount() - 1, Arguments), QStringLiteral("249"));
    find<TimelineView>("timeline")->grab(); // nothing of what is gone is looked at
}

void tst_Session::windowPlaysAndSeeks()
{
    makeBench("simulator");
    module::Drive *drive = session()->drive();
    QVERIFY(drive->isPlaying());
    QTest::mouseClick(find<QToolButton>("play"), Qt::LeftButton);
    QVERIFY(!drive->isPlaying());
    auto *slider = m_window->findChild<QSlider *>();
    QCOMPARE(slider->maximum(), 600);
    slider->setValue(300);
    QCOMPARE(drive->positionMs(), 300000);
    QVERIFY(session()->signalCount() > 5);
    QTest::keyClick(m_window.data(), Qt::Key_Space);
    QTRY_VERIFY(drive->isPlaying());
    QTest::keyClick(m_window.data(), Qt::Key_3);
    QTRY_COMPARE(windows()->currentWindow(), 82);
    QTest::keyClick(m_window.data(), Qt::Key_Escape);
    QTRY_COMPARE(windows()->currentWindow(), 80);
}

void tst_Session::modifiersAreNoKeys_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("isNoted");
    QTest::newRow("shift") << Qt::Key_Shift << false;
    QTest::newRow("super") << Qt::Key_Super_L << false;
    QTest::newRow("super, right") << Qt::Key_Super_R << false;
    QTest::newRow("meta") << Qt::Key_Meta << false;
    QTest::newRow("a letter") << Qt::Key_K << true;
    QTest::newRow("menu") << Qt::Key_Menu << true;
}

void tst_Session::modifiersAreNoKeys()
{
    QFETCH(Qt::Key, key);
    QFETCH(bool, isNoted);
    QTest::keyClick(m_window.data(), key);
    QCOMPARE(session()->journal()->totalOf(Journal::Action, "key") != nullptr, isNoted);
}

NORDA_TEST_MAIN(tst_Session)
#include "tst_session.moc"
