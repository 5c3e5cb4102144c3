#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Engine/Layout/Layout.h"

namespace Corvid {

// A set of kinds of values.
class KindSet {
public:
    constexpr KindSet() = default;
    constexpr KindSet(std::initializer_list<LayoutKind> kinds) {
        for (const LayoutKind kind : kinds)
            m_Bits |= BitOf(kind);
    }

    constexpr bool Has(LayoutKind kind) const { return (m_Bits & BitOf(kind)) != 0; }
    constexpr bool IsEmpty() const { return m_Bits == 0; }
    constexpr bool IsOne() const { return m_Bits != 0 && (m_Bits & (m_Bits - 1)) == 0; }
    constexpr void Remove(LayoutKind kind) { m_Bits &= ~BitOf(kind); }
    constexpr KindSet& operator|=(KindSet other) { return m_Bits |= other.m_Bits, *this; }
    friend constexpr KindSet operator&(KindSet left, KindSet right) { return left &= right; }
    constexpr KindSet& operator&=(KindSet other) { return m_Bits &= other.m_Bits, *this; }
    friend constexpr bool operator==(KindSet, KindSet) = default;

private:
    static constexpr std::uint32_t BitOf(LayoutKind kind) { return 1u << static_cast<unsigned>(kind); }

    std::uint32_t m_Bits = 0;
};

// The kinds that text leaves open between them.
inline constexpr KindSet kNumberKinds{LayoutKind::Int, LayoutKind::Int64, LayoutKind::Color, LayoutKind::Float,
                                      LayoutKind::Double};

// What a value, as it stands behind its label, can be; empty: nothing. A matrix is not a value but rows.
KindSet KindsOfValue(std::string_view value);

// Of what is usual among `kinds`: digits are an integer, decimals a float.
LayoutKind LikelyKind(KindSet kinds);

std::optional<std::int32_t> ReadIntText(std::string_view value);

// Between the quotes; the value must be a string.
std::u16string ReadStringText(std::string_view value);

// How the value of a text stands in binary, and whether bytes are such a value: numbers compare as text shows them,
// colours by 8 bits per channel.
std::size_t MatchBytes(LayoutKind kind, std::string_view value, std::string_view bytes); // bytes taken; 0: no match

} // namespace Corvid
