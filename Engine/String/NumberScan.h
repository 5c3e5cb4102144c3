#pragma once

#include <cstddef>
#include <cstdint>

#include "Engine/String/NumberScanFast.h"

namespace Corvid {

// Numbers out of UTF-8 text, by the rules of C's formatted input in the "C" locale.
//
// Every function expects the number's first character (sign included) at `position`: white space is not skipped.
// It returns the first character behind the number, or nullptr when no number stands there; then nothing is stored.
// The number ends at `end` at the latest. Up to kScanPadding bytes from `end` on must be readable; what they hold
// never matters.
inline constexpr std::size_t kScanPadding = 32;

// "%d" and "%I64d": sign and decimal digits; a value out of range wraps modulo 2^32 or 2^64.
const char* ScanInt(const char* position, const char* end, std::int32_t& value);
const char* ScanInt64(const char* position, const char* end, std::int64_t& value);

// "%x": optional sign and "0x" or "0X", then hexadecimal digits; wraps modulo 2^32. A bare "0x" is the number 0,
// both characters taken.
const char* ScanHex(const char* position, const char* end, std::uint32_t& value);

// "%f": what strtof and strtod take in decimal ("inf", "infinity", "nan", "nan(...)" in any case included), correctly
// rounded straight to the target type; overflow gives infinity, underflow zero or a denormal, the sign kept.
const char* ScanFloat(const char* position, const char* end, float& value);
const char* ScanDouble(const char* position, const char* end, double& value);

// The same for every text; the inline functions try the common shapes first.
const char* ScanIntOfAnyShape(const char* position, const char* end, std::int32_t& value);
const char* ScanFloatOfAnyShape(const char* position, const char* end, float& value);

inline const char* ScanInt(const char* position, const char* end, std::int32_t& value) {
#if defined(__SSE4_1__)
    if (const char* const behind = NumberDetail::ScanShortInt(position, end, value)) [[likely]]
        return behind;
#endif
    return ScanIntOfAnyShape(position, end, value);
}

inline const char* ScanFloat(const char* position, const char* end, float& value) {
#if defined(__SSE4_1__) && defined(__SSE2_MATH__)
    if (const char* const behind = NumberDetail::ScanCanonicalFloat(position, end, value)) [[likely]]
        return behind;
#endif
    return ScanFloatOfAnyShape(position, end, value);
}

} // namespace Corvid
