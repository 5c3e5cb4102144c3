#pragma once

#include <cstdint>
#include <string_view>

#include "Engine/Math/IntPair.h"
#include "Engine/Math/Vector.h"
#include "Engine/String/NumberScan.h"

namespace Corvid {

// What a value text turned out to hold.
struct ScannedValue {
    int m_Items = 0;        // those that were read
    bool m_IsPlain = false; // just the value, but for white space, its brackets closed, each number within its range
};

// What becomes of the exact bits behind the decimals of a float, "2.50 Bits=1075838976".
enum class BitsRule {
    Ignored,  // like anything else that stands behind a value
    Taken,    // where they are there; no items of their own
    Required, // as many items as the decimals
};

// The value texts of a text archive, read by the rules of formatted input: white space in front of every number, and
// wherever the format has a blank, is skipped, and what follows the last item does not matter, but for m_IsPlain.
//
// Items before a fault are stored, the others left alone. Behind the text kScanPadding bytes must be readable.
ScannedValue ScanIntValue(std::string_view text, std::int32_t& value);              // "%d"
ScannedValue ScanUnsignedValue(std::string_view text, std::uint32_t& value);        // "%d", or above its range "%u"
ScannedValue ScanInt64Value(std::string_view text, std::int64_t& value);            // "%I64d"
ScannedValue ScanHexValue(std::string_view text, std::uint32_t& value);             // "%x"
ScannedValue ScanIntsValue(std::string_view text, std::int32_t* values, int count); // "[ %d , %d ... ]"
ScannedValue ScanBoolValue(std::string_view text, bool& value); // "TRUE", else "FALSE", anywhere in the text

// "%f" or "[ %f ... ]", at most four; with bits "%f Bits=%d" or "[ %f ... ] Bits=[ %d , %d ... ]".
ScannedValue ScanFloatValue(std::string_view text, BitsRule rule, float& value);
ScannedValue ScanDoubleValue(std::string_view text, BitsRule rule, double& value);
ScannedValue ScanFloatsValue(std::string_view text, BitsRule rule, float* values, int count);

// Shorter numbers than these are within their ranges.
inline constexpr int kSafeIntDigits = 9;
inline constexpr int kSafeHexDigits = 8;

} // namespace Corvid
