#include "busycar.h"

#include "quantities.h"

#include <QDir>
#include <QFile>

namespace busycar {

static constexpr int signalsPerFrame = 8;
static constexpr int messages = 32;
static constexpr int quantities = int(module::Quantity::Count);
static constexpr double highestByte = 255;

/** Of one step of a byte; 0 to 255 are the range of its quantity. */
static double factorOf(module::Quantity quantity)
{
    const module::QuantityInfo &info = module::quantityInfo(quantity);
    return (info.highest - info.lowest) / highestByte;
}

/** A byte for each signal. */
static QByteArray dbc()
{
    QString text;
    for (int i = 0; i < messages * signalsPerFrame; ++i) {
        const int place = i % signalsPerFrame;
        if (place == 0)
            text +=
                QStringLiteral("BO_ %1 M%1: 8 U\n").arg(engineId + quint32(i / signalsPerFrame));
        const auto quantity = module::Quantity(i % quantities);
        text += QStringLiteral(" SG_ S%1 : %2|8@1+ (%3,%4) [0|0] \"\" U\n")
                    .arg(i)
                    .arg(8 * place)
                    .arg(factorOf(quantity), 0, 'g', 12)
                    .arg(module::quantityInfo(quantity).lowest);
    }
    return text.toLatin1();
}

static QByteArray map()
{
    static constexpr int usualIntervalMs = 100;
    QStringList entries;
    for (int i = 0; i < quantities; ++i)
        entries.append(QStringLiteral("\"%1\": {\"dbc2vss\": {\"signal\": \"S%2\", "
                                      "\"interval_ms\": %3}}")
                           .arg(QLatin1String(module::quantityInfo(module::Quantity(i)).path))
                           .arg(i)
                           .arg(i == 0 ? engineIntervalMs : usualIntervalMs));
    return "{" + entries.join(QLatin1Char(',')).toLatin1() + "}";
}

module::CanFrame frame(int number)
{
    QByteArray data;
    for (int i = 0; i < signalsPerFrame; ++i)
        data.append(char(number / (messages + 16 * (number + i) % 5) + 31 * i));
    return {engineId + quint32(number % messages), false, data};
}

char engineByte(double rpm)
{
    return char(qRound(rpm / factorOf(module::Quantity::EngineSpeed)));
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

module::CarFiles filesIn(const QDir &folder)
{
    const module::CarFiles files = {folder.filePath(QStringLiteral("car.dbc")),
                                    folder.filePath(QStringLiteral("car.json"))};
    write(files.dbc, dbc());
    write(files.map, map());
    return files;
}

} // namespace busycar
