#include "Engine/Math/Color.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Corvid {
namespace {

TEST(ColorTest, ChannelsAreClampedAndRoundedHalfUp) {
    struct Case {
        float channel;
        std::uint32_t byte;
    };
    const Case kCases[] = {
        {0.0f, 0},
        {-0.0f, 0},
        {-1.0f, 0},
        {1.0f, 255},
        {std::nextafter(1.0f, 0.0f), 255},
        {1.5f, 255},
        {std::numeric_limits<float>::infinity(), 255},
        {-std::numeric_limits<float>::infinity(), 0},
        {std::numeric_limits<float>::quiet_NaN(), 0},
        {std::numeric_limits<float>::denorm_min(), 0},
        {0.5f, 128}, // 127.5 and a half
        {0.00196078443f, 1},
        {0.00196078420f, 0}, // just below a half: a sum in single precision would round it up
        {0.503921568f, 128}, // the same
    };
    for (const Case& row : kCases) {
        EXPECT_EQ(PackColor({row.channel, 0, 0, 0}), row.byte << 16) << row.channel;
        EXPECT_EQ(PackColor({0, 0, 0, row.channel}), row.byte << 24) << row.channel;
    }
}

TEST(ColorTest, AlphaIsTheHighByteThenRedGreenBlue) {
    EXPECT_EQ(PackColor(kWhite), 0xFFFFFFFF);
    EXPECT_EQ(PackColor({0, 0, 1, 1}), 0xFF0000FF);
    EXPECT_EQ(PackColor({1, 0.5f, 0, 0}), 0x00FF8000u);
    EXPECT_EQ(UnpackColor(0xFF0000FF), (Color{0, 0, 1, 1}));
    EXPECT_EQ(UnpackColor(0x01020304),
              (Color{2 * 0.00392156886f, 3 * 0.00392156886f, 4 * 0.00392156886f, 0.00392156886f}));
    for (std::uint32_t byte = 0; byte < 256; ++byte)
        EXPECT_EQ(PackColor(UnpackColor(byte * 0x01010101)), byte * 0x01010101);
}

} // namespace
} // namespace Corvid
