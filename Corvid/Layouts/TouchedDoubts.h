#pragma once

#include <string>
#include <vector>

#include "Corvid/Values/ValueTree.h"
#include "Engine/Layout/Layout.h"

namespace Corvid {

// A doubt of a layout that one file touches: the readings that it leaves open would convert the file differently.
struct TouchedDoubt {
    LayoutIndex m_Node = 0;
    std::string m_Field;         // the first place in the file
    std::string m_Why;           // a clause: what else it may be
    bool m_IsBeyondHelp = false; // no option can go on
};

// How one file follows its layout.
struct LayoutTrail {
    std::vector<TouchedDoubt> m_Touched; // each doubt once
    std::vector<bool> m_IsMet;           // by node: it stands in the file, or its condition holds
};

// The rule of touching, all of it:
//  - another number or colour, always: one may be the other, or take more bytes or fewer;
//  - one of several integers of which one takes 8 bytes: where it is negative, or not among those that were seen;
//  - a count or bool with a value that is not among those that were seen: it may be a plain integer or another kind;
//  - a condition with rivals, where one of them disagrees or asks for a value that is not there; one without a rival,
//    always;
//  - fields of which nobody knows when they are there, when they come from binary, where nothing tells.
// `values` are those of a file that was loaded by the layout.
LayoutTrail FollowLayout(const Layout& layout, const ValueTree& values, bool isFromBinary);

} // namespace Corvid
