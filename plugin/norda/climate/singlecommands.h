#pragma once

#include "commandbytes.h"
#include "norda/vtqadaptor.h"

namespace norda {

/** The command of one key, in the form of each zone. */
template <typename... Parameters>
struct ZoneCommand
{
    using Command = void (VtqAdaptor::*)(Parameters...);

    ClimateGroup group;
    int id;
    Command front, second;
};

/** Sent with true and false when the key goes down, with false and true when it comes up. */
using HeldCommand = ZoneCommand<bool, bool>;
/** Sent with true when the key is clicked. */
using ClickedCommand = ZoneCommand<bool>;

/** Null for a key that is not held. */
const HeldCommand *heldCommand(ClimateGroup group, int id);
/** Null for a key that is not clicked. */
const ClickedCommand *clickedCommand(ClimateGroup group, int id);

} // namespace norda
