#include "Engine/Math/Direction.h"

#include <gtest/gtest.h>

#include "Tests/Support/ExpectWords.h"

namespace Corvid {
namespace {

TEST(DirectionTest, NamesAndAxesFollowTheNumbers) {
    ExpectWords<Direction>(u"UP DOWN LEFT RIGHT FRONT BACK");
    const Vector3 kAxes[] = {{0, 1, 0}, {0, -1, 0}, {-1, 0, 0}, {1, 0, 0}, {0, 0, 1}, {0, 0, -1}};
    ReportLog reports;
    for (int number = 0; number < 6; ++number)
        EXPECT_EQ(AxisOf(static_cast<Direction>(number)), kAxes[number]) << number;
    EXPECT_EQ(reports.Take(), "");
    EXPECT_EQ(AxisOf(Direction::Invalid), Vector3{});
    EXPECT_EQ(AxisOf(static_cast<Direction>(6)), Vector3{});
    EXPECT_EQ(reports.Count("Assertion failed: "), 2);
}

} // namespace
} // namespace Corvid
