#pragma once

#include <cstdint>
#include <vector>

#include "Engine/Layout/Layout.h"

namespace Corvid {

class TextLines;

// How deep each line stands. That is what its tabs say, unless someone's editor has taken them off or put spaces in
// their place, in the whole text or in a part of it: then the labels tell it, by the record of the layout that asks for
// them. Tabs are believed where a record that is open at their depth asks for the label, and where the line in front
// has all that it should have, so that a line that was moved stays where it is; more tabs than the labels tell are
// always believed. Empty: every line is as deep as its tabs.
std::vector<std::uint16_t> FindDepths(const Layout& layout, const TextLines& lines);

} // namespace Corvid
