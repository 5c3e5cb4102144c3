#pragma once

namespace Corvid {

// How text archives write floats and doubles.
enum class FloatForm {
    SixDecimals, // "%f"
    Bits,        // "%.2f Bits=%d": every value comes back bit by bit
    Exact,       // six decimals where these bring the value back, else the shortest decimals that do
};

} // namespace Corvid
