#pragma once

#include <cstddef>

#include "Engine/String/NumberFormat.h"

namespace Corvid {

// Numbers into text that gives them back bit by bit: six decimals where these do, so that nothing else is to be seen
// in ordinary files, else the shortest decimals that do, the nearest of them to the value: 0.57735026, 1.0e-07. Those
// have a digit on both sides of the point, and an exponent (a sign and at least two digits) only where that is shorter.
// Infinities and NaN are written as FormatFloat() does; of a NaN only the sign comes back.
//
// Room is kMaxFloatText or kMaxDoubleText, and kFormatSlack, as for the other forms.
char* FormatFloatExact(char* out, float value);
char* FormatDoubleExact(char* out, double value);

} // namespace Corvid
