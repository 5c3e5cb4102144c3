#pragma once

#include <cstdint>
#include <string>

#include "Engine/Archive/Text/TextLine.h"

namespace Corvid {

// The lines that nobody asked for: how many, and the first of them. Blank ones do not count, and of a long line all
// pieces are one.
class UnreadLines {
public:
    void Add(const TextLine& line, std::uint64_t number);

    std::uint64_t GetCount() const { return m_Count; }
    std::uint64_t GetFirstNumber() const { return m_FirstNumber; } // as Add() was told
    const std::string& GetFirst() const { return m_First; }        // from its first visible character to its end

private:
    std::uint64_t m_Count = 0;
    std::uint64_t m_FirstNumber = 0;
    std::uint64_t m_LastNumber = 0;
    std::string m_First;
};

} // namespace Corvid
