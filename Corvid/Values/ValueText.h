#pragma once

#include <string>
#include <string_view>

#include "Corvid/Values/ValueTree.h"

namespace Corvid {

// Values on a line for people: as few decimals as bring a float back, 50.0; TRUE; "a name", with escapes for what no
// line can hold; #ff8040c0; [ 1.0 0.0 0.0 ], a matrix row by row. A record or list is shown as nothing.
void AppendValueText(std::string& text, const ValueTree& tree, const ValueNode& node);

// Of a color, the channels themselves, where 8 bits do not show what is meant: [ 0.5 0.25 1.0 1.0 ].
void AppendChannels(std::string& text, std::span<const float> channels);

void AppendFloatText(std::string& text, float value);
void AppendDoubleText(std::string& text, double value);

// Between quotes; control characters and lone surrogates as \n, \x1b, \ud800.
void AppendQuoted(std::string& text, std::u16string_view units);

// #aarrggbb.
void AppendColorText(std::string& text, std::span<const float> channels);

} // namespace Corvid
