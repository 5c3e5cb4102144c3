#include "Engine/Layout/Infer/PlausibleValue.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "Engine/Layout/Infer/ValueKinds.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

// Beside what the samples show, a file may hold numbers so many times as large; with few samples much larger ones.
constexpr std::size_t kManyValues = 8;
constexpr double kIntSlack = 8.0;
constexpr double kFloatSlack = 1000.0;
constexpr std::size_t kManyOfEach = 4; // values of each number: no others are expected
constexpr double kLargestInt = 65536.0;
constexpr double kLargestIntOfFew = 268435456.0;    // 2^28; the bits of everyday floats lie above
constexpr double kLargestInt64OfFew = 8589934592.0; // 2^33; two integers side by side lie above, mostly
constexpr double kLargestFloat = 1000.0;
constexpr double kLargestFloatOfFew = 1e9;

template <class Number> Number Take(std::string_view bytes, std::size_t index = 0) {
    Number number;
    std::memcpy(&number, bytes.data() + index * sizeof(Number), sizeof(Number));
    return number;
}

bool IsPlausibleInt(double number, const NumberRange& range, double largestOfFew) {
    const double largest = range.m_ValueCount >= kManyValues ? kLargestInt : largestOfFew;
    return std::abs(number) <= std::max(largest, kIntSlack * range.m_Largest);
}

bool IsPlausibleFloat(double number, const NumberRange& range) {
    if (number == 0.0)
        return true;
    const double largest = range.m_ValueCount >= kManyValues ? kLargestFloat : kLargestFloatOfFew;
    return std::isfinite(number) && std::abs(number) >= kSmallestFloat &&
           std::abs(number) <= std::max(largest, kFloatSlack * range.m_Largest);
}

bool AreFloats(std::string_view bytes, std::size_t count, const NumberRange& range) {
    for (std::size_t i = 0; i < count; ++i) {
        if (!IsPlausibleFloat(static_cast<double>(Take<float>(bytes, i)), range))
            return false;
    }
    return true;
}

bool IsPlausibleText(std::u16string_view units) {
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char16_t unit = units[i];
        if (unit < 0x20 || unit == u'"' || IsLowSurrogate(unit) || unit >= 0xFFFE)
            return false;
        if (IsHighSurrogate(unit) && (++i == units.size() || !IsLowSurrogate(units[i])))
            return false;
    }
    return true;
}

bool IsAsRound(double number, int places) {
    const double scaled = number * std::pow(10.0, places);
    return std::abs(scaled - std::round(scaled)) <= 1e-6 * std::abs(scaled); // a float has no more digits
}

} // namespace

bool IsUnlike(LayoutKind kind, std::string_view bytes, const NumberRange& range) {
    if (range.m_ValueCount < kManyValues)
        return false;
    const auto isOther = [&](std::int64_t number) {
        return !range.m_Numbers.empty() && range.m_Numbers.size() * kManyOfEach <= range.m_ValueCount &&
               std::find(range.m_Numbers.begin(), range.m_Numbers.end(), number) == range.m_Numbers.end();
    };
    switch (kind) {
    case LayoutKind::Int:
        return isOther(Take<std::int32_t>(bytes));
    case LayoutKind::Int64:
        return isOther(Take<std::int64_t>(bytes));
    case LayoutKind::Float:
        return range.m_DecimalPlaces >= 0 && !IsAsRound(static_cast<double>(Take<float>(bytes)), range.m_DecimalPlaces);
    case LayoutKind::Double:
        return range.m_DecimalPlaces >= 0 && !IsAsRound(Take<double>(bytes), range.m_DecimalPlaces);
    default:
        return false;
    }
}

std::int32_t TakeInt(std::string_view bytes) {
    return Take<std::int32_t>(bytes);
}

std::u16string TakeString(std::string_view bytes) {
    std::u16string units(Take<std::uint32_t>(bytes), u'\0');
    std::memcpy(units.data(), bytes.data() + sizeof(std::uint32_t), units.size() * sizeof(char16_t));
    return units;
}

std::optional<std::size_t> SizeOfPlausible(LayoutKind kind, std::string_view bytes, const NumberRange& range) {
    if (kind == LayoutKind::String || kind == LayoutKind::Word) {
        if (bytes.size() < sizeof(std::uint32_t))
            return std::nullopt;
        const std::size_t units = Take<std::uint32_t>(bytes);
        if (units > (bytes.size() - sizeof(std::uint32_t)) / sizeof(char16_t) || !IsPlausibleText(TakeString(bytes)))
            return std::nullopt;
        return sizeof(std::uint32_t) + units * sizeof(char16_t);
    }
    const std::size_t size = LeastBytesOf(kind);
    if (bytes.size() < size)
        return std::nullopt;
    const NumberRange few;
    bool isPlausible = true;
    switch (kind) {
    case LayoutKind::Bool:
        isPlausible = bytes[0] == 0 || bytes[0] == 1;
        break;
    case LayoutKind::Int:
        isPlausible = IsPlausibleInt(static_cast<double>(Take<std::int32_t>(bytes)), range, kLargestIntOfFew);
        break;
    case LayoutKind::Int64:
        isPlausible = IsPlausibleInt(static_cast<double>(Take<std::int64_t>(bytes)), range, kLargestInt64OfFew);
        break;
    case LayoutKind::Float:
        isPlausible = AreFloats(bytes, 1, range);
        break;
    case LayoutKind::Double:
        isPlausible = IsPlausibleFloat(Take<double>(bytes), range);
        break;
    case LayoutKind::Color:
        for (std::size_t channel = 0; channel < 4; ++channel) {
            const float value = Take<float>(bytes, channel);
            isPlausible = isPlausible && value >= 0.0f && value <= 1.0f &&
                          (value == 0.0f || static_cast<double>(value) >= kSmallestFloat);
        }
        break;
    case LayoutKind::Vector3:
    case LayoutKind::Vector4:
    case LayoutKind::Matrix33:
    case LayoutKind::Matrix44:
        isPlausible = AreFloats(bytes, size / sizeof(float), few);
        break;
    default:
        break;
    }
    return isPlausible ? std::optional(size) : std::nullopt;
}

} // namespace Corvid
