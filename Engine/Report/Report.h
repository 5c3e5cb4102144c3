#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>

#include "Engine/Report/Message.h"

namespace Corvid {

// Where in its input an archive stood when something was reported.
struct ReportPosition {
    enum class Kind { None, Line, Offset };

    Kind m_Kind = Kind::None;
    std::uint64_t m_Value = 0; // physical line counted from 1, or bytes from the start of the file
};

// One value of a message. Texts are views: a sink that keeps an event copies what it needs.
class ReportArgument {
public:
    enum class Kind { Integer, Utf8, Utf16 };

    template <class Integer>
    requires std::is_integral_v<Integer>
    constexpr ReportArgument(Integer value) : m_Kind(Kind::Integer), m_Integer(static_cast<std::int64_t>(value)) {}
    constexpr ReportArgument(std::string_view text) : m_Kind(Kind::Utf8), m_Utf8(text) {}
    constexpr ReportArgument(std::u16string_view text) : m_Kind(Kind::Utf16), m_Utf16(text) {}

    constexpr Kind GetKind() const { return m_Kind; }
    constexpr std::int64_t GetInteger() const { return m_Integer; }
    constexpr std::string_view GetUtf8() const { return m_Utf8; } // raw bytes of a file: may be ill-formed
    constexpr std::u16string_view GetUtf16() const { return m_Utf16; }

private:
    Kind m_Kind;
    std::int64_t m_Integer = 0;
    std::string_view m_Utf8;
    std::u16string_view m_Utf16;
};

// An event first; its text is made on demand (Engine/String/ReportText.h).
struct Report {
    enum class Kind { Message, FailedCheck };

    Kind m_Kind = Kind::Message;
    ReportPosition m_Position;

    Message m_Message{};
    std::span<const ReportArgument> m_Arguments;

    const char* m_Condition = "";
    const char* m_SourceFile = ""; // as the compiler names it; an extension is not shown
    int m_SourceLine = 0;
};

} // namespace Corvid
