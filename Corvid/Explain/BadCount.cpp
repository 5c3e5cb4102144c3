#include "Corvid/Explain/BadCount.h"

#include "Engine/Archive/ElementBudget.h"

namespace Corvid {

std::string ExplainBadCount(const LayoutNode& list, std::int64_t count, std::uint64_t fitting) {
    const std::string number = std::to_string(count);
    if (list.m_SlotCount != 0 && count != list.m_SlotCount)
        return number + ", and it is always " + std::to_string(list.m_SlotCount);
    if (count < 0)
        return number + " is negative";
    if (list.m_Capacity != 0 && count > list.m_Capacity)
        return number + ", and there is room for " + std::to_string(list.m_Capacity);
    if (count > ElementBudget::kFewElements && static_cast<std::uint64_t>(count) > fitting + ElementBudget::kCountSlack)
        return number + ", and the rest of the file cannot hold more than " + std::to_string(fitting);
    return {};
}

} // namespace Corvid
