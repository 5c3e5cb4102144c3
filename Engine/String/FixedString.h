#pragma once

#include <string_view>

#include "Engine/String/StringLibrary.h"

namespace Corvid {

// A wide string of at most Capacity - 1 UTF-16 units, its terminator always in place.
template <int Capacity> class FixedString {
public:
    static_assert(Capacity >= 1);

    FixedString() { m_Text[0] = 0; }
    explicit FixedString(const char16_t* text) { CopyString(GetBuffer(), text); }
    explicit FixedString(std::u16string_view text) { CopyString(GetBuffer(), text); }
    FixedString(const FixedString& other) { CopyString(GetBuffer(), other.m_Text); }
    FixedString& operator=(const FixedString& other) {
        if (this != &other)
            CopyString(GetBuffer(), other.m_Text);
        return *this;
    }

    // Bounded: cut, and reported, when it does not fit.
    FixedString& operator=(const char16_t* text) {
        CopyString(GetBuffer(), text);
        return *this;
    }
    FixedString& operator=(std::u16string_view text) {
        CopyString(GetBuffer(), text);
        return *this;
    }

    static constexpr int GetCapacity() { return Capacity; } // UTF-16 units, terminator included
    StringBuffer GetBuffer() { return {m_Text, Capacity}; }
    const char16_t* GetText() const { return m_Text; }
    std::u16string_view GetView() const { return m_Text; }
    bool IsEmpty() const { return m_Text[0] == 0; }

    friend bool operator==(const FixedString& a, const FixedString& b) { return a.GetView() == b.GetView(); }
    friend bool operator==(const FixedString& a, std::u16string_view b) { return a.GetView() == b; }

private:
    char16_t m_Text[Capacity];
};

} // namespace Corvid
