#include "reversecamera.h"

#include "headunit.h"
#include "norda/vtqadaptor.h"
#include "serviceconnection.h"
#include "unitsettings.h"

#include <utility>

static constexpr int reverseGear = 1;   // of the module's codes
static constexpr qint64 touchMs = 1000; // from a finger's touch to the page, on a busy unit

ReverseCamera::ReverseCamera(HeadUnit *unit) : m_unit(unit)
{
    connect(unit->windows(), &WindowStack::cameraLeft, this, &ReverseCamera::onLeft);
    const ServiceConnection *link = ServiceConnection::instance();
    connect(link, &ServiceConnection::gearAnnounced, this, &ReverseCamera::onGear);
    connect(norda::VtqAdaptor::instance(), &norda::VtqAdaptor::checkGearPositionStatus, this,
            [this, link](int gear) {
                if (link->state() == ServiceConnection::InProcess)
                    onGear(gear);
            });
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
    m_shown.invalidate();
    if (!unitsettings::hasRearCamera())
        return;
    m_hasOpened = !m_unit->screen()->isCameraShown();
    if (m_hasOpened)
        m_unit->windows()->openCamera();
    m_shown.start();
}

/** A page whose key was touched before the picture came opens below it. */
void ReverseCamera::onLeft()
{
    if (m_isReverse && m_shown.isValid() && m_shown.elapsed() < touchMs)
        m_unit->windows()->openCamera();
}
