#pragma once

#include "Corvid/Compare/CompareOptions.h"

namespace Corvid {

// 0.0 and -0.0 differ, two NaN do not.
bool AreSame(float before, float after, const CompareOptions& options);
bool AreSame(double before, double after, const CompareOptions& options);

// How far apart; 0 between two NaN, NaN between one and a number.
double DistanceOf(double before, double after);

} // namespace Corvid
