#include "Corvid/Batch/Batch.h"

#include <numeric>

namespace Corvid {

namespace {

constexpr std::uint64_t kLargeShare = 64; // an item is large when it is this part of everything, or more
constexpr std::uint64_t kTinyShare = 512; // items are tiny when they are together this part of everything, or less

} // namespace

WorkOrder OrderOfWork(std::span<const std::uint64_t> sizes) {
    std::vector<std::size_t> items(sizes.size());
    std::iota(items.begin(), items.end(), std::size_t{0});
    const std::uint64_t all = std::accumulate(sizes.begin(), sizes.end(), std::uint64_t{0});
    const auto isLarge = [&](std::size_t item) { return sizes[item] > 0 && sizes[item] >= all / kLargeShare; };
    const auto rest = std::stable_partition(items.begin(), items.end(), isLarge);
    std::stable_sort(items.begin(), rest, [&](std::size_t a, std::size_t b) { return sizes[a] > sizes[b]; });
    WorkOrder order;
    order.m_EarlyCount = static_cast<std::size_t>(rest - items.begin());
    order.m_Items = std::move(items);
    const auto [smallest, largest] = std::minmax_element(sizes.begin(), sizes.end());
    if (!sizes.empty() && *smallest > 0) // a pipe has no size, and may be waited for
        order.m_AtOnce =
            static_cast<std::size_t>(std::clamp<std::uint64_t>(all / kTinyShare / *largest, 1, kMostAtOnce));
    return order;
}

int DefaultJobs() {
    return std::max(static_cast<int>(std::thread::hardware_concurrency()), 1);
}

} // namespace Corvid
