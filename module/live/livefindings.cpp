#include "livesource.h"
#include "pagefindings.h"

#include <QJsonArray>

namespace module {

// What a person is told of a live drive.

static constexpr int usualBitrate = 500000;
static constexpr int bitsPerKbit = 1000;

static QString number(double value)
{
    return QString::number(value, 'g', 6);
}

/** A value with its age, or since when there is none. */
QString LiveSource::valueText(Quantity quantity) const
{
    const LiveValues::Value &value = m_values.of(quantity);
    const QString name = QLatin1String(quantityInfo(quantity).name);
    const double age = double(liveMs() - value.ms) / 1000;
    if (value.ms < 0)
        return QStringLiteral("%1: has not come yet").arg(name);
    if (!value.isKnown)
        return QStringLiteral("%1: has not come for %2 s").arg(name, QString::number(age, 'f', 0));
    const QString shown =
        QStringLiteral("%1 %2").arg(number(shownValue(quantity, value.value)), shownUnit(quantity));
    return QStringLiteral("%1: %2, %3 s ago")
        .arg(name, shown.trimmed(), QString::number(age, 'f', 1));
}

QString LiveSource::whyMissing() const
{
    if (!m_isConnected)
        return QStringLiteral("Without a connection");
    if (m_poller.present().contains(true))
        return m_decoder ? QStringLiteral("Neither in the map nor known to this car")
                         : QStringLiteral("Not known to this car");
    return m_decoder ? QStringLiteral("Not in the map") : QStringLiteral("Not answered yet");
}

QString LiveSource::busText() const
{
    const bool isStated = m_link->bitrate() > 0;
    const int bitrate = isStated ? m_link->bitrate() : usualBitrate;
    const double load = 100.0 * double(m_bits.rate) / bitrate;
    const QString text = QStringLiteral("%1 frames a second, %2 % of a bus of %3 kbit/s")
                             .arg(QString::number(m_frames.rate), QString::number(load, 'f', 0),
                                  number(double(bitrate) / bitsPerKbit));
    return isStated ? text : text + QStringLiteral(", assumed without ?bitrate=N");
}

QStringList LiveSource::connectionFindings() const
{
    QStringList lines;
    lines.append(m_isConnected ? m_link->description()
                               : QStringLiteral("No connection: %1").arg(m_lossReason));
    lines.append(m_poller.state());
    if (m_requests.total > 0)
        lines.append(QStringLiteral("%1 of %2 requests were answered, %3 in the last second")
                         .arg(m_answers.total)
                         .arg(m_requests.total)
                         .arg(m_answers.rate));
    if (m_link->isListening())
        lines.append(busText());
    if (m_link->isListening() && !m_decoder)
        lines.append(QStringLiteral("The car's own frames need --dbc FILE and --map FILE"));
    if (!m_codes.isEmpty())
        lines.append(QStringLiteral("Trouble codes: ") + m_codes.join(QStringLiteral(", ")));
    if (m_losses > 0)
        lines.append(QStringLiteral("The connection was lost %1 times").arg(m_losses));
    if (m_log && !m_log->error().isEmpty())
        lines.append(m_log->error());
    return m_decoder ? lines + m_decoder->remarks() : lines;
}

QStringList LiveSource::findings() const
{
    QStringList lines;
    const QVector<Findings> pages = findingsByPage();
    for (const Findings &page : pages)
        lines += page.present;
    return lines;
}

QVector<Findings> LiveSource::findingsByPage() const
{
    QVector<Findings> pages = {{QStringLiteral("Connection"), connectionFindings(), {}}};
    for (Findings page : groupsByPage(m_present)) {
        page.present.clear(); // told by the values
        page.whyMissing = whyMissing();
        for (int i = 0; i < m_present.size(); ++i) {
            if (m_present.at(i) && pageName(quantityInfo(Quantity(i)).page) == page.heading)
                page.present.append(valueText(Quantity(i)));
        }
        pages.append(page);
    }
    return pages;
}

QJsonObject LiveSource::statistics() const
{
    return {{"kind", "live"},
            {"frames", m_frames.total},
            {"requests", m_requests.total},
            {"answers", m_answers.total},
            {"losses", m_losses},
            {"droppedValues", m_values.droppedValues()},
            {"troubleCodes", QJsonArray::fromStringList(m_codes)}};
}

} // namespace module
