#include "Engine/String/StringLibrary.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <string>

#include "Engine/Report/Reporter.h"

namespace Corvid {

int GetLength(const char16_t* source) {
    const std::size_t length = std::char_traits<char16_t>::length(source);
    return static_cast<int>(std::min<std::size_t>(length, INT_MAX));
}

int Compare(const char16_t* s1, const char16_t* s2) {
    Check(s1 != nullptr, "s1 != NULL");
    Check(s2 != nullptr, "s2 != NULL");
    if (s1 == nullptr)
        s1 = u"";
    if (s2 == nullptr)
        s2 = u"";
    while (*s1 != 0 && *s1 == *s2) {
        ++s1;
        ++s2;
    }
    return *s1 < *s2 ? -1 : *s1 > *s2 ? 1 : 0;
}

void CopyString(StringBuffer destination, const char16_t* source) {
    CopyString(destination, std::u16string_view(source, static_cast<std::size_t>(GetLength(source))));
}

void CopyString(StringBuffer destination, std::u16string_view source) {
    const bool isOther = Check(destination.m_Buffer != source.data(), "destination.m_Buffer != source");
    const bool hasRoom = Check(destination.m_BufferSize >= 1, "destination.m_BufferSize >= 1");
    if (!isOther || !hasRoom)
        return;
    std::size_t length = source.size();
    if (!Check(length < static_cast<std::size_t>(destination.m_BufferSize),
               "GetLength( source ) < destination.m_BufferSize"))
        length = static_cast<std::size_t>(destination.m_BufferSize) - 1;
    std::copy_n(source.data(), length, destination.m_Buffer);
    destination.m_Buffer[length] = 0;
}

} // namespace Corvid
