#include "benchfixture.h"
#include "panels/carpanel.h"
#include "simulator/controls.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

using module::Controls;

/** The Car panel overrides the simulated car, and shows what is overridden, by whomever. */
class tst_CarPanel : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        makeBench("simulator");
        session()->drive()->pause();
        open("car");
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    }
    void cleanup();

    void eachControlIsSetAndReleased_data();
    void eachControlIsSetAndReleased();
    void overridesOfAScenarioAreShown_data();
    void overridesOfAScenarioAreShown();
    void overridesStayOverAJump();
    void allAreReleased();
    void typedNumberIsKept();
    void firstStepBeginsInTheMiddle();
    void wheelScrollsThePanel_data();
    void wheelScrollsThePanel();
    void recordedDriveShowsNone();
    void cleanupTestCase() { removeBench(); }

private:
    const Controls *controls() const { return session()->drive()->source()->controls(); }
    void perform(const QString &name, const QString &value) const
    {
        QString error;
        QVERIFY2(m_rig->actions()->perform("car", {name, value}, &error), qPrintable(error));
    }
    QWidget *field(Controls::Control control) const
    {
        return m_window->findChild<QWidget *>(QLatin1String("car-") +
                                              QLatin1String(Controls::row(control).name));
    }
    /** The text of a field, as a person reads it. */
    QString shown(Controls::Control control) const
    {
        if (const auto *choice = qobject_cast<QComboBox *>(field(control)))
            return choice->currentText();
        return qobject_cast<QSpinBox *>(field(control))->text();
    }
    /** Sets a field as a person does: from the list, or with the keyboard. */
    void enter(Controls::Control control, const QString &text) const
    {
        if (auto *choice = qobject_cast<QComboBox *>(field(control))) {
            choice->setCurrentText(text);
            emit choice->activated(choice->currentIndex());
            return;
        }
        QWidget *number = field(control);
        number->setFocus();
        qobject_cast<QSpinBox *>(number)->selectAll();
        QTest::keyClicks(number, text);
        QTest::keyClick(number, Qt::Key_Return);
    }
    /** Four times a second would be too slow for many rows; a panel that is shown refreshes. */
    void refresh() const
    {
        auto *panel = m_window->findChild<CarPanel *>();
        panel->hide();
        panel->show();
    }
    QPushButton *releaseAll() const { return find<QPushButton>("release-all"); }
};

/** All but what has a single effect. */
static void addControls()
{
    QTest::addColumn<int>("control");
    for (int i = 0; i < Controls::Count; ++i) {
        if (i != Controls::Prompt && i != Controls::ClimateTrim)
            QTest::newRow(Controls::row(Controls::Control(i)).name) << i;
    }
}

static QString highestOf(Controls::Control control)
{
    return Controls::textOf(control, Controls::row(control).highest);
}

void tst_CarPanel::cleanup()
{
    if (!controls())
        return;
    for (int i = 0; i < Controls::Count; ++i)
        perform(QLatin1String(Controls::row(Controls::Control(i)).name), "auto");
    refresh();
}

void tst_CarPanel::eachControlIsSetAndReleased_data()
{
    addControls();
}

void tst_CarPanel::eachControlIsSetAndReleased()
{
    QFETCH(int, control);
    const auto which = Controls::Control(control);
    QCOMPARE(shown(which), QStringLiteral("From trip"));
    enter(which, highestOf(which));
    QCOMPARE(controls()->value(which), Controls::row(which).highest);
    refresh();
    QCOMPARE(releaseAll()->text(), QStringLiteral("Release all (1)"));
    if (auto *choice = qobject_cast<QComboBox *>(field(which))) {
        enter(which, choice->itemText(0));
    } else {
        auto *number = qobject_cast<QSpinBox *>(field(which));
        number->setValue(number->minimum());
    }
    QVERIFY(!controls()->isOverridden(which));
    refresh();
    QVERIFY(!releaseAll()->isEnabled());
}

void tst_CarPanel::overridesOfAScenarioAreShown_data()
{
    addControls();
}

void tst_CarPanel::overridesOfAScenarioAreShown()
{
    QFETCH(int, control);
    const auto which = Controls::Control(control);
    const QString name = QLatin1String(Controls::row(which).name);
    perform(name, highestOf(which));
    refresh();
    QVERIFY(shown(which).startsWith(highestOf(which)));
    QCOMPARE(releaseAll()->text(), QStringLiteral("Release all (1)"));
    perform(name, "auto");
    refresh();
    QCOMPARE(shown(which), QStringLiteral("From trip"));
    QVERIFY(!releaseAll()->isEnabled());
}

void tst_CarPanel::overridesStayOverAJump()
{
    perform("hood", "open");
    m_rig->actions()->seek(60000);
    QTRY_COMPARE(shown(Controls::Hood), QStringLiteral("open"));
    QCOMPARE(releaseAll()->text(), QStringLiteral("Release all (1)"));
}

void tst_CarPanel::allAreReleased()
{
    QVERIFY(!releaseAll()->isEnabled());
    perform("hood", "open");
    perform("outside-temperature", "-10");
    perform("gear", "reverse");
    QTRY_COMPARE(releaseAll()->text(), QStringLiteral("Release all (3)"));
    QCOMPARE(shown(Controls::OutsideTemperature), QStringLiteral("-10 \u00B0F"));
    const int begin = session()->journal()->count(Journal::Action);
    QTest::mouseClick(releaseAll(), Qt::LeftButton);
    QVERIFY(!releaseAll()->isEnabled());
    QCOMPARE(releaseAll()->text(), QStringLiteral("Release all"));
    QCOMPARE(shown(Controls::Gear), QStringLiteral("From trip"));
    // A saved scenario has a line for each.
    QStringList lines;
    const Journal *journal = session()->journal();
    for (const int entry : journal->ofKind(Journal::Action).mid(begin))
        lines.append(journal->entries()[entry].arguments.value(0).toString() + " " +
                     journal->entries()[entry].arguments.value(1).toString());
    QCOMPARE(lines, QStringList({"gear auto", "outside-temperature auto", "hood auto"}));
}

void tst_CarPanel::typedNumberIsKept()
{
    auto *speed = find<QSpinBox>("car-speed");
    speed->setFocus();
    speed->selectAll();
    QTest::keyClicks(speed, "5");
    perform("hood", "open");
    QTRY_COMPARE(releaseAll()->text(), QStringLiteral("Release all (1)")); // the panel refreshes
    QCOMPARE(speed->cleanText(), QStringLiteral("5"));
    QVERIFY(!controls()->isOverridden(Controls::Speed));
    QTest::keyClick(speed, Qt::Key_Return);
    QCOMPARE(controls()->value(Controls::Speed), 5);
    perform("speed", "auto"); // the focus is still there
    QTRY_COMPARE(speed->text(), QStringLiteral("From trip"));
}

void tst_CarPanel::firstStepBeginsInTheMiddle()
{
    auto *coolant = find<QSpinBox>("car-coolant-temperature");
    coolant->setFocus();
    QTest::keyClick(coolant, Qt::Key_Up);
    QCOMPARE(controls()->value(Controls::CoolantTemperature), 130);
    QTest::keyClick(coolant, Qt::Key_Up);
    QCOMPARE(controls()->value(Controls::CoolantTemperature), 133);
}

void tst_CarPanel::wheelScrollsThePanel_data()
{
    QTest::addColumn<int>("control");
    QTest::newRow("number") << int(Controls::Speed);
    QTest::newRow("choice") << int(Controls::Gear);
}

void tst_CarPanel::wheelScrollsThePanel()
{
    QFETCH(int, control);
    const auto which = Controls::Control(control);
    QWidget *used = field(which);
    const auto turn = [used](int angle) {
        const QPointF middle = used->rect().center();
        QWheelEvent event(middle, used->mapToGlobal(middle.toPoint()), {}, {0, angle}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(used, &event);
    };
    find<QComboBox>("car-hood")->setFocus();
    for (const int angle : {-120, 120})
        turn(angle);
    QVERIFY(!controls()->isOverridden(which));
    used->setFocus();
    turn(used->inherits("QSpinBox") ? 120 : -120); // up, or down the list
    QVERIFY(controls()->isOverridden(which));
}

void tst_CarPanel::recordedDriveShowsNone()
{
    perform("hood", "open");
    makeBench("none");
    open("car");
    QCOMPARE(shown(Controls::Hood), QStringLiteral("From trip"));
    QVERIFY(!releaseAll()->isEnabled());
}

NORDA_TEST_MAIN(tst_CarPanel)
#include "tst_carpanel.moc"
