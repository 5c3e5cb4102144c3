#pragma once

#include <string>
#include <vector>

#include "Engine/Layout/Layout.h"
#include "Engine/Layout/LayoutTokens.h"

namespace Corvid {

// What can stand behind the label or the directive of a line. Each takes its words off the line; false: something is
// wrong, and the line has been told so.

// LABEL, not LABEL, or LABEL = "WORD"..., of a field that `builder` has in sight.
bool TakeCondition(LayoutTokens& line, const LayoutBuilder& builder, LayoutCondition& condition);

// Words in quotes, at least one.
bool TakeWords(LayoutTokens& line, std::vector<std::u16string>& words);

// "?" and the facts that limit the doubt, as the kind of `node` takes them; or nothing.
bool TakeDoubt(LayoutTokens& line, LayoutNode& node);

} // namespace Corvid
