#include "window/theme.h"

#include "palette.h"
#include "screen.h"
#include "window/benchsettings.h"

#include <QActionGroup>
#include <QApplication>
#include <QEvent>
#include <QStyle>
#include <QStyleFactory>
#include <QTimer>
#include <QToolTip>

#include <memory>

static const QString themeSetting = QStringLiteral("theme");

static theme::Mode rememberedMode()
{
    theme::Mode mode = theme::Mode::Auto;
    theme::modeFromName(BenchSettings().value(themeSetting).toString(), &mode);
    return mode;
}

/** The palette that Qt's platform theme gives, which the unit's own replaces. */
static QPalette desktopPalette()
{
    QApplication::setPalette(QPalette());
    QPalette desktop = QApplication::palette();
    QApplication::setPalette(night::palette());
    return desktop;
}

Theme::Theme(QWidget *window, std::optional<Mode> mode)
    : QObject(window)
    , m_window(window)
    , m_mode(mode.value_or(rememberedMode()))
    , m_isDesktopLight(isLightDesktop(desktopPalette()))
    , m_choices(new QActionGroup(this))
{
    apply();
    qApp->installEventFilter(this);
}

Theme::~Theme() = default;

void Theme::offer(Mode mode, QAction *choice)
{
    choice->setCheckable(true);
    choice->setChecked(mode == m_mode);
    m_choices->addAction(choice);
    connect(choice, &QAction::triggered, this, [this, mode] { set(mode); });
    connect(this, &Theme::chosen, choice,
            [choice, mode](Mode chosen) { choice->setChecked(chosen == mode); });
}

bool Theme::isLight() const
{
    return m_mode == Mode::Light || (m_mode == Mode::Auto && m_isDesktopLight);
}

void Theme::set(Mode mode)
{
    BenchSettings().setValue(themeSetting, theme::nameOf(mode));
    m_mode = mode;
    apply();
    emit chosen(mode);
}

// Qt itself gives a light palette where nobody has chosen one.
bool Theme::isLightDesktop(const QPalette &palette)
{
    const std::unique_ptr<QStyle> fusion(QStyleFactory::create(QStringLiteral("Fusion")));
    const auto backdrop = [](const QPalette &p) { return p.color(QPalette::Window); };
    return theme::isLight(palette) && backdrop(palette) != backdrop(fusion->standardPalette());
}

void Theme::apply()
{
    const QPalette palette = theme::palette(isLight());
    m_window->setPalette(palette);
    QToolTip::setPalette(palette);
}

/** Someone has given the application the desktop's new palette; that place is the unit's. */
void Theme::followDesktop()
{
    if (QApplication::palette() == night::palette())
        return;
    m_isDesktopLight = isLightDesktop(QApplication::palette());
    QApplication::setPalette(night::palette());
    apply();
}

/** A dialog, menu or floating panel of the main window, and not one of the page on the screen. */
bool Theme::isOwnWindow(const QObject *object) const
{
    const auto *widget = qobject_cast<const QWidget *>(object);
    if (!widget || !widget->isWindow() || widget == m_window)
        return false;
    while (widget && widget != m_window && !qobject_cast<const Screen *>(widget))
        widget = widget->parentWidget();
    return widget == m_window;
}

// Other windows inherit no palette from their parents unless told to.
bool Theme::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && isOwnWindow(watched))
        static_cast<QWidget *>(watched)->setAttribute(Qt::WA_WindowPropagation);
    else if (event->type() == QEvent::ApplicationPaletteChange && watched == qApp)
        QTimer::singleShot(0, this, &Theme::followDesktop);
    return false;
}
