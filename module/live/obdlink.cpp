#include "obdlink.h"

namespace module {

static constexpr quint32 functional = 0x7DF;
static constexpr quint32 firstRequest = 0x7E0;
static constexpr quint32 firstAnswer = 0x7E8;
static constexpr quint32 lastAnswer = 0x7EF;
// Of 29 bits: kind, receiver and sender. F1 is the tester.
static constexpr quint32 kindMask = 0x1FFF0000;
static constexpr quint32 toAll = 0x18DB0000;
static constexpr quint32 toOne = 0x18DA0000;
static constexpr quint32 receiverMask = 0xFF00;
static constexpr quint32 testerReceives = 0xF100;

bool isObdRequest(const CanFrame &frame)
{
    if (!frame.isExtended)
        return frame.id == functional || (frame.id >= firstRequest && frame.id < firstAnswer);
    const quint32 kind = frame.id & kindMask;
    return kind == toAll || (kind == toOne && (frame.id & receiverMask) != testerReceives);
}

bool isObdAnswer(const CanFrame &frame)
{
    if (!frame.isExtended)
        return frame.id >= firstAnswer && frame.id <= lastAnswer;
    return (frame.id & (kindMask | receiverMask)) == (toOne | testerReceives);
}

void ObdLink::report(const ObdEvent &event)
{
    switch (event.kind) {
    case ObdEvent::Ready:
        emit ready();
        return;
    case ObdEvent::Answered:
        emit answered(event.answers);
        return;
    case ObdEvent::Failed:
        emit failed(event.failure, event.text);
        return;
    case ObdEvent::Lost:
        emit lost(event.text);
        return;
    case ObdEvent::OtherTester:
        emit otherTesterSeen();
        return;
    }
}

} // namespace module
