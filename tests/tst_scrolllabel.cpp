#include "scrolllabel.h"
#include "slabelmanager.h"
#include "testmain.h"
#include "virtualtime.h"

/** Counts the manager's ticks. */
class TickProbe : public QObject
{
public:
    explicit TickProbe(QObject *watched) { watched->installEventFilter(this); }
    int ticks = 0;

private:
    bool eventFilter(QObject *, QEvent *event) override
    {
        ticks += event->type() == QEvent::Timer;
        return false;
    }
};

/** Labels that scroll what does not fit. */
class tst_ScrollLabel : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { delete m_screen; }

    void overflowIsWhatDoesNotFit();
    void offsetStaysInRange();
    void aNewTextIsNotOffset();
    void markupIsText();
    void autoRepeatRevivesAFinishedText();
    void shortTextNeverWakes();
    void longTextScrollsThroughAndEnds();
    void autoRepeatStartsAgain();
    void hiddenLabelSleeps();
    void newTextStartsAtItsBeginning();
    void deletedLabelIsForgotten();

private:
    bool scrollsTo(int offset) const;

    QWidget *m_screen = nullptr;
    ScrollLabel *m_label = nullptr;
    SLabelManager *m_manager = nullptr;
};

void tst_ScrollLabel::init()
{
    m_screen = new QWidget;
    m_screen->resize(400, 100);
    m_label = new ScrollLabel(m_screen);
    m_label->setGeometry(0, 0, 200, 40);
    m_manager = new SLabelManager(m_screen);
    m_manager->addLabel(m_label);
    m_screen->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_screen));
}

/** Whether the label gets there within the time that a reader would wait. */
bool tst_ScrollLabel::scrollsTo(int offset) const
{
    static constexpr int longestTicks = 200;
    QCoreApplication::processEvents(); // a label that has painted wants its turn
    for (int tick = 0; tick < longestTicks; ++tick) {
        fireTimers(m_manager);
        if (m_label->scrollOffset() == offset)
            return true;
    }
    return false;
}

static QString longText(QLabel *label)
{
    QString text;
    while (label->fontMetrics().horizontalAdvance(text) < label->width() + 6)
        text.append(QLatin1Char('m'));
    return text;
}

void tst_ScrollLabel::overflowIsWhatDoesNotFit()
{
    m_label->setText(QStringLiteral("short"));
    QCOMPARE(m_label->overflow(), 0);
    m_label->setText(longText(m_label));
    QCOMPARE(m_label->overflow(), m_label->fontMetrics().horizontalAdvance(m_label->text()) - 200);
}

void tst_ScrollLabel::offsetStaysInRange()
{
    m_label->setText(longText(m_label));
    m_label->setScrollOffset(100000);
    QCOMPARE(m_label->scrollOffset(), m_label->overflow());
    m_label->setScrollOffset(-5);
    QCOMPARE(m_label->scrollOffset(), 0);
}

void tst_ScrollLabel::aNewTextIsNotOffset()
{
    ScrollLabel label; // which nobody manages
    label.resize(200, 40);
    const QString text = longText(&label);
    label.setText(text);
    const QImage atStart = label.grab().toImage();
    label.setScrollOffset(4);
    QVERIFY(label.grab().toImage() != atStart);
    label.setText(text + QLatin1Char('m'));
    QCOMPARE(label.scrollOffset(), 0);
    label.setScrollOffset(0);
    label.setText(text);
    QCOMPARE(label.grab().toImage(), atStart);
}

void tst_ScrollLabel::markupIsText()
{
    m_label->setText(QStringLiteral("a"));
    const QImage letter = m_label->grab().toImage();
    m_label->setText(QStringLiteral("<b></b>a"));
    QVERIFY(m_label->grab().toImage() != letter);
    QCOMPARE(m_label->textFormat(), Qt::PlainText);
}

void tst_ScrollLabel::shortTextNeverWakes()
{
    TickProbe probe(m_manager);
    m_label->setText(QStringLiteral("short"));
    QTest::qWait(200);
    QCOMPARE(probe.ticks, 0);
}

void tst_ScrollLabel::longTextScrollsThroughAndEnds()
{
    m_label->setText(longText(m_label));
    QVERIFY(scrollsTo(m_label->overflow()));
    QVERIFY(scrollsTo(0));
    fireTimers(m_manager);
    QCOMPARE(fireTimers(m_manager), 0);
}

void tst_ScrollLabel::autoRepeatStartsAgain()
{
    m_manager->setAutoRepeat(true);
    m_label->setText(longText(m_label));
    for (int pass = 0; pass < 2; ++pass) {
        QVERIFY(scrollsTo(m_label->overflow()));
        QVERIFY(scrollsTo(0));
    }
}

void tst_ScrollLabel::autoRepeatRevivesAFinishedText()
{
    m_label->setText(longText(m_label));
    QVERIFY(scrollsTo(m_label->overflow()));
    QVERIFY(scrollsTo(0));
    m_manager->setAutoRepeat(true);
    QVERIFY(scrollsTo(m_label->overflow()));
}

void tst_ScrollLabel::hiddenLabelSleeps()
{
    m_manager->setAutoRepeat(true);
    m_label->setText(longText(m_label));
    TickProbe probe(m_manager);
    QTRY_VERIFY(probe.ticks > 0);
    m_screen->hide();
    QTest::qWait(100);
    probe.ticks = 0;
    QTest::qWait(200);
    QCOMPARE(probe.ticks, 0);
    m_screen->show();
    QTRY_VERIFY(probe.ticks > 0);
}

void tst_ScrollLabel::newTextStartsAtItsBeginning()
{
    m_label->setText(longText(m_label));
    QVERIFY(scrollsTo(m_label->overflow()));
    m_label->setText(longText(m_label) + QStringLiteral("mmm"));
    QTRY_COMPARE(m_label->scrollOffset(), 0);
}

void tst_ScrollLabel::deletedLabelIsForgotten()
{
    m_label->setText(longText(m_label));
    TickProbe probe(m_manager);
    QTRY_VERIFY(probe.ticks > 0);
    delete m_label;
    QTest::qWait(100);
    probe.ticks = 0;
    QTest::qWait(200);
    QCOMPARE(probe.ticks, 0);
}

NORDA_TEST_MAIN(tst_ScrollLabel)
#include "tst_scrolllabel.moc"
