// Proves the number conversions on far more values than a test can take:
//
//     NumberCheck [texts, default 100000000] [stride, default 1]
//
// - ScanFloat() equals std::from_chars bit for bit on that many random texts of each kind below, those next to the
//   middle between two floats among them;
// - FormatFloat() equals snprintf("%f"), which must be exact as glibc's is, for every stride-th float of
//   [2^-21, 2^24) and for that many random bit patterns;
// - FormatFloatExact() chooses six decimals exactly where these bring the float back, else what std::to_chars finds,
//   for every stride-th float there is; ScanFloat() brings each of these texts back.
// The inline ways and the general ways behind them are checked alike. Exit status 1 and some examples on a difference.

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <system_error>

#include "Engine/String/NumberFormatExact.h"
#include "Engine/String/NumberScan.h"

namespace Corvid {
namespace {

// SplitMix64: every seed gives another sequence, the same on every system.
class Random {
public:
    std::uint64_t Next() {
        m_State += 0x9E3779B97F4A7C15;
        std::uint64_t bits = m_State;
        bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9;
        bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EB;
        return bits ^ (bits >> 31);
    }
    std::uint64_t Below(std::uint64_t limit) { return Next() % limit; }

private:
    std::uint64_t m_State = 1;
};

constexpr std::uint64_t kPowersOfTen[] = {1,       10,        100,        1'000,       10'000,
                                          100'000, 1'000'000, 10'000'000, 100'000'000, 1'000'000'000};

// A number's text under construction, with the padding that scanning asks for.
class Text {
public:
    void Begin(bool negative) {
        m_Length = 0;
        if (negative)
            Append('-');
    }
    void Append(char character) { m_Characters[m_Length++] = character; }
    void AppendInteger(std::uint64_t value) {
        m_Length = static_cast<std::size_t>(FormatInt64(m_Characters + m_Length, static_cast<std::int64_t>(value)) -
                                            m_Characters);
    }
    // value / 10^decimals
    void AppendFixed(std::uint64_t value, std::size_t decimals) {
        const std::uint64_t scale = kPowersOfTen[decimals];
        AppendInteger(value / scale);
        if (decimals == 0)
            return;
        Append('.');
        for (std::uint64_t digit = scale / 10; digit != 0; digit /= 10)
            Append(static_cast<char>('0' + value / digit % 10));
    }
    // 15 digits, without a point, and an exponent
    void AppendScientific(double value) {
        char text[32];
        std::snprintf(text, sizeof(text), "%.14e", value); // d.dddddddddddddde-xx
        Append(text[0]);
        for (int i = 2; i < 16; ++i)
            Append(text[i]);
        m_Length += static_cast<std::size_t>(
            std::snprintf(m_Characters + m_Length, sizeof(m_Characters) - m_Length, "e%d", std::atoi(text + 17) - 14));
    }
    void End(char behind) {
        std::memset(m_Characters + m_Length, 0, kScanPadding);
        m_Characters[m_Length] = behind;
    }
    const char* begin() const { return m_Characters; }
    const char* end() const { return m_Characters + m_Length; }

private:
    std::size_t m_Length = 0;
    char m_Characters[64 + kScanPadding] = {};
};

class Checker {
public:
    std::uint64_t GetFailures() const { return m_Failures; }

    void Scan(const Text& text) {
        float expected = 0;
        const auto [stop, error] = std::from_chars(text.begin(), text.end(), expected);
        if (error == std::errc::result_out_of_range) // only too large ones are made here
            expected = *text.begin() == '-' ? -HUGE_VALF : HUGE_VALF;
        // One character more than the number belongs to the text here: it must end by itself.
        float value = 0;
        float general = 0;
        const bool same = ScanFloat(text.begin(), text.end() + 1, value) == stop &&
                          ScanFloatOfAnyShape(text.begin(), text.end() + 1, general) == stop &&
                          IsSame(value, expected) && IsSame(general, expected);
        if (!same)
            Fail("scan %s: %a, general way %a, expected %a\n", text.begin(), static_cast<double>(value),
                 static_cast<double>(general), static_cast<double>(expected));
    }

    void Format(float value) {
        char expected[kMaxFloatText + 1];
        std::snprintf(expected, sizeof(expected), "%f", static_cast<double>(value));
        if (std::isnan(value)) // libraries differ in the sign
            std::strcpy(expected, std::signbit(value) ? "-nan" : "nan");
        char text[kMaxFloatText + kFormatSlack];
        char general[kMaxFloatText + kFormatSlack];
        *FormatFloat(text, value) = '\0';
        *FormatFloatOfAnySize(general, value) = '\0';
        if (std::strcmp(text, expected) != 0 || std::strcmp(general, expected) != 0)
            Fail("format %a: %s, general way %s, expected %s\n", static_cast<double>(value), text, general, expected);
    }

    void FormatExact(float value) {
        char text[kMaxFloatText + kFormatSlack + kScanPadding];
        char* const end = FormatFloatExact(text, value);
        char six[kMaxFloatText + kFormatSlack];
        char* const sixEnd = FormatFloat(six, value);
        float readBack = 0;
        std::from_chars(six, sixEnd, readBack);
        const std::string_view found(text, static_cast<std::size_t>(end - text));
        const bool isSix = IsSame(readBack, value);
        const bool isRight =
            isSix ? found == std::string_view(six, static_cast<std::size_t>(sixEnd - six)) : found == ShortestOf(value);
        *end = '\r';
        float scanned = 0;
        if (!isRight || ScanFloat(text, end + 1, scanned) != end || !IsSame(scanned, value))
            Fail("format %a: %.*s, read back as %a\n", static_cast<double>(value), static_cast<int>(found.size()), text,
                 static_cast<double>(scanned));
    }

private:
    // Below 10, and nothing that six decimals bring back.
    static std::string ShortestOf(float value) {
        char text[64];
        std::string fixed(text, std::to_chars(text, text + sizeof(text), value, std::chars_format::fixed).ptr);
        std::string scientific(text,
                               std::to_chars(text, text + sizeof(text), value, std::chars_format::scientific).ptr);
        if (scientific.find('.') == scientific.npos)
            scientific.insert(scientific.find('e'), ".0");
        return scientific.size() < fixed.size() ? scientific : fixed;
    }

    static bool IsSame(float a, float b) { return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b); }

    template <class... Arguments> void Fail(const char* format, Arguments... arguments) {
        constexpr std::uint64_t kShown = 20;
        if (++m_Failures <= kShown)
            std::printf(format, arguments...);
    }

    std::uint64_t m_Failures = 0;
};

// Every magnitude alike often, from 0.000001 to 99999999.999999.
void CheckCanonicalTexts(Checker& checker, std::uint64_t count) {
    Random random;
    Text text;
    constexpr char kBehind[] = {' ', '\r', '\n', '\t', '\0', ']'};
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::uint64_t bits = random.Next();
        text.Begin((bits & 1) != 0);
        text.AppendFixed(random.Below(kPowersOfTen[6 + (bits >> 1) % 3] * kPowersOfTen[(bits >> 8) % 7]), 6);
        text.End(kBehind[(bits >> 16) % sizeof(kBehind)]);
        checker.Scan(text);
    }
}

// The texts with `decimals` decimals on both sides of (or on) the middle above a random float.
void CheckMiddles(Checker& checker, std::uint64_t count, std::size_t decimals) {
    Random random;
    Text text;
    for (std::uint64_t i = 0; i < count; i += 3) {
        const std::uint64_t bits = random.Next();
        const int exponent = static_cast<int>((bits >> 32) % 47) - 20; // of the float: 2^-20 to 2^26
        const double middle = std::ldexp(static_cast<double>((bits & 0xFFFFFF) | 0x1000001), exponent - 24);
        const double scaled = middle * static_cast<double>(kPowersOfTen[decimals]);
        if (!(scaled >= 1 && scaled < 9e15))
            continue;
        const auto nearest = static_cast<std::uint64_t>(scaled);
        for (std::uint64_t value = nearest - 1; value <= nearest + 1; ++value) {
            text.Begin((bits >> 63) != 0);
            text.AppendFixed(value, decimals);
            text.End(' ');
            checker.Scan(text);
        }
    }
}

// 15 digits and an exponent: a rounded double may fall on the middle while the text lies beside it.
void CheckLongMiddles(Checker& checker, std::uint64_t count) {
    Random random;
    Text text;
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::uint64_t bits = random.Next();
        const int exponent = static_cast<int>((bits >> 32) % 180) - 60;
        text.Begin((bits >> 63) != 0);
        text.AppendScientific(std::ldexp(static_cast<double>((bits & 0xFFFFFF) | 0x1000001), exponent - 24));
        text.End('\r');
        checker.Scan(text);
    }
}

// Up to 19 digits, any number of decimals, with and without an exponent.
void CheckOtherTexts(Checker& checker, std::uint64_t count) {
    Random random;
    Text text;
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::uint64_t bits = random.Next();
        text.Begin((bits & 1) != 0);
        text.AppendFixed(random.Next() >> (1 + (bits >> 1) % 62), static_cast<std::size_t>((bits >> 8) % 10));
        if ((bits >> 16) % 2 == 0) {
            text.Append((bits >> 17) % 2 == 0 ? 'e' : 'E');
            if (const std::uint64_t sign = (bits >> 18) % 3; sign != 0)
                text.Append(sign == 1 ? '-' : '+');
            text.AppendInteger((bits >> 20) % 30);
        }
        text.End("\n x."[(bits >> 32) % 3]);
        checker.Scan(text);
    }
}

void CheckEveryFloat(Checker& checker, std::uint32_t stride) {
    const auto first = std::bit_cast<std::uint32_t>(0x1p-21f);
    const auto last = std::bit_cast<std::uint32_t>(0x1p24f);
    for (std::uint32_t bits = first; bits < last; bits += stride)
        checker.Format(std::bit_cast<float>(bits | (bits & 1) << 31));
}

void CheckRandomFloats(Checker& checker, std::uint64_t count) {
    Random random;
    for (std::uint64_t i = 0; i < count; ++i)
        checker.Format(std::bit_cast<float>(static_cast<std::uint32_t>(random.Next())));
}

// Magnitudes up to infinity; the signs take turns.
void CheckEveryExactFloat(Checker& checker, std::uint32_t stride) {
    const auto infinity = std::bit_cast<std::uint32_t>(HUGE_VALF);
    for (std::uint32_t bits = 0; bits < infinity; bits += stride)
        checker.FormatExact(std::bit_cast<float>(bits | (bits / stride & 1) << 31));
}

int Run(std::uint64_t count, std::uint32_t stride) {
    Checker checker;
    const auto report = [&](const char* what) {
        std::printf("%s: %llu differences so far\n", what, static_cast<unsigned long long>(checker.GetFailures()));
        std::fflush(stdout);
    };
    CheckCanonicalTexts(checker, count);
    report("six-decimal texts");
    for (const std::size_t decimals : {6, 3, 9, 0}) {
        CheckMiddles(checker, count, decimals);
        report("texts next to middles between floats");
    }
    CheckLongMiddles(checker, count);
    report("texts of 15 digits next to middles");
    CheckOtherTexts(checker, count);
    report("other texts");
    CheckEveryFloat(checker, stride);
    report("floats of [2^-21, 2^24)");
    CheckRandomFloats(checker, count);
    report("random floats");
    CheckEveryExactFloat(checker, stride);
    report("exact texts of floats");
    return checker.GetFailures() == 0 ? 0 : 1;
}

} // namespace
} // namespace Corvid

int main(int argc, char** argv) {
    const unsigned long long count = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 100'000'000;
    const unsigned long stride = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 1;
    return Corvid::Run(count, stride != 0 ? static_cast<std::uint32_t>(stride) : 1);
}
