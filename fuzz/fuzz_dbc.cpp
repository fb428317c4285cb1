// DBC files of any content: refused with one line, or messages whose frames are decoded, built and
// decoded again.

#include "dbc/framebuilder.h"
#include "dbc/frameplan.h"

static QByteArray pattern(int size, int seed)
{
    QByteArray data(size, '\0');
    for (int i = 0; i < size; ++i)
        data[i] = char(seed * 37 + i * seed);
    return data;
}

static std::vector<module::DecodedSignal> decode(const module::FramePlan &plan,
                                                 const QByteArray &data)
{
    std::vector<module::DecodedSignal> decoded(size_t(plan.capacity()));
    const int count = plan.decode(reinterpret_cast<const quint8 *>(data.constData()), data.size(),
                                  decoded.data());
    if (count > plan.capacity())
        std::abort();
    decoded.resize(size_t(count));
    return decoded;
}

/** What a frame carries, set on an empty one, is what that one carries. */
static void rebuild(const module::DbcMessage &message, const module::FramePlan &plan,
                    const QByteArray &data)
{
    for (const module::DecodedSignal &signal : decode(plan, data)) {
        module::FrameBuilder builder(message);
        if (!builder.setRaw(signal.signal(), signal.raw()))
            continue; // it does not fit into the message, or its multiplexor does not
        bool isThere = false;
        for (const module::DecodedSignal &built : decode(plan, builder.data()))
            isThere |= built.signal() == signal.signal() && built.raw() == signal.raw();
        if (!isThere)
            std::abort();
        builder.set(signal.signal(), signal.value());
    }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray content(reinterpret_cast<const char *>(data), int(size));
    QString error;
    const auto dbc = module::Dbc::parse(content, QStringLiteral("car.dbc"), &error);
    if (!dbc) {
        if (error.isEmpty() || error.contains(QLatin1Char('\n')))
            std::abort(); // one line says what is wrong
        return 0;
    }
    for (const QString &remark : dbc->remarks()) {
        if (remark.isEmpty() || remark.contains(QLatin1Char('\n')))
            std::abort();
    }
    for (const module::DbcMessage &message : dbc->messages()) {
        const module::FramePlan plan(message);
        for (const int length : {message.length, 0, 3, 8, 64, 70})
            decode(plan, pattern(length, length));
        rebuild(message, plan, pattern(message.length, 5));
        rebuild(message, plan, QByteArray(message.length, '\0'));
    }
    return 0;
}
