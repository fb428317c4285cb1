// Maps and formulas of any content. What is a map is bound to a DBC file and given frames; what is
// a formula is evaluated.

#include "dbc/framedecoder.h"

#include <cmath>

static const char description[] = "BO_ 1 First: 8 U\n"
                                  " SG_ A : 0|8@1- (0.5,0) [0|0] \"\" D\n"
                                  " SG_ B M : 8|8@1+ (1,0) [0|0] \"\" D\n"
                                  " SG_ S m1 : 16|8@1+ (1,0) [0|0] \"\" D\n"
                                  "BO_ 2147483650 Second: 8 U\n"
                                  " SG_ S : 0|16@0+ (1,0) [0|0] \"\" D\n"
                                  "VAL_ 1 A 0 \"OFF\" 1 \"ON\" ;\n";

static bool isOneLine(const QString &text)
{
    return !text.isEmpty() && !text.contains(QLatin1Char('\n'));
}

static void evaluate(const QString &text)
{
    QString error;
    const auto formula = module::Formula::compile(text, &error);
    if (!formula && !isOneLine(error))
        std::abort();
    for (const double x : {0.0, 1.0, -2.5, 1e308, std::nan("")}) {
        const auto value = formula ? formula->evaluate(x) : std::nullopt;
        if (value && !std::isfinite(*value))
            std::abort();
    }
}

/** Times run on; a path's values are of the map and keep its interval. */
static void decode(const module::SignalMap &map, const module::Dbc &dbc)
{
    module::FrameDecoder decoder(map, dbc);
    QVector<qint64> last(map.entries().size(), -1);
    for (int turn = 0; turn < 64; ++turn) {
        const qint64 ms = turn * turn * 7;
        const quint8 data[8] = {quint8(turn), quint8(turn % 3), quint8(turn / 2)};
        const quint32 id = turn % 2 ? 1 : 2147483650u;
        for (const module::PathValue &value : decoder.decode(ms, id, data, 1 + turn % 8)) {
            const module::MapEntry &entry = map.entries().at(value.entry);
            qint64 &before = last[value.entry];
            if (!value.value.isValid() || (before >= 0 && ms - before < entry.intervalMs))
                std::abort();
            before = ms;
        }
    }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray content(reinterpret_cast<const char *>(data), int(size));
    evaluate(QString::fromUtf8(content));

    QString error;
    static const auto dbc = module::Dbc::parse(description, QStringLiteral("car.dbc"), &error);
    const auto map = module::SignalMap::parse(content, QStringLiteral("car.json"), &error);
    if (!map) {
        if (!isOneLine(error))
            std::abort(); // one line says what is wrong
        return 0;
    }
    const module::SignalBinding binding = module::bindSignals(*map, *dbc);
    for (const QString &remark : map->remarks() + binding.remarks) {
        if (!isOneLine(remark))
            std::abort();
    }
    for (const int missing : binding.missing) {
        if (!isOneLine(module::missingSignal(map->entries().at(missing))))
            std::abort();
    }
    decode(*map, *dbc);
    return 0;
}
