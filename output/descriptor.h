#pragma once

#include <unistd.h>
#include <utility>

namespace output {

/** A file descriptor that closes itself. */
class Descriptor
{
public:
    explicit Descriptor(int number = -1) : m_number(number) {}
    Descriptor(Descriptor &&other) noexcept : m_number(other.release()) {}
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor()
    {
        if (isValid())
            ::close(m_number);
    }

    int number() const { return m_number; }
    bool isValid() const { return m_number >= 0; }
    int release() { return std::exchange(m_number, -1); }

private:
    int m_number;
};

} // namespace output
