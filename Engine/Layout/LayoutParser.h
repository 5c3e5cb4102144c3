#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "Engine/Layout/Layout.h"
#include "Engine/Layout/LayoutBlocks.h"
#include "Engine/Layout/LayoutLine.h"

namespace Corvid {

// A layout as text looks like the file that it describes, with kinds in place of values:
//
//     layout 1 assumed
//     record Meeting
//     	position vector3
//     entity Quest
//     	titleID string
//     	stageCount count
//     		stage
//     			meeting record Meeting
//     	isRepeatable bool ? FALSE
//     	when isRepeatable
//     		pause float
//
// UTF-8, with LF or CR LF; a tab is one level; a '#' at the start of a word begins a comment. A '?' marks a doubt;
// behind it stand the facts that limit it. Any text can be parsed, within these bounds:
struct LayoutBounds {
    static constexpr std::size_t kMostBytes = 1024 * 1024;
    static constexpr int kMostFields = 10'000; // lines that describe one
    static constexpr int kMostDepth = 32;      // nodes within each other, of records and blocks that are used too
    static constexpr std::size_t kMostSize = 100'000; // nodes, words and facts, wherever they are used
    static constexpr std::size_t kMostErrors = 100;
    static constexpr std::size_t kMostWordUnits = 255; // UTF-16 units of a word
};

struct ParsedLayout {
    std::optional<Layout> m_Layout;    // there if nothing is wrong
    std::vector<LayoutError> m_Errors; // in the order of their places
};

ParsedLayout ParseLayout(std::string_view text, const LayoutBlocks& blocks);

// "int", "count" and the like: how the kind is written; empty for kinds that are written without a word of their own.
std::string_view WordOf(LayoutKind kind);

} // namespace Corvid
