#include "adapter/protocols.h"

#include <iterator>

namespace ecu {

// clang-format off
static constexpr Protocol protocols[] = {
    {"AUTO",                      "UNABLE TO CONNECT"},
    {"SAE J1850 PWM",             "NO DATA"},
    {"SAE J1850 VPW",             "NO DATA"},
    {"ISO 9141-2",                "BUS INIT: ...ERROR"},
    {"ISO 14230-4 (KWP 5BAUD)",   "BUS INIT: ...ERROR"},
    {"ISO 14230-4 (KWP FAST)",    "BUS INIT: ...ERROR"},
    {"ISO 15765-4 (CAN 11/500)",  "NO DATA"},
    {"ISO 15765-4 (CAN 29/500)",  "NO DATA"},
    {"ISO 15765-4 (CAN 11/250)",  "CAN ERROR"},
    {"ISO 15765-4 (CAN 29/250)",  "CAN ERROR"},
    {"SAE J1939 (CAN 29/250)",    "CAN ERROR"},
    {"USER1 (CAN 11/125)",        "CAN ERROR"},
    {"USER2 (CAN 11/50)",         "CAN ERROR"},
};
// clang-format on

const Protocol *protocol(int number)
{
    return number >= 0 && number < int(std::size(protocols)) ? &protocols[number] : nullptr;
}

} // namespace ecu
