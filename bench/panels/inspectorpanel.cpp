#include "panels/inspectorpanel.h"

#include "palette.h"
#include "screen.h"
#include "tools/imagenames.h"
#include "values.h"

#include <QApplication>
#include <QMetaProperty>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QToolButton>
#include <QVBoxLayout>

/** A frame over the screen that does not take touches. */
class InspectorFrame : public QWidget
{
public:
    explicit InspectorFrame(QWidget *parent) : QWidget(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setPen(QPen(night::amber, 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
};

InspectorPanel::InspectorPanel(Screen *screen, QWidget *parent)
    : QWidget(parent), m_screen(screen), m_pick(new QToolButton), m_text(new QPlainTextEdit)
{
    m_pick->setObjectName(QStringLiteral("pick"));
    m_pick->setText(tr("Pick widget"));
    m_pick->setCheckable(true);
    m_pick->setToolTip(tr("Move over the screen to inspect a widget; click to keep it."));
    m_text->setObjectName(QStringLiteral("inspected"));
    m_text->setReadOnly(true);
    m_text->setPlaceholderText(tr("No widget picked."));
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_pick);
    column->addWidget(m_text, 1);
    connect(m_pick, &QToolButton::toggled, this, &InspectorPanel::setPicking);
}

InspectorPanel::~InspectorPanel()
{
    delete m_frame;
}

void InspectorPanel::setPicking(bool on)
{
    if (on) {
        m_frame = new InspectorFrame(m_screen);
        QApplication::setOverrideCursor(Qt::CrossCursor);
        qApp->installEventFilter(this);
    } else {
        qApp->removeEventFilter(this);
        QApplication::restoreOverrideCursor();
        delete m_frame;
    }
}

bool InspectorPanel::eventFilter(QObject *watched, QEvent *event)
{
    const bool isPointer =
        event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonPress ||
        event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::MouseButtonDblClick;
    const auto *widget = qobject_cast<QWidget *>(watched);
    if (!isPointer || !widget || (widget != m_screen && !m_screen->isAncestorOf(widget)))
        return false;
    const auto *pointer = static_cast<QMouseEvent *>(event);
    pointAt(widget->mapTo(m_screen, pointer->pos()));
    if (event->type() == QEvent::MouseButtonRelease)
        m_pick->setChecked(false);
    return true;
}

/** The topmost widget at a place, whether it takes touches or not. */
QWidget *InspectorPanel::deepestAt(QWidget *widget, QPoint place) const
{
    const QObjectList &children = widget->children();
    for (auto child = children.crbegin(); child != children.crend(); ++child) {
        auto *inner = qobject_cast<QWidget *>(*child);
        if (inner && inner != m_frame && inner->isVisible() && inner->geometry().contains(place))
            return deepestAt(inner, place - inner->pos());
    }
    return widget;
}

void InspectorPanel::pointAt(QPoint place)
{
    m_widget = deepestAt(m_screen, place);
    m_frame->setGeometry(QRect(m_widget->mapTo(m_screen, QPoint()), m_widget->size()));
    m_frame->show();
    m_frame->raise();
    showDescription();
}

void InspectorPanel::showDescription()
{
    m_text->setPlainText(describe(m_screen, m_widget).join(QLatin1Char('\n')));
}

static QString line(const QString &title, const QString &text)
{
    return QStringLiteral("%1: %2").arg(title, text);
}

static QString rectText(const QRect &rect)
{
    return QStringLiteral("%1 x %2 at (%3, %4)")
        .arg(rect.width())
        .arg(rect.height())
        .arg(rect.x())
        .arg(rect.y());
}

/** The signals of an object that have receivers. */
static QStringList connectedSignals(const QObject *object)
{
    struct Access : QObject
    {
        using QObject::isSignalConnected;
    };
    bool (QObject::*const isConnected)(const QMetaMethod &) const = &Access::isSignalConnected;
    QStringList names;
    const QMetaObject *meta = object->metaObject();
    for (int i = 0; i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() == QMetaMethod::Signal && (object->*isConnected)(method))
            names.append(QString::fromLatin1(method.methodSignature()));
    }
    names.removeDuplicates();
    return names;
}

/** The properties of its own class, without those of every widget. */
static QStringList ownProperties(const QWidget *widget)
{
    QStringList lines;
    const QMetaObject *meta = widget->metaObject();
    for (int i = QWidget::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        const QString text = module::jsonText(property.read(widget));
        if (!text.isEmpty() && text != QLatin1String("null"))
            lines.append(
                line(QStringLiteral("    ") + QLatin1String(property.name()), text.left(200)));
    }
    return lines;
}

QStringList InspectorPanel::describe(const Screen *screen, const QWidget *widget)
{
    const auto yesOrNo = [](bool yes) { return yes ? tr("yes") : tr("no"); };
    QStringList parents;
    for (const QWidget *parent = widget->parentWidget(); parent && parent != screen;
         parent = parent->parentWidget())
        parents.append(screen->nameOf(parent));
    const QRect onScreen(widget->mapTo(screen, QPoint()), widget->size());
    QStringList lines = {
        line(tr("Name"), screen->nameOf(widget)),
        line(tr("Class"), QString::fromLatin1(widget->metaObject()->className())),
        line(tr("On the screen"), rectText(onScreen)),
        line(tr("In its parent"), rectText(widget->geometry())),
        line(tr("Parents"), parents.join(QStringLiteral(" < "))),
        line(tr("Enabled"), yesOrNo(widget->isEnabled())),
    };
    const QVariant text = widget->property("text");
    if (text.isValid())
        lines.append(line(tr("Text"), text.toString()));
    const QStringList images = imagesShownBy(widget);
    if (!images.isEmpty())
        lines.append(line(tr("Image"), images.join(QStringLiteral(", "))));
    const QStringList connected = connectedSignals(widget);
    lines.append(line(tr("Connected signals"), connected.isEmpty() ? tr("none") : QString()));
    for (const QString &signal : connected)
        lines.append(QStringLiteral("    ") + signal);
    lines.append(line(tr("Class properties"), QString()));
    return lines + ownProperties(widget);
}
