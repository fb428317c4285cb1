#pragma once

/** What lies behind the car, as its rear camera sees it. Metres from the bumper; x to the right. */
struct RearView
{
    double steeringDegrees = 0; ///< of the front wheels, positive to the left
    double headingDegrees = 0;  ///< of the car against the bay that it backs into
    double wall = 6;            ///< to the wall behind
    double bayX = 0;            ///< where the middle of the bay lies
    double postX = -2.2;
    double postZ = 3.5; ///< negative when the post has been passed
};
