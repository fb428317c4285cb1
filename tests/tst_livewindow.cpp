#include "benchfixture.h"
#include "ecuprogram.h"
#include "livebus.h"
#include "scenario/scenario.h"
#include "testfolder.h"
#include "window/cardialogs.h"
#include "window/filecommands.h"

#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

/** A connected car in the bench's window: choosing it, trying again, changing to another. */
class tst_LiveWindow : public QObject, public BenchFixture
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void unusableCars_data();
    void unusableCars();
    void busyPort();
    void triesAgain();
    void firstCar_data();
    void firstCar();
    void opensTheSamePortAgain_data();
    void opensTheSamePortAgain();
    void keepsTheCarThatItHas();
    void eachCarHasItsLog();
    void sessionIsSavedWithItsLog();
    void recentCarsAreOffered();

private:
    QAction *command(const char *name) const
    {
        return m_window->findChild<QAction *>(QLatin1String(name));
    }
    bool isLive() const { return session()->drive()->source()->liveMs() >= 0; }
    /** Whether a value of the engine comes from now on. */
    bool followsTheCar()
    {
        m_rpm = 0;
        return QTest::qWaitFor([this] { return m_rpm > 0; }, 60000);
    }

    QObject m_context;
    TestFolder m_folder;
    int m_rpm = 0; // values that came
};

/** Answers the dialogs that come, in order: a name to connect to, then buttons of messages. */
class Answers : public QObject
{
public:
    explicit Answers(const QStringList &answers) : m_answers(answers)
    {
        connect(&m_timer, &QTimer::timeout, this, &Answers::answer);
        m_timer.start(20);
    }
    ~Answers() override
    {
        if (!m_answers.isEmpty())
            QTest::qFail("a dialog did not come", __FILE__, __LINE__);
    }

    QStringList messages;
    std::function<void()> beforeButton;

private:
    void answer()
    {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        const QString next = m_answers.isEmpty() ? QString() : m_answers.takeFirst();
        if (auto *input = qobject_cast<QInputDialog *>(dialog)) {
            input->setTextValue(next);
            input->accept();
            return;
        }
        auto *box = qobject_cast<QMessageBox *>(dialog);
        messages.append(box ? box->text() : QStringLiteral("no message"));
        if (beforeButton)
            beforeButton();
        press(dialog, next);
    }
    static void press(QDialog *dialog, const QString &text)
    {
        const QList<QPushButton *> buttons = dialog->findChildren<QPushButton *>();
        for (QPushButton *button : buttons) {
            if (button->text().remove(QLatin1Char('&')) == text)
                return button->click();
        }
        dialog->reject();
        QTest::qFail(qPrintable("no button " + text), __FILE__, __LINE__);
    }

    QStringList m_answers;
    QTimer m_timer;
};

void tst_LiveWindow::init()
{
    connect(norda::VtqAdaptor::instance(), &norda::VtqAdaptor::centerGaugeValueNotify, &m_context,
            [this](const QString &text) { m_rpm += text != QLatin1String("--"); });
}

void tst_LiveWindow::cleanup()
{
    removeBench();
    disconnect(norda::VtqAdaptor::instance(), nullptr, &m_context, nullptr);
}

void tst_LiveWindow::unusableCars_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QString &source, const QString &why) {
        QTest::newRow(name) << source << source + QStringLiteral(": ") + why;
    };
    row("no interface", "can:socketcan:can77", "expected a CAN interface, found nothing");
    row("no plugin", "can:nosuchbus:can0", "No such plugin: 'nosuchbus'");
    row("no port", "elm327:/dev/ttyNOSUCH0", "expected a serial port, found nothing");
    row("refusing host", QStringLiteral("elm327:tcp:127.0.0.1:%1").arg(freePort()),
        "Connection refused");
    row("no such form", "elm327:",
        "expected can:PLUGIN:INTERFACE[?bitrate=N], elm327:DEVICE[@BAUD] or elm327:tcp:HOST:PORT");
}

/** The message offers another try, as often as wanted; then all is as before. */
void tst_LiveWindow::unusableCars()
{
    QFETCH(QString, name);
    QFETCH(QString, message);
    makeBench(QStringLiteral("simulator"));
    Answers answers({name, "Try again", "Cancel"});
    command("connect")->trigger();
    QCOMPARE(answers.messages, (QStringList{message, message}));
    QVERIFY(!isLive());
    QVERIFY(session()->drive()->isPlaying());
}

void tst_LiveWindow::busyPort()
{
    FakeAdapter adapter(true);
    const QString name = QStringLiteral("elm327:") + adapter.port().device;
    QSerialPort other(adapter.port().device);
    QVERIFY(other.open(QIODevice::ReadWrite));
    makeBench();
    Answers answers({name, "Try again"});
    answers.beforeButton = [&other] { other.close(); };
    command("connect")->trigger();
    QCOMPARE(answers.messages, QStringList{name + ": another program uses it"});
    QVERIFY(isLive());
    QVERIFY(followsTheCar());
}

void tst_LiveWindow::triesAgain()
{
    FakeAdapter adapter(false);
    const QString name = QStringLiteral("elm327:tcp:127.0.0.1:%1").arg(adapter.port().port);
    adapter.unplug();
    makeBench();
    Answers answers({name, "Try again"});
    answers.beforeButton = [&adapter] { adapter.plugIn(); };
    command("connect")->trigger();
    QCOMPARE(answers.messages, QStringList{name + ": Connection refused"});
    QVERIFY(isLive());
    QVERIFY(followsTheCar());
}

void tst_LiveWindow::firstCar_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("isOpen");
    QTest::newRow("given up") << "Cancel" << false;
    QTest::newRow("tried again") << "Try again" << true;
}

/** The one of the command line, before there is a window. */
void tst_LiveWindow::firstCar()
{
    QFETCH(QString, button);
    FakeAdapter adapter(false);
    Setup setup;
    setup.source = QStringLiteral("elm327:tcp:127.0.0.1:%1").arg(adapter.port().port);
    adapter.unplug();
    Rig rig(setup);
    QString error;
    QVERIFY2(rig.load(testpaths::pluginFile(), &error), qPrintable(error));
    Answers answers({button});
    answers.beforeButton = [&adapter] { adapter.plugIn(); };
    QTEST(openFirst(&rig, &error), "isOpen");
    QTEST(error.isEmpty(), "isOpen");
    QCOMPARE(answers.messages.size(), 1);
}

void tst_LiveWindow::opensTheSamePortAgain_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("prefix");
    QTest::newRow("pseudo terminal") << "--pty"
                                     << "pty"
                                     << "elm327:";
    QTest::newRow("port") << "--tcp 0"
                          << "tcp"
                          << "elm327:tcp:";
}

void tst_LiveWindow::opensTheSamePortAgain()
{
    QFETCH(QString, options);
    QFETCH(QString, kind);
    QFETCH(QString, prefix);
    EcuProgram program(options);
    const QString name = prefix + program.place(kind);
    makeBench(name);
    QVERIFY(followsTheCar());
    Answers none({});
    for (int i = 0; i < 2; ++i) {
        m_window->openDrive(name);
        QCOMPARE(none.messages.join(QLatin1Char('|')), QString());
        QVERIFY(isLive());
        QVERIFY(followsTheCar());
    }
}

void tst_LiveWindow::keepsTheCarThatItHas()
{
    EcuProgram program(QStringLiteral("--tcp 0"));
    makeBench("elm327:tcp:" + program.place("tcp"));
    QVERIFY(followsTheCar());
    Answers answers({"Cancel"});
    m_window->openDrive(QStringLiteral("elm327:/dev/ttyNOSUCH0"));
    QCOMPARE(answers.messages.size(), 1);
    QVERIFY(isLive());
    QVERIFY(followsTheCar());
}

void tst_LiveWindow::eachCarHasItsLog()
{
    FakeAdapter adapter(false);
    const QString name = QStringLiteral("elm327:tcp:127.0.0.1:%1").arg(adapter.port().port);
    m_options.setup.live.log = m_folder.filePath("seen.log");
    makeBench(name);
    QVERIFY(followsTheCar());
    m_window->openDrive(name);
    QVERIFY(followsTheCar());
    removeBench();
    m_options.setup.live.log.clear();
    for (const char *log : {"seen.log", "seen-2.log"}) {
        QString error;
        QVERIFY2(module::openSource(m_folder.filePath(log), &error), qPrintable(error));
    }
}

/** Only the log of a car can be driven again. */
void tst_LiveWindow::sessionIsSavedWithItsLog()
{
    FakeAdapter adapter(false);
    const QString name = QStringLiteral("elm327:tcp:127.0.0.1:%1").arg(adapter.port().port);
    const QString file = m_folder.filePath("session.scenario");
    makeBench(name);
    QString error;
    QVERIFY(!m_window->saveScenario(file, &error));
    QCOMPARE(error, file + ": expected a car that is connected with --log-can, whose log is driven "
                           "again");
    error.clear();
    m_options.setup.live.log = m_folder.filePath("saved.log");
    makeBench(name);
    QVERIFY(followsTheCar());
    QTRY_VERIFY(QFile::exists(m_options.setup.live.log));
    QVERIFY2(m_window->saveScenario(file, &error), qPrintable(error));
    m_options.setup.live.log.clear();
    Scenario scenario;
    QVERIFY2(scenario.read(file, &error), qPrintable(error));
    QCOMPARE(scenario.setup.source, m_folder.filePath("saved.log"));
}

void tst_LiveWindow::recentCarsAreOffered()
{
    FakeAdapter adapter(false);
    const QString name = QStringLiteral("elm327:tcp:127.0.0.1:%1").arg(adapter.port().port);
    makeBench();
    m_window->openDrive(name);
    command("simulator")->trigger();
    QVERIFY(!isLive());
    QMenu *menu = command("recent")->menu();
    emit menu->aboutToShow();
    QCOMPARE(menu->actions().constFirst()->text(), name);
    QVERIFY(menu->actions().constFirst()->isEnabled());
    menu->actions().constFirst()->trigger();
    QVERIFY(isLive());
    QVERIFY(followsTheCar());
}

NORDA_TEST_MAIN(tst_LiveWindow)
#include "tst_livewindow.moc"
