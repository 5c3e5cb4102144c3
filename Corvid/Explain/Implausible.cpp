#include "Corvid/Explain/Implausible.h"

#include <cmath>
#include <limits>

#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

// Integers, letters and halves of other numbers read as floats lie outside; what people measure lies inside.
constexpr double kSmallest = 1e-30;
constexpr double kLargest = 1e30;

bool IsPlausible(double number) {
    const double magnitude = std::abs(number);
    return magnitude == 0.0 || (magnitude >= kSmallest && magnitude <= kLargest) ||
           magnitude == static_cast<double>(std::numeric_limits<float>::max()) || // stands for "without end"
           magnitude == static_cast<double>(std::numeric_limits<float>::min()) ||
           magnitude == std::numeric_limits<double>::max();
}

std::size_t FloatCount(ValueKind kind) {
    switch (kind) {
    case ValueKind::Float:
        return 1;
    case ValueKind::Vector3:
        return 3;
    case ValueKind::Vector4:
    case ValueKind::Color:
        return 4;
    case ValueKind::Matrix33:
        return 9;
    case ValueKind::Matrix44:
        return 16;
    default:
        return 0;
    }
}

bool IsPlausible(std::u16string_view text) {
    const char16_t* position = text.data();
    const char16_t* const end = position + text.size();
    while (position != end) {
        const char32_t unit = *position;
        if ((unit < 0x20 && unit != u'\t') || unit == 0xFFFE || unit == 0xFFFF)
            return false;
        if (DecodeUtf16(position, end) == kReplacementCharacter && unit != kReplacementCharacter)
            return false;
    }
    return true;
}

} // namespace

std::string ExplainImplausible(const TextValue& value) {
    if (value.m_Kind == ValueKind::String && !IsPlausible(value.m_String))
        return "the string holds what is no text";
    if (value.m_Kind == ValueKind::Double && !IsPlausible(value.m_Double))
        return std::to_string(value.m_Double) + " is no number that somebody measured";
    for (std::size_t i = 0; i < FloatCount(value.m_Kind); ++i) {
        const float number = value.m_Floats[i];
        if (value.m_Kind == ValueKind::Color && !(number >= 0.0f && number <= 1.0f))
            return std::to_string(number) + " is no channel of a colour, which is 0 to 1";
        if (!IsPlausible(static_cast<double>(number)))
            return std::to_string(number) + " is no number that somebody measured";
    }
    return {};
}

} // namespace Corvid
