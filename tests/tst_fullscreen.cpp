#include "callspy.h"
#include "fullscreen.h"
#include "headunit.h"
#include "paintcounter.h"
#include "statuscolumn.h"
#include "testmain.h"
#include "testpaths.h"

#include <QScreen>

/** The unit's screen on a whole display, and what its status column says of the module. */
class tst_FullScreen : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void place_data();
    void place();
    void aSmallDisplayIsReported();
    void surroundingsAreBlack();
    void screenOutlivesTheDisplay();
    void keys_data();
    void keys();
    void noticeFollowsTheLink_data();
    void noticeFollowsTheLink();
    void noticeIsPaintedOnce();

private:
    HeadUnit m_unit;
};

void tst_FullScreen::initTestCase()
{
    QString error;
    QVERIFY2(m_unit.load(testpaths::pluginFile(), &error), qPrintable(error));
    m_unit.windows()->openWindow(80);
}

void tst_FullScreen::place_data()
{
    QTest::addColumn<QSize>("display");
    QTest::addColumn<QPoint>("place");
    QTest::newRow("the unit's own") << QSize(1280, 720) << QPoint(0, 0);
    QTest::newRow("larger") << QSize(1920, 1080) << QPoint(320, 180);
    QTest::newRow("wider") << QSize(1920, 720) << QPoint(320, 0);
    QTest::newRow("higher") << QSize(1280, 800) << QPoint(0, 40);
    QTest::newRow("smaller") << QSize(800, 480) << QPoint(0, 0);
    QTest::newRow("narrow and high") << QSize(720, 1280) << QPoint(0, 280);
}

void tst_FullScreen::place()
{
    QFETCH(QSize, display);
    QFETCH(QPoint, place);
    FullScreen window(&m_unit);
    window.resize(display);
    QResizeEvent event(display, QSize()); // a window that is hidden gets none
    QCoreApplication::sendEvent(&window, &event);
    QCOMPARE(m_unit.screen()->geometry(), QRect(place, QSize(1280, 720)));
}

/** The display of the offscreen platform is one. */
void tst_FullScreen::aSmallDisplayIsReported()
{
    const QSize display = QGuiApplication::primaryScreen()->size();
    QVERIFY(display.width() < 1280);
    FullScreen window(&m_unit);
    QTest::ignoreMessage(
        QtWarningMsg,
        qPrintable(QStringLiteral("display: expected at least 1280 x 720, got %1 x %2: the pages "
                                  "are cut off")
                       .arg(display.width())
                       .arg(display.height())));
    window.showFullScreen();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.windowFlags() & Qt::FramelessWindowHint);
    QCOMPARE(window.size(), display);
    QVERIFY(m_unit.screen()->isVisible());
}

void tst_FullScreen::surroundingsAreBlack()
{
    FullScreen window(&m_unit);
    window.resize(1400, 800);
    const QImage picture = window.grab().toImage();
    QCOMPARE(picture.pixelColor(0, 0), QColor(Qt::black));
    QCOMPARE(picture.pixelColor(1399, 799), QColor(Qt::black));
    QVERIFY(picture.pixelColor(60 + 64, 40 + 2) != QColor(Qt::black));
}

void tst_FullScreen::screenOutlivesTheDisplay()
{
    const QPointer<Screen> screen = m_unit.screen();
    {
        FullScreen window(&m_unit);
        QCOMPARE(screen->parentWidget(), &window);
    }
    QVERIFY(screen);
    QVERIFY(!screen->parentWidget());
}

void tst_FullScreen::keys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("forwarded");
    QTest::newRow("Back") << int(Qt::Key_Back) << 80 << 0;
    QTest::newRow("Esc") << int(Qt::Key_Escape) << 80 << 0;
    QTest::newRow("any other") << 0x42 << 81 << 2; // pressed and released
}

void tst_FullScreen::keys()
{
    QFETCH(int, key);
    QFETCH(int, page);
    QFETCH(int, forwarded);
    FullScreen window(&m_unit);
    m_unit.windows()->openWindow(80);
    m_unit.windows()->openWindow(81);
    CallSpy calls;
    QTest::keyClick(&window, Qt::Key(key));
    QCOMPARE(m_unit.windows()->currentWindow(), page);
    QCOMPARE(calls.take({"cm::BaseWindow::keyEvent"}).size(), forwarded);
}

void tst_FullScreen::noticeFollowsTheLink_data()
{
    QTest::addColumn<ServiceConnection::State>("state");
    QTest::addColumn<bool>("isMissing");
    QTest::newRow("waiting") << ServiceConnection::Waiting << true;
    QTest::newRow("connected") << ServiceConnection::Connected << false;
    QTest::newRow("in process") << ServiceConnection::InProcess << false;
}

void tst_FullScreen::noticeFollowsTheLink()
{
    QFETCH(ServiceConnection::State, state);
    QFETCH(bool, isMissing);
    StatusColumn *column = m_unit.screen()->statusColumn();
    column->setTime(QTime(12, 0));
    column->setModuleMissing(false);
    const QImage without = column->grab().toImage();
    emit ServiceConnection::instance()->stateChanged(state);
    QCOMPARE(column->isModuleMissing(), isMissing);
    QCOMPARE(column->grab().toImage() != without, isMissing);
    column->setModuleMissing(false);
}

/** A link that is reported again changes nothing on the screen. */
void tst_FullScreen::noticeIsPaintedOnce()
{
    StatusColumn *column = m_unit.screen()->statusColumn();
    m_unit.screen()->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_unit.screen()));
    column->setModuleMissing(true);
    QTest::qWait(50);
    PaintCounter counter(column);
    emit ServiceConnection::instance()->stateChanged(ServiceConnection::Waiting);
    QTest::qWait(50);
    QCOMPARE(counter.paints, 0);
    m_unit.screen()->hide();
    column->setModuleMissing(false);
}

NORDA_TEST_MAIN(tst_FullScreen)
#include "tst_fullscreen.moc"
