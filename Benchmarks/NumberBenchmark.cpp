// Number conversions against the standard library's, on the values that meshes are made of.

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Engine/String/NumberFormat.h"
#include "Engine/String/NumberScan.h"

namespace Corvid {
namespace {

constexpr std::size_t kValueCount = 100'000; // too many for the branch predictor to learn

// The shapes a value may take in text that other tools wrote.
enum class Shape { SixDecimals, ThreeDecimals, NineDecimals, Exponent };

std::vector<float> MakeFloats() {
    std::vector<float> values;
    std::uint32_t state = 1;
    for (std::size_t i = 0; i < kValueCount; ++i) {
        state = state * 1664525 + 1013904223;
        const float unit = static_cast<float>(state >> 8) * 0x1p-24f;
        constexpr float kSizes[] = {1.0f, 30.0f, 600.0f};
        values.push_back((unit * 2 - 1) * kSizes[i % 3]);
    }
    return values;
}

std::vector<std::int32_t> MakeIntegers() {
    std::vector<std::int32_t> values;
    std::uint32_t state = 1;
    for (std::size_t i = 0; i < kValueCount; ++i) {
        state = state * 1664525 + 1013904223;
        values.push_back(static_cast<std::int32_t>((state >> 8) % 90'000));
    }
    return values;
}

// Numbers in one buffer, a blank behind each, with the padding that scanning asks for.
class Texts {
public:
    explicit Texts(const std::vector<float>& values, Shape shape) {
        for (const float value : values) {
            char text[kMaxFloatText + kFormatSlack];
            const bool exponent = shape == Shape::Exponent;
            const int decimals = shape == Shape::ThreeDecimals ? 3 : shape == Shape::NineDecimals ? 9 : 6;
            const auto format = exponent ? std::chars_format::scientific : std::chars_format::fixed;
            Append(text, std::to_chars(text, text + sizeof(text), value, format, decimals).ptr);
        }
        m_Text.append(kScanPadding, ' ');
    }
    explicit Texts(const std::vector<std::int32_t>& values) {
        for (const std::int32_t value : values) {
            char text[kMaxIntText + kFormatSlack];
            Append(text, FormatInt(text, value));
        }
        m_Text.append(kScanPadding, ' ');
    }
    const char* begin() const { return m_Text.data(); }
    const char* end() const { return m_Text.data() + m_Text.size() - kScanPadding; }

private:
    void Append(const char* begin, const char* end) { m_Text.append(begin, end) += ' '; }

    std::string m_Text;
};

template <class Value, class Scan> void RunScan(benchmark::State& state, const Texts& texts, Scan scan) {
    for (auto _ : state) {
        for (const char* at = texts.begin(); at != texts.end(); ++at) {
            Value value{};
            at = scan(at, texts.end(), value);
            benchmark::DoNotOptimize(value);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kValueCount));
}

template <class Value, class Format>
void RunFormat(benchmark::State& state, const std::vector<Value>& values, Format format) {
    std::vector<char> buffer(kValueCount * (kMaxFloatText + kFormatSlack));
    for (auto _ : state) {
        char* out = buffer.data();
        for (const Value value : values)
            out = format(out, value);
        benchmark::DoNotOptimize(out);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kValueCount));
}

constexpr auto kScanFloat = [](const char* at, const char* end, float& value) { return ScanFloat(at, end, value); };
constexpr auto kScanInt = [](const char* at, const char* end, std::int32_t& value) { return ScanInt(at, end, value); };
constexpr auto kFromChars = [](const char* at, const char* end, auto& value) {
    return std::from_chars(at, end, value).ptr;
};

template <Shape shape> void ScanFloatOwn(benchmark::State& state) {
    RunScan<float>(state, Texts(MakeFloats(), shape), kScanFloat);
}
template <Shape shape> void ScanFloatStandard(benchmark::State& state) {
    RunScan<float>(state, Texts(MakeFloats(), shape), kFromChars);
}
BENCHMARK(ScanFloatOwn<Shape::SixDecimals>);
BENCHMARK(ScanFloatStandard<Shape::SixDecimals>);
BENCHMARK(ScanFloatOwn<Shape::ThreeDecimals>);
BENCHMARK(ScanFloatStandard<Shape::ThreeDecimals>);
BENCHMARK(ScanFloatOwn<Shape::NineDecimals>);
BENCHMARK(ScanFloatStandard<Shape::NineDecimals>);
BENCHMARK(ScanFloatOwn<Shape::Exponent>);
BENCHMARK(ScanFloatStandard<Shape::Exponent>);

void ScanIntOwn(benchmark::State& state) {
    RunScan<std::int32_t>(state, Texts(MakeIntegers()), kScanInt);
}
void ScanIntStandard(benchmark::State& state) {
    RunScan<std::int32_t>(state, Texts(MakeIntegers()), kFromChars);
}
BENCHMARK(ScanIntOwn);
BENCHMARK(ScanIntStandard);

void FormatFloatOwn(benchmark::State& state) {
    RunFormat(state, MakeFloats(), [](char* out, float value) { return FormatFloat(out, value); });
}
void FormatFloatStandard(benchmark::State& state) {
    RunFormat(state, MakeFloats(), [](char* out, float value) {
        return std::to_chars(out, out + kMaxFloatText, value, std::chars_format::fixed, 6).ptr;
    });
}
BENCHMARK(FormatFloatOwn);
BENCHMARK(FormatFloatStandard);

void FormatIntOwn(benchmark::State& state) {
    RunFormat(state, MakeIntegers(), [](char* out, std::int32_t value) { return FormatInt(out, value); });
}
void FormatIntStandard(benchmark::State& state) {
    RunFormat(state, MakeIntegers(),
              [](char* out, std::int32_t value) { return std::to_chars(out, out + kMaxIntText, value).ptr; });
}
BENCHMARK(FormatIntOwn);
BENCHMARK(FormatIntStandard);

} // namespace
} // namespace Corvid

BENCHMARK_MAIN();
