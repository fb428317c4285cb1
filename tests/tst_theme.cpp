#include "benchfixture.h"
#include "pages.h"
#include "palette.h"
#include "panels/audiomonitor.h"
#include "tools/themecolors.h"
#include "window/theme.h"

#include <QActionGroup>
#include <QDialog>
#include <QMenu>
#include <QStyle>
#include <QStyleFactory>
#include <QToolButton>
#include <QToolTip>

#include <cmath>

using norda::VtqAdaptor;
using theme::Mode;

/** The bench's own windows are light or dark, and the unit's screen is the same in both. */
class tst_Theme : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void cleanup() { removeBench(); }

    void textsHaveContrast_data();
    void textsHaveContrast();
    void desktopIsJudged_data();
    void desktopIsJudged();
    void modeIsGivenRememberedOrAuto();
    void windowsFollow_data();
    void windowsFollow();
    void desktopIsFollowed();
    void chosenModeStays();
    void iconsFollow();
    void screenIsTheSame_data();
    void screenIsTheSame();
    void stylesSeeTheUnitsPalette();

private:
    void showBench(std::optional<Mode> mode = {})
    {
        m_options.theme = mode;
        makeBench();
    }
    Theme *theme() const { return m_window->findChild<Theme *>(); }
    void choose(const char *name) const { find<QAction>(name)->trigger(); }
};

/** Relative luminance as the accessibility guidelines for the web define it. */
static double luminance(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

static double contrast(const QColor &one, const QColor &other)
{
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return qMax(a, b) / qMin(a, b);
}

static QPalette twoTones(const QColor &window, const QColor &text)
{
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    return palette;
}

static const QPalette lightDesktop = twoTones(QColor(0xFF, 0xFE, 0xF8), Qt::black);
static const QPalette darkDesktop = twoTones(QColor(0x20, 0x20, 0x20), Qt::white);

void tst_Theme::textsHaveContrast_data()
{
    using theme::Colors;
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("backdrop");
    const std::pair<const char *, QColor Colors::*> texts[] = {
        {"text", &Colors::text},     {"secondary", &Colors::secondary},
        {"accent", &Colors::accent}, {"amber", &Colors::amber},
        {"red", &Colors::red},       {"green", &Colors::green},
        {"violet", &Colors::violet},
    };
    for (const bool light : {true, false}) {
        const Colors &c = theme::colors(light);
        const QByteArray mode = light ? "light: " : "dark: ";
        for (const auto &[name, text] : texts) {
            QTest::newRow(mode + name + " on the window") << c.*text << c.window;
            QTest::newRow(mode + name + " on a panel") << c.*text << c.panel;
        }
        QTest::newRow(mode + "selected text") << c.text << c.selection;
    }
}

void tst_Theme::textsHaveContrast()
{
    QFETCH(QColor, text);
    QFETCH(QColor, backdrop);
    const double found = contrast(text, backdrop);
    QVERIFY2(found >= 4.5, qPrintable(QString::number(found)));
}

void tst_Theme::desktopIsJudged_data()
{
    QTest::addColumn<QPalette>("palette");
    QTest::addColumn<bool>("isLight");
    QTest::newRow("light") << lightDesktop << true;
    QTest::newRow("dark") << darkDesktop << false;
    QTest::newRow("Qt's own, so unknown")
        << QScopedPointer<QStyle>(QStyleFactory::create("Fusion"))->standardPalette() << false;
}

void tst_Theme::desktopIsJudged()
{
    QFETCH(QPalette, palette);
    QFETCH(bool, isLight);
    QCOMPARE(Theme::isLightDesktop(palette), isLight);
}

void tst_Theme::modeIsGivenRememberedOrAuto()
{
    showBench();
    QCOMPARE(theme()->mode(), Mode::Auto);
    choose("theme-light");
    const auto restart = [this](std::optional<Mode> mode) {
        removeBench();
        m_options.theme = mode;
        makeRig();
        showWindow();
        return theme()->mode();
    };
    QCOMPARE(restart({}), Mode::Light);
    QVERIFY(find<QAction>("theme-light")->isChecked());
    QCOMPARE(restart(Mode::Dark), Mode::Dark);
    QCOMPARE(restart({}), Mode::Light); // an option is for one run
}

void tst_Theme::windowsFollow_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind :
         {"panel", "floating panel", "panel that floated", "dialog", "menu", "tooltip"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void tst_Theme::windowsFollow()
{
    QFETCH(QString, kind);
    showBench(Mode::Dark);
    QDialog dialog(m_window.data());
    auto *dock = find<QDockWidget>("audio");
    auto *menu = m_window->findChild<QMenu *>();
    dock->setFloating(kind.contains("float"));
    dock->show();
    dock->setFloating(kind == "floating panel");
    dialog.show();
    menu->popup({});
    const auto window = [&] {
        return kind == "dialog"    ? dialog.palette()
               : kind == "menu"    ? menu->palette()
               : kind == "tooltip" ? QToolTip::palette()
                                   : m_window->findChild<AudioMonitor *>()->palette();
    };
    for (const bool light : {false, true, false}) {
        choose(light ? "theme-light" : "theme-dark");
        for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Text})
            QCOMPARE(window().color(role), theme::palette(light).color(role));
    }
    menu->hide();
}

void tst_Theme::desktopIsFollowed()
{
    showBench(Mode::Auto);
    QVERIFY(!theme()->isLight());
    const QPalette unit = QApplication::palette();
    for (const bool light : {true, false}) {
        QApplication::setPalette(light ? lightDesktop : darkDesktop);
        QTRY_COMPARE(theme::isLight(m_window->palette()), light);
        QCOMPARE(QApplication::palette(), unit);
    }
}

void tst_Theme::chosenModeStays()
{
    showBench(Mode::Light);
    QApplication::setPalette(darkDesktop);
    QTRY_VERIFY(QApplication::palette() != darkDesktop);
    QVERIFY(theme::isLight(m_window->palette()));
    choose("theme-auto"); // the desktop was followed all the while
    QVERIFY(!theme::isLight(m_window->palette()));
}

void tst_Theme::iconsFollow()
{
    showBench(Mode::Dark);
    const auto color = [this] {
        const QImage icon = find<QToolButton>("play")->icon().pixmap(48).toImage();
        return icon.pixelColor(icon.width() / 3, icon.height() / 2);
    };
    QCOMPARE(color(), theme::colors(false).text);
    choose("theme-light");
    QCOMPARE(color(), theme::colors(true).text);
}

void tst_Theme::screenIsTheSame_data()
{
    QTest::addColumn<int>("page");
    for (const Page &page : pages)
        QTest::newRow(page.name) << page.window;
}

void tst_Theme::screenIsTheSame()
{
    QFETCH(int, page);
    showBench(Mode::Dark);
    session()->drive()->pause();
    const auto picture = [this, page] {
        windows()->rebuildWindow(page);
        windows()->openWindow(page);
        emit VtqAdaptor::instance()->vehicleInfoText("Rear left door", "is open");
        emit VtqAdaptor::instance()->gauCustomControlLabelsNotify({"Street", "Track"}, "\1\2");
        QTest::qWait(600); // animations end
        return screen()->grab().toImage();
    };
    const QImage dark = picture();
    choose("theme-light");
    QCOMPARE(screen()->grab().toImage(), dark);
    QCOMPARE(picture(), dark); // built in the light
}

/** A widget with a style sheet takes the application's palette and not its parent's. */
void tst_Theme::stylesSeeTheUnitsPalette()
{
    showBench(Mode::Light);
    windows()->openWindow(PageId::VehiclePage);
    for (const char *name : {"key_settings", "bkg_top_pop", "Txt_psi_front_left"}) {
        const QPalette palette = screen()->widgetNamed(name)->palette();
        QCOMPARE(palette.color(QPalette::Highlight), night::palette().color(QPalette::Highlight));
    }
}

NORDA_TEST_MAIN(tst_Theme)
#include "tst_theme.moc"
