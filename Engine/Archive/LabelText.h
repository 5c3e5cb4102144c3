#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "Engine/Archive/Label.h"

namespace Corvid {

// A label's characters, one byte each, as files hold them. The copy is for reports and rare uses; archives match and
// write labels with the functions, which make do with a few instructions for a short one.
class LabelText {
public:
    explicit LabelText(Label label) : m_Length(static_cast<std::size_t>(Write(label, m_Bytes) - m_Bytes)) {}

    operator std::string_view() const { return {m_Bytes, m_Length}; } // while this object lives

    // So many bytes must be accessible at `bytes`, whatever they hold: for writing the second number, for matching the
    // first, and a byte that no label has, such as zero, in front of the first that is not.
    static constexpr std::size_t kMatchedBytes = 16;
    static constexpr std::size_t kAccessibleBytes = 128;
    static_assert(kMatchedBytes > Label::kMaxShortLength && kAccessibleBytes > Label::kMaxLength);

    static std::size_t GetLength(Label label) {
        return IsShort(label) ? ShortLength(label) : std::bit_cast<Label::Long>(label).m_Length;
    }

    // The place behind the label if `bytes` begins with it, else null.
    static const char* Match(Label label, const char* bytes) {
        return IsShort(label) ? MatchShort(label, bytes) : MatchLong(label, bytes);
    }
    // Returns the end; may scribble behind it.
    static char* Write(Label label, char* bytes) {
        return IsShort(label) ? WriteShort(label, bytes) : WriteLong(label, bytes);
    }

    // The same for short labels only.
    static bool IsShort(Label label) { return ShortLength(label) != 0; }
    static const char* MatchShort(Label label, const char* bytes);
    static char* WriteShort(Label label, char* bytes);

private:
    static std::size_t ShortLength(Label label) {
        return static_cast<std::size_t>(std::bit_cast<Label::Short>(label).m_Words[1] >> 56);
    }
    static const char* MatchLong(Label label, const char* bytes);
    static char* WriteLong(Label label, char* bytes);

    char m_Bytes[kAccessibleBytes];
    std::size_t m_Length;
};

// Word by word, and no further than the label: in a vector register the two words would have to go through memory.
inline const char* LabelText::MatchShort(Label label, const char* bytes) {
    const auto [words] = std::bit_cast<Label::Short>(label);
    const std::size_t length = ShortLength(label);
    std::uint64_t found;
    std::memcpy(&found, bytes, sizeof found);
    std::uint64_t different = found ^ words[0];
    if (length > sizeof found) {
        if (different != 0)
            return nullptr;
        std::memcpy(&found, bytes + sizeof found, sizeof found);
        different = found ^ words[1];
    }
    // Shifts out what lies behind the label: 0 to 7 bytes.
    return different << ((0 - 8 * length) % 64) == 0 ? bytes + length : nullptr;
}

inline char* LabelText::WriteShort(Label label, char* bytes) {
    const auto [words] = std::bit_cast<Label::Short>(label);
    const std::size_t length = ShortLength(label);
    std::memcpy(bytes, &words[0], sizeof words[0]);
    if (length > sizeof words[0])
        std::memcpy(bytes + sizeof words[0], &words[1], sizeof words[1]);
    return bytes + length;
}

inline const char* LabelText::MatchLong(Label label, const char* bytes) {
    const auto text = std::bit_cast<Label::Long>(label);
    for (std::uint32_t i = 0; i < text.m_Length; ++i) {
        if (bytes[i] != static_cast<char>(text.m_Text[i]))
            return nullptr;
    }
    return bytes + text.m_Length;
}

inline char* LabelText::WriteLong(Label label, char* bytes) {
    const auto text = std::bit_cast<Label::Long>(label);
    for (std::uint32_t i = 0; i < text.m_Length; ++i)
        *bytes++ = static_cast<char>(text.m_Text[i]);
    return bytes;
}

} // namespace Corvid
