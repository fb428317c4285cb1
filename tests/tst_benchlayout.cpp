#include "window/paneldocks.h"
#include "windowfixture.h"

#include <QLineEdit>
#include <QMenuBar>

/** How the window fits the screen and its panels into the space of a display. */
class tst_BenchLayout : public QObject, WindowFixture
{
    Q_OBJECT

private slots:
    void init() { makeBench(); }
    void cleanup() { removeBench(); }

    void screenScales_data();
    void screenScales();
    void screenIsTouchedAtAnyScale_data();
    void screenIsTouchedAtAnyScale();
    void picturesKeepTheirSize();
    void fixedScale();
    void framesAreCountedInTheView();
    void fullScreenShowsTheScreenAlone();
    void fullScreenEndsFromOutside();
    void layoutSuitsTheDisplay_data();
    void layoutSuitsTheDisplay();
    void noPanelIsClipped_data();
    void noPanelIsClipped();
    void keyBringsAPanelToTheFront();
    void layoutPutsPanelsBack();
};

void tst_BenchLayout::screenScales_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("factor");
    QTest::newRow("a quarter") << QSize(320, 180) << 0.25;
    QTest::newRow("half") << QSize(640, 400) << 0.5;
    QTest::newRow("limited by the height") << QSize(1280, 540) << 0.75;
    QTest::newRow("its own size") << QSize(1280, 720) << 1.0;
    QTest::newRow("a little more") << QSize(1300, 740) << 1.0;
    QTest::newRow("twice") << QSize(2560, 1440) << 2.0;
    QTest::newRow("less than the least") << QSize(200, 100) << 0.25;
}

void tst_BenchLayout::screenScales()
{
    QFETCH(QSize, size);
    QFETCH(double, factor);
    ScreenView *view = this->view();
    view->setParent(nullptr); // at any size, without what is around it
    view->setMinimumSize(size);
    view->resize(size);
    view->show();
    QCOMPARE(view->factor(), factor);
    QCOMPARE(view->transform().m11(), factor);
    QCOMPARE(screen()->size(), QSize(1280, 720));
    delete view;
}

void tst_BenchLayout::screenIsTouchedAtAnyScale_data()
{
    QTest::addColumn<QSize>("window");
    QTest::newRow("small") << QSize(1024, 768);
    QTest::newRow("normal") << QSize(1920, 1080);
    QTest::newRow("large") << QSize(3200, 1900);
}

void tst_BenchLayout::screenIsTouchedAtAnyScale()
{
    QFETCH(QSize, window);
    resizeWindow(window);
    QWidget *key = screen()->widgetNamed("norda_key_vehicle");
    QVERIFY(key);
    const QPoint onScreen = key->mapTo(screen(), key->rect().center());
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, view()->mapFromScene(onScreen));
    QTRY_COMPARE(windows()->currentWindow(), int(VehiclePage));
}

void tst_BenchLayout::picturesKeepTheirSize()
{
    session()->drive()->pause();
    windows()->openWindow(AboutPage);
    view()->setFactor(1);
    const QImage atOne = screen()->grab().toImage();
    QCOMPARE(atOne.size(), QSize(1280, 720));
    view()->setFactor(0.5);
    QCoreApplication::processEvents();
    QCOMPARE(screen()->grab().toImage(), atOne);
}

void tst_BenchLayout::fixedScale()
{
    removeBench();
    m_options.scale = 0.5;
    makeBench();
    m_options.scale = 0;
    QCOMPARE(view()->factor(), 0.5);
    resizeWindow({2400, 1400});
    QCOMPARE(view()->factor(), 0.5);
    command("fit")->trigger();
    QVERIFY(view()->factor() > 1);
}

void tst_BenchLayout::framesAreCountedInTheView()
{
    const int before = screen()->framesPainted();
    screen()->update();
    QTRY_VERIFY(screen()->framesPainted() > before);
}

void tst_BenchLayout::fullScreenShowsTheScreenAlone()
{
    open("signals");
    QVERIFY(find<QDockWidget>("signals")->isVisible());
    press(Qt::Key_F11);
    QVERIFY(m_window->isFullScreen());
    for (const QDockWidget *dock : m_window->findChildren<QDockWidget *>())
        QVERIFY2(dock->isHidden(), qPrintable(dock->objectName()));
    QVERIFY(m_window->menuBar()->isHidden());
    QCOMPARE(view()->size(), m_window->size());
    press(Qt::Key_3); // keys work without the menu bar
    QCOMPARE(windows()->currentWindow(), int(ClimatePage));
    press(Qt::Key_F11);
    QVERIFY(!m_window->isFullScreen());
    QVERIFY(!m_window->menuBar()->isHidden());
    QVERIFY(find<QDockWidget>("signals")->isVisible());
}

/** The window manager has keys of its own for this. */
void tst_BenchLayout::fullScreenEndsFromOutside()
{
    open("signals");
    press(Qt::Key_F11);
    m_window->showNormal();
    QVERIFY(!m_window->menuBar()->isHidden());
    QVERIFY(find<QDockWidget>("signals")->isVisible());
    m_window->showFullScreen();
    QVERIFY(find<QDockWidget>("signals")->isHidden());
}

void tst_BenchLayout::layoutSuitsTheDisplay_data()
{
    QTest::addColumn<QSize>("display");
    QTest::addColumn<int>("layout");
    QTest::newRow("1024 x 768") << QSize(1024, 768) << int(PanelLayout::Small);
    QTest::newRow("1366 x 768") << QSize(1366, 768) << int(PanelLayout::Small);
    QTest::newRow("1920 x 1040") << QSize(1920, 1040) << int(PanelLayout::Normal);
    QTest::newRow("2560 x 1400") << QSize(2560, 1400) << int(PanelLayout::Wide);
    QTest::newRow("wide and low") << QSize(2560, 800) << int(PanelLayout::Small);
}

void tst_BenchLayout::layoutSuitsTheDisplay()
{
    QFETCH(QSize, display);
    QTEST(int(PanelDocks::layoutFor(display)), "layout");
}

void tst_BenchLayout::noPanelIsClipped_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QSize>("window");
    for (const char *layout : {"layout-small", "layout-normal", "layout-wide"}) {
        for (const QSize size :
             {QSize(1024, 740), QSize(1366, 740), QSize(1920, 1050), QSize(2560, 1400)})
            QTest::addRow("%s at %d", layout, size.width()) << QString(layout) << size;
    }
}

/** The first widget that reaches out of its parent, null for none. Scrolled contents may. */
static const QWidget *firstClipped(const QWidget *parent)
{
    for (const QObject *child : parent->children()) {
        const auto *widget = qobject_cast<const QWidget *>(child);
        if (!widget || !widget->isVisible() || widget->isWindow())
            continue;
        const auto *area = qobject_cast<const QAbstractScrollArea *>(parent->parentWidget());
        const bool isScrolled = area && area->viewport() == parent;
        if (!isScrolled && !parent->rect().contains(widget->geometry()))
            return widget;
        if (const QWidget *inner = isScrolled ? nullptr : firstClipped(widget))
            return inner;
    }
    return nullptr;
}

void tst_BenchLayout::noPanelIsClipped()
{
    QFETCH(QString, layout);
    QFETCH(QSize, window);
    resizeWindow(window);
    command(qPrintable(layout))->trigger();
    for (QDockWidget *dock : m_window->findChildren<QDockWidget *>())
        open(qPrintable(dock->objectName()));
    QCOMPARE(m_window->size(), window); // nothing makes it larger
    QVERIFY2(view()->factor() >= 0.25 && view()->width() >= 320, "the screen needs room too");
    for (QDockWidget *dock : m_window->findChildren<QDockWidget *>()) {
        dock->raise();
        QCoreApplication::processEvents();
        QVERIFY2(m_window->rect().contains(dock->geometry()), qPrintable(dock->objectName()));
        const QWidget *panel = dock->widget();
        const QSize least = panel->minimumSizeHint();
        QVERIFY2(panel->width() >= least.width() && panel->height() >= least.height(),
                 qPrintable(QString("%1 is %2 x %3 and needs %4 x %5")
                                .arg(dock->objectName())
                                .arg(panel->width())
                                .arg(panel->height())
                                .arg(least.width())
                                .arg(least.height())));
        const QWidget *clipped = firstClipped(dock);
        QVERIFY2(!clipped, clipped ? qPrintable(QString("%1 in %2")
                                                    .arg(clipped->metaObject()->className(),
                                                         dock->objectName()))
                                   : "");
    }
}

void tst_BenchLayout::keyBringsAPanelToTheFront()
{
    auto *calls = find<QDockWidget>("calls");
    auto *signalsDock = find<QDockWidget>("signals");
    open("signals");
    QVERIFY(calls->visibleRegion().isEmpty()); // behind the other
    press(Qt::Key_F6);
    QVERIFY(!calls->visibleRegion().isEmpty());
    QVERIFY(command("calls")->isChecked());
    press(Qt::Key_F6);
    QVERIFY(calls->isHidden());
    QVERIFY(!command("calls")->isChecked());
    press(Qt::Key_F6);
    QVERIFY(!calls->visibleRegion().isEmpty());
    QVERIFY(signalsDock->visibleRegion().isEmpty());

    calls->setFloating(true);
    QCoreApplication::processEvents();
    m_window->activateWindow();
    QTRY_VERIFY(m_window->isActiveWindow());
    press(Qt::Key_F6);
    QVERIFY(!calls->isHidden());
    QTRY_VERIFY(calls->isActiveWindow());
    QVERIFY(!qobject_cast<QLineEdit *>(QApplication::focusWidget()));
    press(Qt::Key_2); // keys work in a detached panel too
    QCOMPARE(windows()->currentWindow(), int(VehiclePage));
}

void tst_BenchLayout::layoutPutsPanelsBack()
{
    find<QDockWidget>("calls")->setFloating(true);
    find<QDockWidget>("signals")->hide();
    command("layout-reset")->trigger();
    QVERIFY(!find<QDockWidget>("calls")->isFloating());
    QVERIFY(!find<QDockWidget>("signals")->isHidden());
}

NORDA_TEST_MAIN(tst_BenchLayout)
#include "tst_benchlayout.moc"
