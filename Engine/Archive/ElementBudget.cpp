#include "Engine/Archive/ElementBudget.h"

#include <algorithm>

namespace Corvid {

std::uint64_t ElementBudget::Take(std::uint64_t claimed, const ElementRoom& room) {
    // The input may shrink, when a file turns out shorter than it was.
    const std::uint64_t unclaimed = room.m_InputSize > m_BytesTaken ? room.m_InputSize - m_BytesTaken : 0;
    const std::uint64_t fitting = std::min(claimed, std::min(room.m_BytesLeft, unclaimed) / room.m_BytesOfOne);
    if (room.m_InputSize != ElementRoom::kUnbounded)
        m_BytesTaken += fitting * room.m_BytesOfOne;
    const std::uint64_t slack = std::min({claimed - fitting, kCountSlack, kMostSlack - m_SlackTaken});
    m_SlackTaken += slack;
    return fitting + slack;
}

} // namespace Corvid
