#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Corvid {

// A conflict that a merge has left in a text: two sides, and perhaps what both came from, between lines of seven '<',
// '|', '=' and '>'. Lines count from 0.
struct MergeConflict {
    std::uint32_t m_First = 0; // its opening line
    std::uint32_t m_Last = 0;  // its closing line
};

// Lines that are left out in front of one that stays.
struct LinesLeftOut {
    std::uint32_t m_Index = 0; // of the line, among those that stay
    std::uint32_t m_Count = 0; // in front of it, from the start of the text on
};

// A text with the first side of each conflict alone.
struct TextWithoutConflicts {
    std::string m_Text;
    std::vector<MergeConflict> m_Conflicts;
    std::vector<LinesLeftOut> m_LeftOut; // in order
};

// Conflicts that are whole only; none: the rest of the result is empty.
TextWithoutConflicts LeaveOutConflicts(std::string_view text);

} // namespace Corvid
