#include "reversecamera.h"

#include "headunit.h"
#include "norda/vtqadaptor.h"
#include "unitsettings.h"

#include <utility>

static constexpr int reverseGear = 1; // of the module's codes

ReverseCamera::ReverseCamera(HeadUnit *unit) : m_unit(unit)
{
    connect(norda::VtqAdaptor::instance(), &norda::VtqAdaptor::checkGearPositionStatus, this,
            &ReverseCamera::onGear);
}

ReverseCamera::~ReverseCamera() = default;

/** A module repeats the gear: only a change of it opens or closes anything. */
void ReverseCamera::onGear(int gear)
{
    const bool wasReverse = std::exchange(m_isReverse, gear == reverseGear);
    if (m_isReverse && !wasReverse)
        show();
    else if (wasReverse && !m_isReverse && std::exchange(m_hasOpened, false))
        m_unit->windows()->closeCamera();
}

void ReverseCamera::show()
{
    m_hasOpened = unitsettings::hasRearCamera() && !m_unit->screen()->isCameraShown();
    if (m_hasOpened)
        m_unit->windows()->openCamera();
}
