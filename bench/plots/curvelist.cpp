#include "plots/curvelist.h"

#include "session/session.h"
#include "window/benchsettings.h"

#include <algorithm>

static const QString curvesKey = QStringLiteral("plots/curves");

CurveList::CurveList(QObject *parent) : QObject(parent)
{
    for (const QString &name : BenchSettings().value(curvesKey).toStringList())
        addOne(name);
}

CurveList::~CurveList() = default;

QStringList CurveList::names() const
{
    QStringList names;
    for (const Item &item : m_items)
        names.append(item.curve->name());
    return names;
}

bool CurveList::addOne(const QString &name)
{
    const std::optional<CurveName> parsed = CurveName::parse(name);
    if (!parsed || names().contains(name))
        return false;
    m_items.push_back({std::make_unique<Curve>(name, *parsed), freeColor()});
    return true;
}

bool CurveList::add(const QStringList &names)
{
    bool isAdded = false;
    for (const QString &name : names)
        isAdded = addOne(name) || isAdded;
    if (isAdded)
        store();
    return isAdded;
}

void CurveList::remove(const QString &name)
{
    const auto found = std::find_if(m_items.begin(), m_items.end(), [&name](const Item &item) {
        return item.curve->name() == name;
    });
    if (found == m_items.end())
        return;
    m_items.erase(found);
    store();
}

void CurveList::clear()
{
    m_items.clear();
    store();
}

void CurveList::store()
{
    BenchSettings().setValue(curvesKey, names());
    emit changed();
}

void CurveList::catchUp(const Session *session)
{
    for (const Item &item : m_items)
        item.curve->catchUp(session->journal(), session->quantities());
}

void CurveList::restart()
{
    for (const Item &item : m_items)
        item.curve->clear();
}

const QVector<QColor> &CurveList::colors()
{
    static const QVector<QColor> colors = {
        QColor(0x2E, 0x86, 0xDE), QColor(0xD9, 0x70, 0x1A), QColor(0x1E, 0x9E, 0x54),
        QColor(0xE0, 0x48, 0x93), QColor(0x8E, 0x6A, 0xE0), QColor(0x12, 0x9A, 0xA0),
        QColor(0xB0, 0x80, 0x0B), QColor(0x7C, 0x88, 0x94),
    };
    return colors;
}

/** The colour that the fewest curves have. */
QColor CurveList::freeColor() const
{
    const auto uses = [this](const QColor &color) {
        return std::count_if(m_items.begin(), m_items.end(),
                             [&color](const Item &item) { return item.color == color; });
    };
    return *std::min_element(
        colors().begin(), colors().end(),
        [&uses](const QColor &one, const QColor &other) { return uses(one) < uses(other); });
}
