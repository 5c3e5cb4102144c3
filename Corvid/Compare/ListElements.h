#pragma once

#include <string_view>
#include <vector>

#include "Corvid/Compare/ValueComparison.h"

namespace Corvid {

// The elements of a list, each of one or several values.
std::vector<ValueSpan> ElementsOf(const ValueTree& tree, ValueIndex list);

// The value that stands for an element where it is told of as a whole: its record, if it has one.
ValueIndex MainValueOf(const ValueTree& tree, ValueSpan element);

// What people call an element: the first string that is not empty, of its record if it has one. Empty: nothing.
std::u16string_view NameOf(const ValueTree& tree, ValueSpan element);

} // namespace Corvid
