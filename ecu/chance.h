#pragma once

#include <QtGlobal>

#include <random>

namespace ecu {

/** What happens now and then: with the same seed, at the same times. */
class Chance
{
public:
    explicit Chance(quint32 seed) : m_random(seed) {}

    /** @param share  of the times that it is asked, 0 to 1 */
    bool occurs(double share)
    {
        // Not a distribution of the standard library: their results differ between implementations.
        const double range = double(std::minstd_rand::max() - std::minstd_rand::min());
        return double(m_random() - std::minstd_rand::min()) / range < share;
    }

private:
    std::minstd_rand m_random;
};

} // namespace ecu
