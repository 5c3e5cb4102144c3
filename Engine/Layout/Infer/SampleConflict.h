#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Corvid {

// A place in a sample: the line in its tree, or the offset in a binary.
struct SamplePlace {
    std::uint32_t m_Sample = 0;
    std::uint32_t m_Line = 0;
};

// Two samples that no one layout describes, or one that the layout that was given does not.
struct SampleConflict {
    std::string m_Message;
    SamplePlace m_First;
    SamplePlace m_Second;
    int m_LayoutLine = 0; // of the layout that was given, from 1; 0: it is a matter of the samples alone
};

} // namespace Corvid
