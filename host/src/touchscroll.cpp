#include "cm/colorcontrolnooutline.h"
#include "cm/scrollmanage.h"

#include <QScrollArea>
#include <QScroller>

namespace cm {

static QVariant setting(QScrollerProperties::OvershootPolicy policy)
{
    return QVariant::fromValue(policy);
}

ScrollManage::ScrollManage(QScrollArea *area, int direction, int mode) : QObject(area)
{
    Q_UNUSED(direction) // the content's size decides; nothing scrolls past its end
    Q_UNUSED(mode)
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    QScroller::grabGesture(area->viewport(), QScroller::LeftMouseButtonGesture);
    QScroller *scroller = QScroller::scroller(area->viewport());
    QScrollerProperties properties = scroller->scrollerProperties();
    const auto off = setting(QScrollerProperties::OvershootAlwaysOff);
    properties.setScrollMetric(QScrollerProperties::HorizontalOvershootPolicy, off);
    properties.setScrollMetric(QScrollerProperties::VerticalOvershootPolicy, off);
    scroller->setScrollerProperties(properties);
}

ScrollManage::~ScrollManage() = default;

struct ColorGroup
{
    const char *name;
    const char *styleSheet;
};

// clang-format off
static constexpr ColorGroup groups[] = {
    {"ColorGroup7", "QAbstractButton{border:none;outline:none;background:transparent;"
                    "color:#F4F7FA;border-radius:12px;}"
                    "QAbstractButton:pressed{background:rgba(54,197,240,60);}"},
};
// clang-format on

void ColorControlNoOutLine::setColorGroup(QWidget *widget, const QString &group)
{
    for (const ColorGroup &known : groups) {
        if (group != QLatin1String(known.name))
            continue;
        widget->setStyleSheet(QLatin1String(known.styleSheet));
        widget->setProperty("colorGroup", group);
    }
}

} // namespace cm
