#include "sourcecode.h"

#include <iterator>

namespace norda {

struct SourceRange
{
    int first;
    int last;
    unsigned char code;
};

// clang-format off
static constexpr SourceRange ranges[] = {
    { 5,  5, 0x00},
    { 6,  6, 0x02},
    { 8,  8, 0x02},
    {10, 11, 0x05},
    {12, 12, 0x0C},
    {13, 14, 0x06},
    {15, 19, 0x20},
    {20, 23, 0x21},
    {24, 28, 0x07},
    {32, 32, 0x09},
    {33, 33, 0x03},
    {36, 36, 0x0A},
    {47, 47, 0x80},
    {48, 48, 0x84},
    {49, 49, 0x82},
    {50, 50, 0x81},
};
// clang-format on
static constexpr unsigned char otherSource = 0x01;
static constexpr unsigned char noSource = 0x00;
static constexpr int displayWithoutSource = 3;

static constexpr bool isAscendingAndDisjoint()
{
    for (size_t i = 0; i < std::size(ranges); ++i) {
        if (ranges[i].first > ranges[i].last)
            return false;
        if (i > 0 && ranges[i - 1].last >= ranges[i].first)
            return false;
    }
    return true;
}
static_assert(isAscendingAndDisjoint(), "a source belongs to one range only");

unsigned char moduleSourceCode(int source, int display)
{
    if (display == displayWithoutSource)
        return noSource;
    for (const SourceRange &range : ranges) {
        if (source >= range.first && source <= range.last)
            return range.code;
    }
    return otherSource;
}

} // namespace norda
