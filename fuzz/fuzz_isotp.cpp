// Frames of any content at any time for one end of a transport connection, which sends messages of
// its own in between. It must stay within its limits, and come to rest when the bus is silent.

#include "fuzzinput.h"
#include "live/isotp.h"

static constexpr quint32 tester = 0x7E0;
static constexpr quint32 car = 0x7E8;

static module::IsoTp connection(FuzzInput *input)
{
    module::IsoTp::Timing timing;
    timing.blockSize = input->byte();
    timing.separationMs = input->byte() & 0x7F;
    timing.padding = input->byte() - 1;
    return module::IsoTp({tester, car, false}, timing);
}

static void check(module::IsoTp *end)
{
    for (const module::CanFrame &frame : end->takeFrames()) {
        if (frame.id != tester || frame.data.isEmpty() || frame.data.size() > 8)
            std::abort();
    }
    for (const QByteArray &message : end->takeMessages()) {
        if (message.isEmpty() || message.size() > module::IsoTp::LongestMessage)
            std::abort();
    }
    if (end->takeError().contains(QLatin1Char('\n')))
        std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput input(data, size);
    module::IsoTp end = connection(&input);
    qint64 nowMs = 0;
    while (!input.atEnd()) {
        const uint8_t step = input.byte();
        nowMs += step & 0x3F;
        if (step & 0x80)
            end.send(input.bytes(), nowMs);
        else
            end.receive({car, false, input.bytes()}, nowMs);
        if (step & 0x40)
            end.advance(nowMs);
        check(&end);
    }
    // Silence: everything ends by itself, a message of 4095 bytes after so many frames.
    for (int i = 0; end.nextDueMs() >= 0; ++i) {
        if (i > module::IsoTp::LongestMessage)
            std::abort();
        nowMs = qMax(nowMs, end.nextDueMs());
        end.advance(nowMs);
        check(&end);
    }
    return 0;
}
