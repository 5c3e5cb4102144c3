#include "Corvid/Explain/MergeConflicts.h"

#include <algorithm>

namespace Corvid {

namespace {

// What opens a part of a conflict: its line begins with seven of it.
enum class Mark : char { None = 0, First = '<', Origin = '|', Second = '=', Close = '>' };

Mark MarkOf(std::string_view line) {
    constexpr std::size_t kLength = 7;
    for (const Mark mark : {Mark::First, Mark::Origin, Mark::Second, Mark::Close}) {
        if (std::min(line.find_first_not_of(static_cast<char>(mark)), line.size()) == kLength &&
            (line.size() == kLength || line[kLength] == ' ' || line[kLength] == '\r'))
            return mark;
    }
    return Mark::None;
}

struct MarkedLine {
    Mark m_Mark;
    std::uint32_t m_Line;
};

std::string_view TakeLine(std::string_view& text) {
    const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
    const std::string_view line = text.substr(0, length);
    text.remove_prefix(length);
    return line;
}

std::vector<MarkedLine> FindMarks(std::string_view text) {
    std::vector<MarkedLine> marks;
    for (std::uint32_t index = 0; !text.empty(); ++index) {
        const std::string_view line = TakeLine(text);
        if (const Mark mark = MarkOf(line.substr(0, line.find('\n'))); mark != Mark::None)
            marks.push_back({mark, index});
    }
    return marks;
}

} // namespace

TextWithoutConflicts LeaveOutConflicts(std::string_view text) {
    TextWithoutConflicts result;
    if (text.find("<<<<<<<") == text.npos)
        return result;
    const std::vector<MarkedLine> marks = FindMarks(text);
    std::vector<MergeConflict> leftOut; // parts, both lines included
    for (std::size_t i = 0; i < marks.size(); ++i) {
        const auto markAt = [&](std::size_t at) { return at < marks.size() ? marks[at].m_Mark : Mark::None; };
        const std::size_t second = i + (markAt(i + 1) == Mark::Origin ? 2 : 1);
        if (marks[i].m_Mark != Mark::First || markAt(second) != Mark::Second || markAt(second + 1) != Mark::Close)
            continue;
        result.m_Conflicts.push_back({marks[i].m_Line, marks[second + 1].m_Line});
        leftOut.push_back({marks[i].m_Line, marks[i].m_Line});
        leftOut.push_back({marks[i + 1].m_Line, marks[second + 1].m_Line});
        i = second + 1;
    }
    auto part = leftOut.begin();
    std::uint32_t count = 0;
    for (std::uint32_t index = 0; !text.empty() && !leftOut.empty(); ++index) {
        const std::string_view line = TakeLine(text);
        if (part == leftOut.end() || index < part->m_First) {
            result.m_Text += line;
            continue;
        }
        ++count;
        if (index != part->m_Last)
            continue;
        result.m_LeftOut.push_back({index + 1 - count, count});
        ++part;
    }
    return result;
}

} // namespace Corvid
