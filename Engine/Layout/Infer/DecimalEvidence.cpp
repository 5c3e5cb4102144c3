#include "Engine/Layout/Infer/DecimalEvidence.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "Engine/String/NumberFormat.h"
#include "Engine/String/NumberFormatExact.h"

namespace Corvid {

namespace {

constexpr std::size_t kDecimals = 6;    // that are written where they are enough
constexpr std::size_t kRoundZeros = 3;  // at the end of these: a round number, which anything may hold
constexpr std::size_t kMostDigits = 40; // of a number that somebody meant

template <class Number>
bool IsWrittenAs(std::string_view text, Number number, char* (*format)(char*, Number),
                 char* (*formatExact)(char*, Number)) {
    char buffer[kMaxDoubleText + kFormatSlack];
    const auto gives = [&](char* (*write)(char*, Number)) {
        const char* const end = write(buffer, number);
        return std::string_view(buffer, static_cast<std::size_t>(end - buffer)) == text;
    };
    return gives(format) || gives(formatExact);
}

} // namespace

void DecimalEvidence::Add(std::string_view value) {
    const std::size_t point = value.find('.');
    const bool isPlain = point != value.npos && value.find_first_not_of("-.0123456789") == value.npos;
    const std::size_t places = isPlain ? value.find_last_not_of('0') - point : 0;
    m_DecimalPlaces = std::max(m_DecimalPlaces, isPlain ? static_cast<int>(std::min<std::size_t>(places, 99)) : 99);
    if (point == value.npos || value.size() - point - 1 < kDecimals || value.size() > kMostDigits ||
        value.find_first_not_of("-.0123456789") != value.npos || m_Values.size() >= kMostValues)
        return;
    if (!m_Values.emplace(value).second)
        return;
    const std::string text(value);
    const float number = std::strtof(text.c_str(), nullptr);
    if (!IsWrittenAs<float>(value, number, FormatFloat, FormatFloatExact)) {
        const double wide = std::strtod(text.c_str(), nullptr);
        m_IsNoFloat = m_IsNoFloat || IsWrittenAs<double>(value, wide, FormatDouble, FormatDoubleExact);
        return;
    }
    if (value.size() - (value.find_last_not_of('0') + 1) >= kRoundZeros)
        return;
    const float magnitude = std::abs(number);
    const float next = std::nextafter(magnitude, std::numeric_limits<float>::infinity());
    const double steps =
        static_cast<double>(next - magnitude) * std::pow(10.0, static_cast<double>(value.size() - point - 1));
    m_Bits += std::max(0.0, std::log2(steps));
}

} // namespace Corvid
