#include "Engine/Render/Billboard.h"

#include <iterator>

#include "Engine/Report/Reporter.h"

namespace Corvid {

namespace {

constexpr BillboardRectangle kRectangles[] = {
    {-0.5f, 0.5f, 0.5f, -0.5f}, // 0: centre
    {0.0f, 0.5f, 1.0f, -0.5f},  // 1: left edge, middle
    {-1.0f, 0.5f, 0.0f, -0.5f}, // 2: right edge, middle
    {0.0f, 0.0f, 1.0f, -1.0f},  // 3: top-left corner
    {-0.5f, 0.0f, 0.5f, -1.0f}, // 4: top edge, middle
    {-1.0f, 0.0f, 0.0f, -1.0f}, // 5: top-right corner
    {-1.0f, 1.0f, 0.0f, 0.0f},  // 6: bottom-right corner
    {-0.5f, 1.0f, 0.5f, 0.0f},  // 7: bottom edge, middle
    {0.0f, 1.0f, 1.0f, 0.0f},   // 8: bottom-left corner
};

} // namespace

BillboardRectangle BillboardRectangleAt(std::int32_t anchor) {
    if (anchor >= 0 && anchor < static_cast<std::int32_t>(std::size(kRectangles)))
        return kRectangles[anchor];
    Check(false, "false");
    return {};
}

} // namespace Corvid
