#include "messagecapture.h"
#include "norda/gauges_dashboard.h"
#include "testmain.h"

#include <QPainter>
#include <QTimer>

using norda::Dashboard;

/** The self-painting dial. */
class tst_Dashboard : public QObject
{
    Q_OBJECT
private slots:
    void walks_data();
    void walks();
    void sameAngleChangesNothing();
    void sameAngleLetsAnEarlierWalkGoOn();
    void newTargetReversesAtOnce();
    void onlyStepsRepaint();
    void needleAnchors_data();
    void needleAnchors();
    void needleAngles_data();
    void needleAngles();
    void centrePlacement();
    void texts_data();
    void texts();
    void traceMarks();
    void metaObject();

private:
    /** The timer of a dial, and what one tick of it does. */
    static QTimer *timer(Dashboard *dial) { return dial->findChild<QTimer *>(); }
    static int walk(Dashboard *dial)
    {
        int steps = 0;
        for (; timer(dial)->isActive() && steps < 1000; ++steps)
            dial->instrument_animation();
        return steps;
    }
};

/** Where the needle stands, told by the angle at which a walk to it would do nothing. */
static int standsAt(Dashboard *dial)
{
    auto *timer = dial->findChild<QTimer *>();
    for (int angle = -400; angle <= 400; ++angle) {
        timer->stop();
        dial->setDegRotate(angle, 1000);
        if (!timer->isActive())
            return angle;
    }
    return INT_MAX;
}

void tst_Dashboard::walks_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("steps");
    QTest::newRow("up") << 0 << 7 << 7;
    QTest::newRow("down") << 10 << 5 << 5;
    QTest::newRow("through zero") << 3 << -4 << 7;
    QTest::newRow("beyond a turn") << 0 << 390 << 390;
}

void tst_Dashboard::walks()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(int, steps);
    Dashboard dial;
    dial.setDegRotate(from, 1000);
    walk(&dial);
    dial.setDegRotate(to, 20);
    QCOMPARE(timer(&dial)->interval(), 20);
    QVERIFY(timer(&dial)->isActive());
    QCOMPARE(walk(&dial), steps);
    QVERIFY(!timer(&dial)->isActive());
    QCOMPARE(standsAt(&dial), to);
}

void tst_Dashboard::sameAngleChangesNothing()
{
    Dashboard dial;
    dial.setDegRotate(0, 20);
    QVERIFY(!timer(&dial)->isActive());
}

void tst_Dashboard::sameAngleLetsAnEarlierWalkGoOn()
{
    Dashboard dial;
    dial.setDegRotate(10, 20);
    for (int i = 0; i < 4; ++i)
        dial.instrument_animation();
    dial.setDegRotate(4, 50); // where it stands
    QVERIFY(timer(&dial)->isActive());
    QCOMPARE(timer(&dial)->interval(), 20);
    QCOMPARE(walk(&dial), 6);
    QCOMPARE(standsAt(&dial), 10);
}

void tst_Dashboard::newTargetReversesAtOnce()
{
    Dashboard dial;
    dial.setDegRotate(10, 20);
    for (int i = 0; i < 6; ++i)
        dial.instrument_animation();
    dial.setDegRotate(2, 20);
    QCOMPARE(walk(&dial), 4);
    QCOMPARE(standsAt(&dial), 2);
}

/** Counts repaints. */
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *watched) { watched->installEventFilter(this); }
    int paints = 0;

private:
    bool eventFilter(QObject *, QEvent *event) override
    {
        paints += event->type() == QEvent::Paint;
        return false;
    }
};

void tst_Dashboard::onlyStepsRepaint()
{
    Dashboard dial;
    dial.resize(300, 300);
    dial.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dial));
    PaintCounter counter(&dial);
    dial.set_valuetext(QStringLiteral("12"));
    dial.set_txtunits(QStringLiteral("V"));
    dial.set_txtvalue(1, 2);
    dial.setIndex(1);
    dial.setPointerPos(3, 4);
    dial.set_initial_position(90);
    dial.set_value_coefficient(2.0);
    dial.setPointerIcon(QStringLiteral(":/icon/gaugesicon/gagus_pointer_medium.png"));
    dial.setDegRotate(0, 20);
    QTest::qWait(50);
    QCOMPARE(counter.paints, 0);

    // Five steps of 20 ms, five repaints, the last one included.
    dial.setDegRotate(5, 20);
    QTRY_VERIFY(!timer(&dial)->isActive());
    QTest::qWait(50);
    QCOMPARE(counter.paints, 5);
}

/** A plain red needle of 10 x 50 pixels. */
static QString needleFile(const QTemporaryDir &folder)
{
    QPixmap image(10, 50);
    image.fill(Qt::red);
    const QString file = folder.filePath(QStringLiteral("needle.png"));
    image.save(file);
    return file;
}

static QRect redArea(const QImage &image)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.red() > 200 && color.green() < 60 && color.blue() < 60)
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

static QImage paint(Dashboard *dial)
{
    QImage image(dial->size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    dial->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image;
}

void tst_Dashboard::needleAnchors_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QPoint>("anchor");
    QTest::newRow("0") << 0 << QPoint(-18, -15);
    QTest::newRow("1") << 1 << QPoint(-22, -20);
    QTest::newRow("2") << 2 << QPoint(-32, -40);
    QTest::newRow("7") << 7 << QPoint(-32, -40);
    QTest::newRow("-1") << -1 << QPoint(-32, -40);
}

void tst_Dashboard::needleAnchors()
{
    QFETCH(int, index);
    QFETCH(QPoint, anchor);
    QTemporaryDir folder;
    Dashboard dial;
    dial.resize(300, 300);
    dial.setPointerIcon(needleFile(folder));
    dial.setIndex(index);
    QCOMPARE(dial.getIndex(), index);
    dial.set_initial_position(0); // the needle stands at 0: drawn upright
    const QPoint centre(300 / 2 + 1, 300 * 6 / 10 - 15);
    const QRect area = redArea(paint(&dial));
    QCOMPARE(area, QRect(centre.x() + anchor.x(), centre.y() + anchor.y() - 50, 10, 50));
}

void tst_Dashboard::needleAngles_data()
{
    QTest::addColumn<int>("angle");
    QTest::addColumn<QPoint>("side"); // of the centre that the needle points to
    QTest::newRow("at its initial position, up") << 100 << QPoint(0, -1);
    QTest::newRow("a quarter further, right") << 190 << QPoint(1, 0);
    QTest::newRow("a quarter back, left") << 10 << QPoint(-1, 0);
}

void tst_Dashboard::needleAngles()
{
    QFETCH(int, angle);
    QFETCH(QPoint, side);
    QTemporaryDir folder;
    Dashboard dial;
    dial.resize(300, 300);
    dial.setPointerIcon(needleFile(folder));
    dial.setDegRotate(angle, 1000);
    walk(&dial);
    const QPoint tip = redArea(paint(&dial)).center() - QPoint(151, 165);
    QVERIFY(side.x() == 0 || tip.x() * side.x() > 25);
    QVERIFY(side.y() == 0 || tip.y() * side.y() > 25);
    QVERIFY(side.x() != 0 || qAbs(tip.x()) < 25);
    QVERIFY(side.y() != 0 || qAbs(tip.y()) < 25);
}

void tst_Dashboard::centrePlacement()
{
    QTemporaryDir folder;
    Dashboard dial;
    dial.resize(200, 300);
    dial.setPointerIcon(needleFile(folder));
    dial.set_initial_position(0);
    dial.setPointerPos(50, 30);
    // x: 200 / 2 + 1, y: (300 + 50) * 0.6 - 30
    QCOMPARE(redArea(paint(&dial)).topLeft(), QPoint(101 - 18, 180 - 15 - 50));
}

void tst_Dashboard::texts_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("drawn");
    QTest::addColumn<int>("pointSize");
    QTest::addColumn<int>("boxWidth");
    QTest::addColumn<int>("alignment");
    QTest::newRow("seven characters") << "1234567"
                                      << "1234567 u" << 23 << 120 << int(Qt::AlignHCenter);
    QTest::newRow("eight characters") << "12345678"
                                      << "1234567... u" << 21 << 140 << int(Qt::AlignLeft);
    QTest::newRow("empty") << ""
                           << " u" << 23 << 120 << int(Qt::AlignHCenter);
}

void tst_Dashboard::texts()
{
    QFETCH(QString, value);
    QFETCH(QString, drawn);
    QFETCH(int, pointSize);
    QFETCH(int, boxWidth);
    QFETCH(int, alignment);
    Dashboard dial;
    dial.resize(300, 300);
    dial.set_valuetext(value);
    dial.set_txtunits(QStringLiteral(" u"));

    QImage expected(dial.size(), QImage::Format_RGB32);
    expected.fill(Qt::black);
    QPainter painter(&expected);
    painter.translate(151, 165);
    QFont font(QStringLiteral("Arial"));
    font.setPointSize(pointSize);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRect(-60, -30, boxWidth, 40), alignment, drawn);
    painter.end();

    QCOMPARE(paint(&dial), expected);
    QCOMPARE(paint(&dial), expected); // a text that was cut stays as it was cut
}

void tst_Dashboard::traceMarks()
{
    Dashboard dial;
    dial.resize(300, 300);
    MessageCapture capture;
    paint(&dial);
    QStringList marks;
    for (const MessageCapture::Message &message : capture.take()) {
        if (message.text.contains(QStringLiteral("Dashboard::DrawUnit(")))
            marks.append(QString::number(message.line) +
                         (message.text.endsWith(QStringLiteral(" --")) ? "" : " with a message"));
    }
    QCOMPARE(marks, (QStringList{"24", "45"}));
}

void tst_Dashboard::metaObject()
{
    const QMetaObject &meta = Dashboard::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    QVERIFY(meta.indexOfSlot("instrument_animation()") >= 0);
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    QCOMPARE(meta.superClass()->className(), "QLabel");
}

NORDA_TEST_MAIN(tst_Dashboard)
#include "tst_dashboard.moc"
