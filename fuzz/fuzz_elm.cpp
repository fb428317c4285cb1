// Bytes of any content from an adapter, in pieces at any time, while requests are made. Whatever it
// answers, each request ends, in answers or in one line that says what is wrong.

#include "fuzzinput.h"
#include "live/elm327.h"

static bool check(module::Elm327 *adapter)
{
    bool isReady = false;
    adapter->takeBytes();
    for (const module::CanFrame &frame : adapter->takeSeenFrames()) {
        if (!module::isObdAnswer(frame) || frame.data.size() > 8)
            std::abort();
    }
    for (const module::ObdEvent &event : adapter->takeEvents()) {
        const bool isAnswered = event.kind == module::ObdEvent::Answered;
        const bool isFailed =
            event.kind == module::ObdEvent::Failed || event.kind == module::ObdEvent::Lost;
        if (isAnswered == event.answers.isEmpty() || isFailed == event.text.isEmpty() ||
            event.text.contains(QLatin1Char('\n')))
            std::abort();
        isReady = event.kind != module::ObdEvent::Lost;
    }
    return isReady;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static constexpr int mostSteps = 1000;
    static const QByteArray requests[] = {QByteArray::fromHex("010c"), QByteArray::fromHex("03")};
    FuzzInput input(data, size);
    module::Elm327 adapter;
    qint64 nowMs = 0;
    adapter.start(nowMs);
    while (!input.atEnd()) {
        const uint8_t step = input.byte();
        nowMs += (step & 0x0F) * 100;
        adapter.receive(input.bytes(), nowMs);
        if (step & 0x10)
            adapter.advance(nowMs);
        if (check(&adapter))
            adapter.ask({requests[step >> 7], 0x7E8, step >> 5 & 3}, nowMs);
        adapter.advance(nowMs);
    }
    // Silence: what is outstanding ends by itself.
    for (int i = 0; adapter.nextDueMs() >= 0; ++i) {
        if (i > mostSteps)
            std::abort();
        nowMs = qMax(nowMs, adapter.nextDueMs());
        adapter.advance(nowMs);
        check(&adapter);
    }
    return 0;
}
