#include "Engine/Math/Color.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>

namespace Corvid {
namespace {

TEST(ColorTest, ChannelsAreClampedAndRoundedHalfUp) {
    using Limits = std::numeric_limits<float>;
    const auto expectByte = [](std::uint32_t byte, std::initializer_list<float> channels) {
        for (const float channel : channels) {
            EXPECT_EQ(PackColor({channel, 0, 0, 0}), byte << 16) << channel;
            EXPECT_EQ(PackColor({0, 0, 0, channel}), byte << 24) << channel;
        }
    };
    expectByte(0, {0.0f, -0.0f, -1.0f, -Limits::infinity(), Limits::quiet_NaN(), Limits::denorm_min()});
    expectByte(255, {1.0f, std::nextafter(1.0f, 0.0f), 1.5f, Limits::infinity()});
    expectByte(1, {0.00196078443f});
    expectByte(128, {0.5f}); // from 127.5
    // Just below a half, where a sum in single precision would round up.
    expectByte(0, {0.00196078420f});
    expectByte(128, {0.503921568f});
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
