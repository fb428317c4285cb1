#pragma once

#include "norda/vtqadaptor.h"

namespace norda {

/** A signal of the adaptor and the slot of a screen that receives it, as a row of a table. */
struct AdaptorBinding
{
    /** Connects the two, once however often it is called. */
    void (*connect)(VtqAdaptor *adaptor, QObject *screen);
    /** @return whether they were connected */
    bool (*disconnect)(VtqAdaptor *adaptor, QObject *screen);
};

template <typename Slot>
struct ReceiverOf;

template <typename Screen, typename... Arguments>
struct ReceiverOf<void (Screen::*)(Arguments...)>
{
    using Type = Screen;
};

template <auto Signal, auto Slot>
void connectBinding(VtqAdaptor *adaptor, QObject *screen)
{
    using Screen = typename ReceiverOf<decltype(Slot)>::Type;
    QObject::connect(adaptor, Signal, static_cast<Screen *>(screen), Slot, Qt::UniqueConnection);
}

template <auto Signal, auto Slot>
bool disconnectBinding(VtqAdaptor *adaptor, QObject *screen)
{
    using Screen = typename ReceiverOf<decltype(Slot)>::Type;
    return QObject::disconnect(adaptor, Signal, static_cast<Screen *>(screen), Slot);
}

template <auto Signal, auto Slot>
inline constexpr AdaptorBinding binding = {connectBinding<Signal, Slot>,
                                           disconnectBinding<Signal, Slot>};

} // namespace norda
