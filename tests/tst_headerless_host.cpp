#include "testmain.h"
#include "testpaths.h"

#include <QEvent>
#include <QPluginLoader>
#include <QWidget>
#include <QtTest>

/*
 * A host built without the SDK: it declares the interfaces itself, in the order of their slots, and
 * drives the library through them. The names differ from the SDK's on purpose; only the order and
 * the types bind the two.
 */
namespace closed {

class Window
{
public:
    virtual ~Window() {}
    virtual QString name() = 0;
    virtual void create() = 0;
    virtual void destroy() = 0;
    virtual void show(const QByteArray &) = 0;
    virtual void hide(const QByteArray &) = 0;
    virtual void enter() = 0;
    virtual void exit() = 0;
    virtual void released() = 0;
    virtual QWidget *widget() = 0;
    virtual int attribute() = 0;
    virtual void setStatusBar(void *) = 0;
    virtual void setStatusBarAutoHide(bool) = 0;
    virtual void setStatusBarVisible(bool) = 0;
    virtual void setBackgroundVisible(int, bool) = 0;
    virtual void setPopup(void *) = 0;
    virtual void popupButton(int, int) = 0;
    virtual void popupClicked(int) = 0;
    virtual void popupOutside(int) = 0;
    virtual void popupTimeout(int) = 0;
    virtual int back() = 0;
    virtual void setTranslation(const QString &) = 0;
    virtual bool dispatch(QEvent *) = 0;
    virtual int key(void *) = 0;
};

class Source
{
public:
    virtual ~Source() {}
    virtual QString name() const = 0;
    virtual void start(const QByteArray &) = 0;
    virtual void stop(const QByteArray &) = 0;
    virtual void pause() = 0;
    virtual void play() = 0;
    virtual int key(void *) = 0;
    virtual int attribute() = 0;
};

class Root
{
public:
    virtual ~Root() {}
    virtual void create() = 0;
    virtual QList<int> windows() = 0;
    virtual QList<int> sources() = 0;
    virtual Window *window(int) = 0;
    virtual Source *source(int) = 0;
};

} // namespace closed

/** A key event as the head unit lays it out: an event with the key code behind it. */
class KeyEvent : public QEvent
{
public:
    explicit KeyEvent(int key) : QEvent(QEvent::KeyPress), m_key(key) {}

private:
    int m_key;
};

class tst_HeaderlessHost : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void readsIds();
    void walksAWindowThroughItsSlots_data();
    void walksAWindowThroughItsSlots();
    void walksASourceThroughItsSlots();
    void cleanupTestCase() { m_loader.unload(); }

private:
    QPluginLoader m_loader{testpaths::pluginFile()};
    closed::Root *m_root = nullptr;
};

void tst_HeaderlessHost::initTestCase()
{
    QObject *instance = m_loader.instance();
    QVERIFY2(instance, qPrintable(m_loader.errorString()));
    m_root = static_cast<closed::Root *>(instance->qt_metacast("com.stavel.Plugin.AppPlugin/1.0"));
    QVERIFY(m_root);
    m_root->create();
}

void tst_HeaderlessHost::readsIds()
{
    QCOMPARE(m_root->windows(), (QList<int>{80, 81, 82, 83, 84, 85}));
    QCOMPARE(m_root->sources(), (QList<int>{51, 52, 53}));
}

void tst_HeaderlessHost::walksAWindowThroughItsSlots_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("screen");
    QTest::newRow("gauges") << 80 << "norda_gauges" << QByteArray("norda_gauge");
    QTest::newRow("vehicle") << 81 << "" << QByteArray("norda_vehicles");
    QTest::newRow("climate") << 82 << "canbus_climate" << QByteArray("norda_vantiq_climate");
    QTest::newRow("parking") << 83 << "" << QByteArray("norda_parking");
    QTest::newRow("settings") << 84 << "DSPLState_NORDA_Setting"
                              << QByteArray("norda_vantiq_settings");
    QTest::newRow("about") << 85 << "Aboutwindow" << QByteArray("norda_about");
}

void tst_HeaderlessHost::walksAWindowThroughItsSlots()
{
    QFETCH(int, id);
    QFETCH(QString, name);
    QFETCH(QByteArray, screen);
    closed::Window *window = m_root->window(id);
    QVERIFY(window);
    QCOMPARE(window->name(), name);
    QCOMPARE(window->attribute(), 0x201);
    QCOMPARE(window->widget(), nullptr);

    window->create();
    QPointer<QWidget> content = window->widget();
    QVERIFY(content);
    QCOMPARE(content->objectName().toLatin1(), screen);
    window->setStatusBar(nullptr);
    window->setStatusBarAutoHide(true);
    window->setStatusBarVisible(true);
    window->setBackgroundVisible(0, true);
    window->setPopup(nullptr);
    window->setTranslation(QStringLiteral("de_DE"));
    window->show(QByteArray());
    QVERIFY(content->isVisible());
    window->enter();

    window->popupButton(1, 2);
    window->popupClicked(1);
    window->popupOutside(1);
    window->popupTimeout(1);
    KeyEvent key(0x42);
    QCOMPARE(window->key(&key), 0);
    QEvent probe(QEvent::None);
    QCOMPARE(window->dispatch(&probe), false);
    QCOMPARE(window->back(), 1);

    window->exit();
    window->hide(QByteArray());
    QVERIFY(!content->isVisible());
    window->released();
    window->destroy();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!content);
    QCOMPARE(window->widget(), nullptr);
}

void tst_HeaderlessHost::walksASourceThroughItsSlots()
{
    closed::Source *source = m_root->source(53);
    QVERIFY(source);
    QCOMPARE(source->name(), QStringLiteral("vtq_warn_tone"));
    source->start(QByteArray());
    source->pause();
    source->play();
    KeyEvent key(0x42);
    QCOMPARE(source->key(&key), 0);
    QCOMPARE(source->attribute(), 3);
    source->stop(QByteArray());
}

NORDA_TEST_MAIN(tst_HeaderlessHost)
#include "tst_headerless_host.moc"
