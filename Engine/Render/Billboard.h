#pragma once

#include <cstdint>

namespace Corvid {

// The edges of a billboard's quad relative to its position, in widths and heights of the quad, y upwards.
struct BillboardRectangle {
    float left = 0.0f;
    float top = 0.0f;
    float right = 0.0f;
    float bottom = 0.0f;

    friend bool operator==(const BillboardRectangle&, const BillboardRectangle&) = default;
};

// The quad whose anchor point lies at the billboard's position: anchor 0 is the quad's centre, 1 to 8 go around its
// edges and corners. Any other anchor is reported and yields the empty rectangle.
BillboardRectangle BillboardRectangleAt(std::int32_t anchor);

} // namespace Corvid
