#include "Engine/Layout/Infer/ValueKinds.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "Engine/Archive/Text/TextValues.h"
#include "Engine/Layout/Infer/PlausibleValue.h"
#include "Engine/Math/Color.h"
#include "Engine/String/NumberFormat.h"
#include "Engine/String/NumberScan.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

constexpr std::string_view kBits = "Bits=";
constexpr std::size_t kMaxNumberText = 400;

// A value with readable bytes behind it, as the scanners want it.
class PaddedText {
public:
    explicit PaddedText(std::string_view text) : m_Length(std::min(text.size(), kMaxNumberText)) {
        std::memcpy(m_Bytes, text.data(), m_Length);
        std::memset(m_Bytes + m_Length, 0, kScanPadding);
    }

    operator std::string_view() const { return {m_Bytes, m_Length}; }

private:
    char m_Bytes[kMaxNumberText + kScanPadding];
    std::size_t m_Length;
};

bool IsWhole(ScannedValue scanned, int items) {
    return scanned.m_Items == items && scanned.m_IsPlain;
}

KindSet KindsOfList(const PaddedText& text) {
    float floats[4];
    std::int32_t ints[4];
    KindSet kinds;
    for (const int count : {3, 4}) {
        if (IsWhole(ScanFloatsValue(text, BitsRule::Taken, floats, count), count))
            kinds |= {count == 3 ? LayoutKind::Vector3 : LayoutKind::Vector4};
    }
    for (const int count : {2, 4}) {
        if (IsWhole(ScanIntsValue(text, ints, count), count))
            kinds |= {count == 2 ? LayoutKind::Pair : LayoutKind::Rect};
    }
    return kinds;
}

// The exact bits behind decimals tell a float from a double.
bool AreBitsNear(double exact, double shown) {
    return !(std::abs(exact - shown) > 0.006 + 1e-6 * std::abs(shown));
}

KindSet KindsOfNumber(std::string_view value) {
    const PaddedText text(value);
    KindSet kinds;
    std::int32_t int32;
    std::int64_t int64;
    float exactFloat = 0.0f;
    double exactDouble = 0.0;
    double shown = 0.0;
    if (IsWhole(ScanIntValue(text, int32), 1))
        kinds |= {LayoutKind::Int};
    if (IsWhole(ScanInt64Value(text, int64), 1))
        kinds |= {LayoutKind::Int64};
    if (value.size() <= kMaxHexText && value.find_first_not_of("0123456789abcdefABCDEF") == value.npos)
        kinds |= {LayoutKind::Color};
    const bool hasBits = value.find(kBits) != value.npos;
    ScanDoubleValue(text, BitsRule::Ignored, shown);
    if (IsWhole(ScanFloatValue(text, BitsRule::Taken, exactFloat), 1) &&
        (!hasBits || AreBitsNear(static_cast<double>(exactFloat), shown)))
        kinds |= {LayoutKind::Float};
    if (IsWhole(ScanDoubleValue(text, BitsRule::Taken, exactDouble), 1) &&
        (!hasBits || AreBitsNear(exactDouble, shown)))
        kinds |= {LayoutKind::Double};
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
    const bool isNoNumber = stored != 0 && std::abs(static_cast<double>(stored)) < kSmallestFloat;
    if (!std::isfinite(stored) || !std::isfinite(shown) || isNoNumber)
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
    float shown[4] = {};
    if (ScanFloatsValue(PaddedText(value), BitsRule::Taken, shown, count).m_Items != count)
        return false;
    for (int i = 0; i < count; ++i) {
        if (!LooksLike(Take<float>(bytes.substr(static_cast<std::size_t>(i) * sizeof(float))), shown[i]))
            return false;
    }
    return true;
}

bool IntsMatch(std::string_view value, std::string_view bytes, int count) {
    std::int32_t shown[4] = {};
    return ScanIntsValue(PaddedText(value), shown, count).m_Items == count &&
           std::memcmp(shown, bytes.data(), static_cast<std::size_t>(count) * sizeof(std::int32_t)) == 0;
}

bool ScalarMatches(LayoutKind kind, std::string_view value, std::string_view bytes) {
    const PaddedText text(value);
    switch (kind) {
    case LayoutKind::Bool:
        return bytes[0] == (value == "TRUE" ? 1 : 0);
    case LayoutKind::Int: {
        std::int32_t number;
        return ScanIntValue(text, number).m_Items == 1 && number == Take<std::int32_t>(bytes);
    }
    case LayoutKind::Int64: {
        std::int64_t number;
        return ScanInt64Value(text, number).m_Items == 1 && number == Take<std::int64_t>(bytes);
    }
    case LayoutKind::Color: {
        std::uint32_t packed;
        return ScanHexValue(text, packed).m_Items == 1 && PackColor(Take<Color>(bytes)) == packed;
    }
    case LayoutKind::Float: {
        float number;
        return ScanFloatValue(text, BitsRule::Taken, number).m_Items == 1 && LooksLike(Take<float>(bytes), number);
    }
    case LayoutKind::Double: {
        double number;
        return ScanDoubleValue(text, BitsRule::Taken, number).m_Items == 1 && LooksLike(Take<double>(bytes), number);
    }
    default:
        return false;
    }
}

} // namespace

KindSet KindsOfValue(std::string_view value) {
    if (value.starts_with('"')) {
        const bool isWhole = value.size() >= 2 && value.find('"', 1) == value.size() - 1;
        return isWhole ? KindSet{LayoutKind::String} : KindSet{};
    }
    if (value == "TRUE" || value == "FALSE")
        return {LayoutKind::Bool};
    if (value.empty() || value.size() > kMaxNumberText)
        return {};
    return value.front() == '[' ? KindsOfList(PaddedText(value)) : KindsOfNumber(value);
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

std::optional<std::int32_t> ReadIntText(std::string_view value) {
    std::int32_t number = 0;
    return IsWhole(ScanIntValue(PaddedText(value), number), 1) ? std::optional(number) : std::nullopt;
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
    const std::size_t size = LeastBytesOf(kind);
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
