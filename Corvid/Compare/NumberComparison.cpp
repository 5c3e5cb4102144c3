#include "Corvid/Compare/NumberComparison.h"

#include <bit>
#include <cmath>
#include <cstdint>

namespace Corvid {

namespace {

// Consecutive for consecutive numbers; -0.0 stands next to 0.0.
template <class Integer> Integer OrderOf(Integer bits) {
    constexpr Integer kSign = Integer{1} << (sizeof(Integer) * 8 - 1);
    return (bits & kSign) != 0 ? static_cast<Integer>(~bits) : static_cast<Integer>(bits | kSign);
}

template <class Integer, class Float> bool AreSameNumbers(Float before, Float after, const CompareOptions& options) {
    const auto beforeBits = std::bit_cast<Integer>(before);
    const auto afterBits = std::bit_cast<Integer>(after);
    if (beforeBits == afterBits)
        return true;
    if (std::isnan(before) || std::isnan(after))
        return std::isnan(before) && std::isnan(after);
    if (options.m_Tolerance > 0 && DistanceOf(before, after) <= options.m_Tolerance)
        return true;
    const Integer beforeOrder = OrderOf(beforeBits);
    const Integer afterOrder = OrderOf(afterBits);
    return (beforeOrder < afterOrder ? afterOrder - beforeOrder : beforeOrder - afterOrder) <= options.m_Ulp;
}

} // namespace

bool AreSame(float before, float after, const CompareOptions& options) {
    return AreSameNumbers<std::uint32_t>(before, after, options);
}

bool AreSame(double before, double after, const CompareOptions& options) {
    return AreSameNumbers<std::uint64_t>(before, after, options);
}

double DistanceOf(double before, double after) {
    if (before == after || (std::isnan(before) && std::isnan(after)))
        return 0;
    return std::abs(after - before);
}

} // namespace Corvid
