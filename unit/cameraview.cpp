#include "cameraview.h"

#include "palette.h"
#include "rearscene.h"
#include "unitlanguage.h"

#include <QEvent>
#include <QLabel>

static constexpr double feetPerMetre = 3.28084;

static constexpr int margin = 28;
static constexpr int warningHeight = 64;
static constexpr double wallShown = 3; // metres

CameraView::CameraView(QWidget *parent) : QWidget(parent), m_warning(new QLabel(this))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_warning->setObjectName(QStringLiteral("cameraWarning"));
    m_warning->setAlignment(Qt::AlignCenter);
    m_warning->setAutoFillBackground(true);
    QPalette colors = m_warning->palette();
    colors.setColor(QPalette::Window, QColor(0x0D, 0x13, 0x1A, 205));
    colors.setColor(QPalette::WindowText, night::amber);
    m_warning->setPalette(colors);
    m_warning->setFont(night::letters(28));
}

static bool isSame(const RearView &a, const RearView &b)
{
    return a.steeringDegrees == b.steeringDegrees && a.headingDegrees == b.headingDegrees &&
           a.wall == b.wall && a.bayX == b.bayX && a.postX == b.postX && a.postZ == b.postZ;
}

void CameraView::setView(const RearView &view)
{
    if (isSame(view, m_view))
        return;
    m_view = view;
    update();
}

QString CameraView::warning(int width)
{
    return width < 600 ? tr("Check surroundings")
                       : tr("Check the surroundings of the car yourself");
}

void CameraView::updateWarning()
{
    m_warning->setText(warning(width()));
    m_warning->setGeometry(0, height() - warningHeight, width(), warningHeight);
}

void CameraView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    if (!m_warning->text().isEmpty())
        m_warning->setText(warning(m_warning->width()));
    update();
}

QString CameraView::distance() const
{
    const QLocale locale = UnitLanguage::locale();
    const bool isMetric = locale.measurementSystem() == QLocale::MetricSystem;
    const double wall = isMetric ? m_view.wall : m_view.wall * feetPerMetre;
    return (isMetric ? tr("%1 m") : tr("%1 ft")).arg(locale.toString(wall, 'f', 1));
}

void CameraView::drawHeading(QPainter *painter) const
{
    static constexpr int shade = 110; // so that the text reads on any picture
    QLinearGradient dark(0, 0, 0, shade);
    dark.setColorAt(0, QColor(0x0A, 0x0E, 0x13, 230));
    dark.setColorAt(0.6, QColor(0x0A, 0x0E, 0x13, 170));
    dark.setColorAt(1, QColor(0x0A, 0x0E, 0x13, 0));
    painter->fillRect(0, 0, width(), shade, dark);
    const QRect line = rect().adjusted(margin, margin - 8, -margin, 0);
    painter->setFont(night::letters(34));
    painter->setPen(night::text);
    painter->drawText(line, Qt::AlignLeft | Qt::AlignTop, tr("Rear camera"));
    if (m_view.wall > wallShown)
        return;
    painter->setFont(night::letters(40, true));
    painter->setPen(m_view.wall < 0.7   ? night::red
                    : m_view.wall < 1.5 ? night::amber
                                        : night::text);
    painter->drawText(line, Qt::AlignRight | Qt::AlignTop, distance());
}

void CameraView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const RearScene scene(m_view, size());
    scene.drawSurroundings(&painter);
    scene.drawGuides(&painter);
    drawHeading(&painter);
}
