#pragma once

namespace norda {

/** The zones of the car that the climate screen serves. */
enum class Zone { Front, Second };

/** The screen's two layouts, by the pages of its stack. */
enum class Layout { AutoDual, Manual };

/**
 * Which zone is active and which layout shows.
 *
 * A full touch of the zone key moves the page on the press and the rest on the click, each by its
 * own rule, and the module's signals move the zone without the layout. So the four parts do not
 * follow from each other: slide off the zone key, and the page shows what the layout is not.
 */
class ClimateZones
{
public:
    /** The zone that commands go to. */
    Zone active() const { return m_active; }
    /** The layout that is drawn, whatever page is on view. */
    Layout layout() const { return m_layout; }
    /** The page of the stack. */
    Layout page() const { return m_page; }
    /** Whether the zone key was last pressed towards the second zone. */
    bool isTowardsSecond() const { return m_towardsSecond; }

    /** The zone key goes down: the page turns. */
    void press();
    /** The zone key was clicked; checked, it leads to the manual layout and the front zone. */
    void click(bool checked);
    /** A signal of a zone brings its page up. @return whether the active zone changed by that */
    bool bringUp(Zone zone);
    /** The page of the layout comes back. */
    void returnToLayout() { m_page = m_layout; }
    /** A vent position makes the front zone the active one, whichever zone it came from. */
    void fallBackToFront() { m_active = Zone::Front; }

private:
    Zone m_active = Zone::Front;
    Layout m_layout = Layout::AutoDual;
    Layout m_page = Layout::AutoDual;
    bool m_towardsSecond = false;
};

} // namespace norda
