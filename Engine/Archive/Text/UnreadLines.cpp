#include "Engine/Archive/Text/UnreadLines.h"

#include <algorithm>

namespace Corvid {

void UnreadLines::Add(const TextLine& line, std::uint64_t number) {
    const bool isBlank =
        line.m_FirstUnit == 0 && !line.m_HasNul && std::all_of(line.m_Text.begin(), line.m_Text.end(), IsWhiteSpace);
    if (isBlank || number == m_LastNumber)
        return;
    m_LastNumber = number;
    if (m_Count++ > 0)
        return;
    m_FirstNumber = number;
    std::string storage;
    m_First = SkipWhiteSpace(TextForReport(line, storage));
    m_First.erase(std::min(m_First.find_first_of("\r\n"), m_First.size()));
}

} // namespace Corvid
