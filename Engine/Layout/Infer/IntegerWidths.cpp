#include "Engine/Layout/Infer/IntegerWidths.h"

#include <algorithm>
#include <bit>

namespace Corvid {

namespace {

constexpr std::size_t kMostNumbers = 5; // of a run that is looked into

// The condition or list that the node stands in; records take no bytes.
LayoutIndex HolderOf(const Layout& layout, LayoutIndex node) {
    do {
        node = layout[node].m_Parent;
    } while (node != kNoLayoutIndex &&
             (layout[node].m_Kind == LayoutKind::Record || layout[node].m_Kind == LayoutKind::Use));
    return node;
}

} // namespace

std::vector<std::vector<LayoutIndex>> FindIntegerRuns(const Layout& layout,
                                                      const std::function<bool(LayoutIndex)>& isCandidate) {
    std::vector<std::vector<LayoutIndex>> runs(1);
    for (LayoutIndex node = 0; node < layout.GetSize(); ++node) {
        if (layout[node].m_Kind == LayoutKind::Record || layout[node].m_Kind == LayoutKind::Use)
            continue;
        const bool goesOn = !runs.back().empty() && HolderOf(layout, runs.back().back()) == HolderOf(layout, node);
        if (!goesOn || !isCandidate(node))
            runs.emplace_back();
        if (isCandidate(node))
            runs.back().push_back(node);
    }
    std::erase_if(runs, [](const auto& run) { return run.size() < 2 || run.size() > kMostNumbers; });
    return runs;
}

std::optional<IntegerWidths>
CompareWidths(std::size_t size, const std::function<std::optional<bool>(std::span<const LayoutKind>)>& fits) {
    std::vector<std::uint32_t> readings; // a bit for each wide number, the last one lowest
    for (std::uint32_t reading = 0; reading < 1u << size; ++reading) {
        std::vector<LayoutKind> kinds;
        for (std::size_t i = size; i-- > 0;)
            kinds.push_back((reading >> i & 1) != 0 ? LayoutKind::Int64 : LayoutKind::Int);
        const std::optional<bool> isPossible = fits(kinds);
        if (!isPossible.has_value())
            return std::nullopt;
        if (*isPossible)
            readings.push_back(reading);
    }
    const auto isOfOtherSize = [&](std::uint32_t reading) {
        return std::popcount(reading) != std::popcount(readings.front());
    };
    if (readings.empty() || std::any_of(readings.begin(), readings.end(), isOfOtherSize))
        return std::nullopt;
    std::uint32_t open = 0;
    for (const std::uint32_t reading : readings)
        open |= reading ^ readings.front();
    IntegerWidths widths;
    for (std::size_t i = size; i-- > 0;) {
        widths.m_Kinds.push_back((readings.front() >> i & 1) != 0 ? LayoutKind::Int64 : LayoutKind::Int);
        widths.m_IsOpen.push_back((open >> i & 1) != 0);
    }
    widths.m_FirstOpen = static_cast<std::size_t>(std::find(widths.m_IsOpen.begin(), widths.m_IsOpen.end(), true) -
                                                  widths.m_IsOpen.begin());
    return widths;
}

} // namespace Corvid
