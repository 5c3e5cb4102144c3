#pragma once

#include <string_view>

namespace Corvid {

// A place for a wide string: UTF-16 units, the terminator included in the size.
struct StringBuffer {
    char16_t* m_Buffer;
    int m_BufferSize;
};

// Units before the terminator.
int GetLength(const char16_t* source);

// -1, 0 or 1 by the first differing unit; exact and case-sensitive. NULL is reported and counts as empty.
int Compare(const char16_t* s1, const char16_t* s2);

// The bounded copy: a source that does not fit is reported and cut to what fits; the terminator is always placed.
void CopyString(StringBuffer destination, const char16_t* source);
void CopyString(StringBuffer destination, std::u16string_view source);

} // namespace Corvid
