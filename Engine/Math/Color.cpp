#include "Engine/Math/Color.h"

namespace Corvid {

namespace {

std::uint32_t PackChannel(float channel) {
    if (channel >= 1.0f)
        return 255;
    if (!(channel > 0.0f))
        return 0;
    return static_cast<std::uint32_t>(static_cast<double>(channel) * 255.0 + 0.5);
}

float UnpackChannel(std::uint32_t packed, int shift) {
    return static_cast<float>((packed >> shift) & 0xFF) * (1.0f / 255.0f);
}

} // namespace

std::uint32_t PackColor(const Color& color) {
    return PackChannel(color.alpha) << 24 | PackChannel(color.red) << 16 | PackChannel(color.green) << 8 |
           PackChannel(color.blue);
}

Color UnpackColor(std::uint32_t packed) {
    return {UnpackChannel(packed, 16), UnpackChannel(packed, 8), UnpackChannel(packed, 0), UnpackChannel(packed, 24)};
}

} // namespace Corvid
