#include "Corvid/Compare/NumberComparison.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Corvid {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kLeast = std::numeric_limits<float>::denorm_min();

TEST(NumberComparison, ValuesNotBits) {
    const float one = 1.0f;
    const float next = std::nextafter(one, 2.0f);
    struct Case {
        float before;
        float after;
        CompareOptions options;
        bool same;
    };
    const Case kCases[] = {
        {0.0f, 0.0f, {}, true},
        {0.0f, -0.0f, {}, false},
        {kNan, -kNan, {}, true},
        {kNan, 0.0f, {}, false},
        {kInfinity, -kInfinity, {}, false},
        {kInfinity, kInfinity, {}, true},
        {one, next, {}, false},
        {one, next, {.m_Ulp = 1}, true},
        {one, std::nextafter(next, 2.0f), {.m_Ulp = 1}, false},
        {-one, one, {.m_Ulp = 1000}, false},
        {0.0f, -0.0f, {.m_Ulp = 1}, true},
        {kLeast, -kLeast, {.m_Ulp = 2}, false}, // the zeros lie between them
        {kLeast, -kLeast, {.m_Ulp = 3}, true},
        {std::numeric_limits<float>::max(), kInfinity, {.m_Ulp = 1}, true},
        {kInfinity, kNan, {.m_Ulp = 0xFFFFFFFF}, false},
        {1.0f, 1.25f, {.m_Tolerance = 0.25}, true},
        {1.0f, 1.2500001f, {.m_Tolerance = 0.25}, false},
        {0.0f, -0.0f, {.m_Tolerance = 1e-9}, true},
        {kNan, 1.0f, {.m_Tolerance = 1e30}, false},
        {kInfinity, 1.0f, {.m_Tolerance = 1e30}, false},
    };
    for (const Case& c : kCases) {
        SCOPED_TRACE(std::to_string(c.before) + " and " + std::to_string(c.after));
        EXPECT_EQ(AreSame(c.before, c.after, c.options), c.same);
        EXPECT_EQ(AreSame(c.after, c.before, c.options), c.same);
    }
    EXPECT_FALSE(AreSame(1.0, std::nextafter(1.0, 2.0), CompareOptions()));
    EXPECT_TRUE(AreSame(1.0, std::nextafter(1.0, 2.0), CompareOptions{.m_Ulp = 1}));
}

} // namespace
} // namespace Corvid
