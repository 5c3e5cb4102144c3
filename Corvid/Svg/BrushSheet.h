#pragma once

#include <string>
#include <string_view>

#include "Engine/Window/BrushSystem.h"

namespace Corvid {

// A set as one SVG sheet: a row for each brush with its name, and in it each of its states, a pixel a unit. Lines show
// the margins: those that divide it into nine slices, and those of its content. There is no script and no style that
// a page around it could mistake for its own.
std::string MakeBrushSheet(const BrushSystem::BrushSet& set, std::u16string_view title);

} // namespace Corvid
