#include "adapter/adapterstate.h"

#include "carbus.h"

namespace ecu {

void AdapterState::setDefaults()
{
    AdapterState defaults;
    defaults.protocol = protocol;
    defaults.searches = searches;
    defaults.claimsTooMuch = claimsTooMuch;
    *this = defaults;
}

void AdapterState::reset()
{
    setDefaults();
    protocol = 0;
    searches = true;
}

quint32 AdapterState::requestId(bool isExtended) const
{
    static constexpr quint32 shortMask = 0x7FF;
    static constexpr quint32 longMask = 0x1FFFFFFF;
    static constexpr int digitsWithPriority = 8;
    if (!header)
        return CarBus::functionalId(isExtended);
    if (!isExtended)
        return header->value & shortMask;
    const bool isWhole = header->digits == digitsWithPriority;
    return (isWhole ? header->value : quint32(priority) << 24 | header->value) & longMask;
}

bool AdapterState::accepts(const module::CanFrame &frame) const
{
    if (filter)
        return (frame.id & mask) == (*filter & mask);
    return frame.isExtended ? frame.id >> 8 == 0x18DAF1 : frame.id >> 3 == 0x7E8 >> 3;
}

} // namespace ecu
