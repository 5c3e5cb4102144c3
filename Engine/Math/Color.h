#pragma once

#include <cstdint>

namespace Corvid {

// Four channels, 0 to 1 where they are in range. Zero until set.
struct Color {
    float red = 0.0f;
    float green = 0.0f;
    float blue = 0.0f;
    float alpha = 0.0f;

    friend bool operator==(const Color&, const Color&) = default;
};

inline constexpr Color kWhite{1.0f, 1.0f, 1.0f, 1.0f};

// One byte per channel: alpha in the high byte, then red, green, blue. Packing computes in double and rounds half up;
// a NaN channel packs as 0. Unpacking multiplies each byte by the float nearest 1/255.
std::uint32_t PackColor(const Color& color);
Color UnpackColor(std::uint32_t packed);

} // namespace Corvid
