#pragma once

#include <cstdint>
#include <string_view>

#include "Engine/Archive/TextLineReader.h"
#include "Engine/Math/IntPair.h"
#include "Engine/Math/Vector.h"
#include "Engine/String/NumberScan.h"

namespace Corvid {

// The value texts of a text archive, read by the rules of formatted input: white space in front of every number, and
// wherever the format has a blank, is skipped, and what follows the last item does not matter.
//
// Every function returns the number of items read. Items before a fault are stored, the others left alone. Behind the
// text kScanPadding bytes must be readable.
int ScanIntValue(std::string_view text, std::int32_t& value);              // "%d"
int ScanInt64Value(std::string_view text, std::int64_t& value);            // "%I64d"
int ScanHexValue(std::string_view text, std::uint32_t& value);             // "%x"
int ScanFloatValue(std::string_view text, float& value);                   // "%f"
int ScanDoubleValue(std::string_view text, double& value);                 // "%f"
int ScanFloatsValue(std::string_view text, float* values, int count);      // "[ %f ... ]"
int ScanIntsValue(std::string_view text, std::int32_t* values, int count); // "[ %d , %d ... ]"

// The bits form: the decimals are ignored in favour of the exact bits that follow them.
int ScanFloatBits(std::string_view text, float& value);              // "%f Bits=%d": 2 items
int ScanDoubleBits(std::string_view text, double& value);            // "%f Bits=%lld": 2 items
int ScanFloatsBits(std::string_view text, float* values, int count); // "[ %f ... ] Bits=[ %d , ... ]": 2 * count

// One float of a list where it stands in the window, for the way ahead: null when the text has another shape.
inline const char* ScanNextFloat(const char* position, const char* end, float& value) {
    position = SkipBlanks(position);
    return ScanFloat(position, end, value);
}

} // namespace Corvid
