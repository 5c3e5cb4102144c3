#pragma once

#include <cstdint>

#include "Engine/Archive/ArchiveValues.h"

namespace Corvid {

// A rectangle of a texture in pixels, held by its edges and archived by position and size. The sums wrap, so that any
// four numbers of a file come out as they went in.
struct PixelBox {
    std::uint32_t m_Left = 0;
    std::uint32_t m_Top = 0;
    std::uint32_t m_Right = 0;
    std::uint32_t m_Bottom = 0;

    static PixelBox FromRect(const IntRect& rect) {
        const auto left = static_cast<std::uint32_t>(rect.x);
        const auto top = static_cast<std::uint32_t>(rect.y);
        return {left, top, left + static_cast<std::uint32_t>(rect.width),
                top + static_cast<std::uint32_t>(rect.height)};
    }

    IntRect GetRect() const {
        return {static_cast<std::int32_t>(m_Left), static_cast<std::int32_t>(m_Top),
                static_cast<std::int32_t>(m_Right - m_Left), static_cast<std::int32_t>(m_Bottom - m_Top)};
    }

    friend bool operator==(const PixelBox&, const PixelBox&) = default;
};

inline void ReadValue(Archive& archive, Label label, PixelBox& value) {
    IntRect rect = value.GetRect();
    ReadValue(archive, label, rect);
    value = PixelBox::FromRect(rect);
}
inline void WriteValue(Archive& archive, Label label, const PixelBox& value) {
    WriteValue(archive, label, value.GetRect());
}

} // namespace Corvid
