#include "Engine/Layout/Infer/ValueKinds.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "Engine/Archive/TextValues.h"
#include "Engine/Math/Color.h"
#include "Engine/String/NumberFormat.h"
#include "Engine/String/NumberScan.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

constexpr std::string_view kBits = "Bits=";
constexpr std::size_t kMaxNumberText = 400;

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

bool IsHexDigit(char character) {
    return IsDigit(character) || (character >= 'a' && character <= 'f') || (character >= 'A' && character <= 'F');
}

// A value with readable bytes behind it, as the scanners want it.
class PaddedText {
public:
    explicit PaddedText(std::string_view text) : m_Length(std::min(text.size(), kMaxNumberText)) {
        std::memcpy(m_Bytes, text.data(), m_Length);
        std::memset(m_Bytes + m_Length, 0, kScanPadding);
    }

    const char* Begin() const { return m_Bytes; }
    const char* End() const { return m_Bytes + m_Length; }
    std::string_view GetText() const { return {m_Bytes, m_Length}; }

private:
    char m_Bytes[kMaxNumberText + kScanPadding];
    std::size_t m_Length;
};

// Numbers between brackets, and "Bits=" with others behind them if need be. Any white space stands around items.
class ListText {
public:
    explicit ListText(const PaddedText& text) : m_Position(text.Begin()), m_End(text.End()) {}

    bool Take(char character) {
        SkipBlanks();
        if (m_Position == m_End || *m_Position != character)
            return false;
        ++m_Position;
        return true;
    }

    template <class Value> bool Number(const char* (*scan)(const char*, const char*, Value&)) {
        SkipBlanks();
        Value value;
        const char* const next = m_Position == m_End ? nullptr : scan(m_Position, m_End, value);
        if (next == nullptr)
            return false;
        m_Position = next;
        return true;
    }

    bool Word(std::string_view word) {
        SkipBlanks();
        if (!std::string_view(m_Position, static_cast<std::size_t>(m_End - m_Position)).starts_with(word))
            return false;
        m_Position += word.size();
        return true;
    }

    bool IsAtEnd() {
        SkipBlanks();
        return m_Position == m_End;
    }

private:
    void SkipBlanks() {
        while (m_Position != m_End && (*m_Position == ' ' || *m_Position == '\t'))
            ++m_Position;
    }

    const char* m_Position;
    const char* m_End;
};

KindSet KindsOfList(std::string_view value) {
    const PaddedText text(value);
    if (value.find(',') != value.npos && value.find(kBits) == value.npos) {
        ListText list(text);
        int count = 0;
        if (!list.Take('['))
            return {};
        do {
            if (!list.Number<std::int32_t>(&ScanInt))
                return {};
            ++count;
        } while (list.Take(','));
        if (!list.Take(']') || !list.IsAtEnd())
            return {};
        return count == 2 ? KindSet{LayoutKind::Pair} : count == 4 ? KindSet{LayoutKind::Rect} : KindSet{};
    }
    ListText list(text);
    int count = 0;
    if (!list.Take('['))
        return {};
    while (list.Number<float>(&ScanFloat))
        ++count;
    if (!list.Take(']'))
        return {};
    if (!list.IsAtEnd()) {
        if (!list.Word(kBits) || !list.Take('['))
            return {};
        for (int i = 0; i < count; ++i) {
            if ((i > 0 && !list.Take(',')) || !list.Number<std::int32_t>(&ScanInt))
                return {};
        }
        if (!list.Take(']') || !list.IsAtEnd())
            return {};
    }
    return count == 3 ? KindSet{LayoutKind::Vector3} : count == 4 ? KindSet{LayoutKind::Vector4} : KindSet{};
}

// With the exact bits behind the decimals, which tell a float from a double.
KindSet KindsWithBits(std::string_view value) {
    const PaddedText text(value);
    ListText list(text);
    double shown;
    if (ScanDoubleValue(text.GetText(), shown) != 1 || !list.Number<double>(&ScanDouble) || !list.Word(kBits))
        return {};
    float asFloat = 0.0f;
    double asDouble = 0.0;
    if (ScanFloatBits(text.GetText(), asFloat) != 2 || ScanDoubleBits(text.GetText(), asDouble) != 2)
        return {};
    const auto isNear = [shown](double exact) {
        return !(std::abs(exact - shown) > 0.006 * std::max(1.0, std::abs(shown) * 1e-6));
    };
    KindSet kinds;
    if (isNear(static_cast<double>(asFloat)))
        kinds |= {LayoutKind::Float};
    if (isNear(asDouble))
        kinds |= {LayoutKind::Double};
    return kinds;
}

KindSet KindsOfNumber(std::string_view value) {
    KindSet kinds;
    const std::string_view digits = value.substr(value.starts_with('-') ? 1 : 0);
    const PaddedText text(value);
    if (!digits.empty() && std::all_of(digits.begin(), digits.end(), IsDigit)) {
        // Out of 64 bits nothing but a decimal number is left.
        const std::string_view significant = digits.substr(std::min(digits.find_first_not_of('0'), digits.size() - 1));
        const bool isNegative = digits.size() != value.size();
        const auto fits = [&](std::string_view most) {
            return significant.size() < most.size() || (significant.size() == most.size() && significant <= most);
        };
        if (fits(isNegative ? "2147483648" : "2147483647"))
            kinds |= {LayoutKind::Int};
        if (fits(isNegative ? "9223372036854775808" : "9223372036854775807"))
            kinds |= {LayoutKind::Int64};
    }
    if (!value.empty() && value.size() <= kMaxHexText && std::all_of(value.begin(), value.end(), IsHexDigit))
        kinds |= {LayoutKind::Color};
    double number;
    if (ScanDouble(text.Begin(), text.End(), number) == text.End())
        kinds |= {LayoutKind::Float, LayoutKind::Double};
    return kinds;
}

template <class Number> Number Take(std::string_view bytes) {
    Number number;
    std::memcpy(&number, bytes.data(), sizeof(number)); // both are little-endian
    return number;
}

// Numbers are the same if they are so exactly, or as text with six decimals.
template <class Number> bool LooksLike(Number stored, Number shown) {
    if (stored == shown || (std::isnan(stored) && std::isnan(shown)))
        return true;
    if (!std::isfinite(stored) || !std::isfinite(shown))
        return false;
    char storedText[kMaxDoubleText + kFormatSlack];
    char shownText[kMaxDoubleText + kFormatSlack];
    char* storedEnd;
    char* shownEnd;
    if constexpr (sizeof(Number) == sizeof(float)) {
        storedEnd = FormatFloat(storedText, stored);
        shownEnd = FormatFloat(shownText, shown);
    } else {
        storedEnd = FormatDouble(storedText, stored);
        shownEnd = FormatDouble(shownText, shown);
    }
    return std::string_view(storedText, static_cast<std::size_t>(storedEnd - storedText)) ==
           std::string_view(shownText, static_cast<std::size_t>(shownEnd - shownText));
}

bool FloatsMatch(std::string_view value, std::string_view bytes, int count) {
    const PaddedText text(value);
    float shown[4] = {};
    if (value.find(kBits) != value.npos ? ScanFloatsBits(text.GetText(), shown, count) != 2 * count
                                        : ScanFloatsValue(text.GetText(), shown, count) != count)
        return false;
    for (int i = 0; i < count; ++i) {
        if (!LooksLike(Take<float>(bytes.substr(static_cast<std::size_t>(i) * sizeof(float))), shown[i]))
            return false;
    }
    return true;
}

bool IntsMatch(std::string_view value, std::string_view bytes, int count) {
    const PaddedText text(value);
    std::int32_t shown[4] = {};
    return ScanIntsValue(text.GetText(), shown, count) == count &&
           std::memcmp(shown, bytes.data(), static_cast<std::size_t>(count) * sizeof(std::int32_t)) == 0;
}

bool ScalarMatches(LayoutKind kind, std::string_view value, std::string_view bytes) {
    const PaddedText text(value);
    const bool hasBits = value.find(kBits) != value.npos;
    switch (kind) {
    case LayoutKind::Bool:
        return bytes[0] == (value == "TRUE" ? 1 : 0);
    case LayoutKind::Int: {
        std::int32_t number;
        return ScanIntValue(text.GetText(), number) == 1 && number == Take<std::int32_t>(bytes);
    }
    case LayoutKind::Int64: {
        std::int64_t number;
        return ScanInt64Value(text.GetText(), number) == 1 && number == Take<std::int64_t>(bytes);
    }
    case LayoutKind::Color: {
        std::uint32_t packed;
        const Color color{Take<float>(bytes), Take<float>(bytes.substr(4)), Take<float>(bytes.substr(8)),
                          Take<float>(bytes.substr(12))};
        return ScanHexValue(text.GetText(), packed) == 1 && PackColor(color) == packed;
    }
    case LayoutKind::Float: {
        float number;
        return (hasBits ? ScanFloatBits(text.GetText(), number) == 2 : ScanFloatValue(text.GetText(), number) == 1) &&
               LooksLike(Take<float>(bytes), number);
    }
    case LayoutKind::Double: {
        double number;
        return (hasBits ? ScanDoubleBits(text.GetText(), number) == 2 : ScanDoubleValue(text.GetText(), number) == 1) &&
               LooksLike(Take<double>(bytes), number);
    }
    default:
        return false;
    }
}

} // namespace

KindSet KindsOfValue(std::string_view value) {
    if (value.empty() || value.size() > kMaxNumberText) {
        if (!value.starts_with('"'))
            return {};
    }
    if (value.front() == '"') {
        const bool isWhole = value.size() >= 2 && value.find('"', 1) == value.size() - 1;
        return isWhole ? KindSet{LayoutKind::String} : KindSet{};
    }
    if (value == "TRUE" || value == "FALSE")
        return {LayoutKind::Bool};
    if (value.front() == '[')
        return KindsOfList(value);
    return value.find(kBits) != value.npos ? KindsWithBits(value) : KindsOfNumber(value);
}

LayoutKind LikelyKind(KindSet kinds) {
    for (const LayoutKind kind :
         {LayoutKind::Int, LayoutKind::Int64, LayoutKind::Color, LayoutKind::Float, LayoutKind::Double}) {
        if (kinds.Has(kind))
            return kind;
    }
    for (const LayoutKind kind : {LayoutKind::Bool, LayoutKind::String, LayoutKind::Vector3, LayoutKind::Vector4,
                                  LayoutKind::Pair, LayoutKind::Rect, LayoutKind::Matrix33, LayoutKind::Matrix44}) {
        if (kinds.Has(kind))
            return kind;
    }
    return LayoutKind::String;
}

std::size_t FixedBytes(LayoutKind kind) {
    switch (kind) {
    case LayoutKind::Bool:
        return 1;
    case LayoutKind::Int:
    case LayoutKind::Float:
        return 4;
    case LayoutKind::Int64:
    case LayoutKind::Double:
    case LayoutKind::Pair:
        return 8;
    case LayoutKind::Vector3:
        return 12;
    case LayoutKind::Vector4:
    case LayoutKind::Rect:
    case LayoutKind::Color:
        return 16;
    case LayoutKind::Matrix33:
        return 36;
    case LayoutKind::Matrix44:
        return 64;
    default:
        return 0;
    }
}

std::optional<std::int32_t> ReadIntText(std::string_view value) {
    if (!KindsOfNumber(value).Has(LayoutKind::Int))
        return std::nullopt;
    std::int32_t number = 0;
    ScanIntValue(PaddedText(value).GetText(), number);
    return number;
}

std::u16string ReadStringText(std::string_view value) {
    return ToUtf16(value.substr(1, value.size() - 2));
}

std::size_t MatchBytes(LayoutKind kind, std::string_view value, std::string_view bytes) {
    if (kind == LayoutKind::String || kind == LayoutKind::Word) {
        const std::u16string units = ReadStringText(value);
        const std::size_t size = sizeof(std::uint32_t) + units.size() * sizeof(char16_t);
        if (bytes.size() < size || Take<std::uint32_t>(bytes) != units.size() ||
            std::memcmp(bytes.data() + sizeof(std::uint32_t), units.data(), units.size() * sizeof(char16_t)) != 0)
            return 0;
        return size;
    }
    const std::size_t size = FixedBytes(kind);
    if (size == 0 || bytes.size() < size)
        return 0;
    bool isMatch = false;
    switch (kind) {
    case LayoutKind::Vector3:
        isMatch = FloatsMatch(value, bytes, 3);
        break;
    case LayoutKind::Vector4:
        isMatch = FloatsMatch(value, bytes, 4);
        break;
    case LayoutKind::Pair:
        isMatch = IntsMatch(value, bytes, 2);
        break;
    case LayoutKind::Rect:
        isMatch = IntsMatch(value, bytes, 4);
        break;
    default:
        isMatch = ScalarMatches(kind, value, bytes);
    }
    return isMatch ? size : 0;
}

} // namespace Corvid
