// One kind of file in one encoding, both set by the build: any input is loaded and saved in both encodings, once each
// way of reading text and each time with other bytes in memory beforehand; nothing may come out differently.

#include <cstddef>
#include <cstdint>
#include <string>

#include "Fuzz/Archives.h"
#include "Fuzz/HeapWatch.h"

namespace Corvid::Fuzz {

namespace {

constexpr Kind kKind = Kind::CORVID_FUZZ_KIND;
constexpr ArchiveFormat kFormat = ArchiveFormat::CORVID_FUZZ_FORMAT;

// What a run promises of any input: at most so much, and so many times the input.
constexpr std::size_t kMebibyte = std::size_t(1) << 20;
constexpr std::size_t kMostMemory = 64 * kMebibyte, kMemoryPerByte = 40;
constexpr std::size_t kLargestOutput = 4 * kMebibyte, kOutputPerByte = 256;

// Where the slack of a count makes an object large, its text says no more than its bytes do.
constexpr std::size_t kLargestForText = 64 * 1024;

struct Conversion {
    Trace m_Trace;
    std::string m_Text;
    std::string m_Binary;
};

Conversion Convert(const std::string& file, Way way, unsigned char fill) {
    Conversion result;
    result.m_Text.reserve(file.size() * 4);
    result.m_Binary.reserve(file.size() * 4);
    const HeapWatch watch(fill);
    const std::unique_ptr<KindObject> object = CreateObject(kKind);
    result.m_Trace = Load(file, *object, way);
    object->Finish();
    result.m_Binary = Save(*object, ArchiveFormat::Binary);
    if (result.m_Binary.size() <= kLargestForText)
        result.m_Text = Save(*object, ArchiveFormat::Text);
    Require(watch.GetPeak() <= kMostMemory + kMemoryPerByte * file.size(), "memory stays within its bound");
    return result;
}

void ExpectSame(const Conversion& one, const Conversion& other) {
    Require(one.m_Trace.IsLike(other.m_Trace), "all loadings report the same, at the same places");
    Require(one.m_Binary == other.m_Binary, "all loadings give the same object");
    Require(one.m_Text == other.m_Text, "all loadings give the same text");
}

} // namespace

} // namespace Corvid::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Corvid::Fuzz;
    const std::string file = AsFile({reinterpret_cast<const char*>(data), size}, kFormat);
    const Conversion byLine = Convert(file, Way::ByLine, 0x00);
    const Conversion asWritten = Convert(file, Way::AsWritten, 0xA5);
    ExpectSame(asWritten, byLine);
    if (kFormat == Corvid::ArchiveFormat::Text)
        ExpectSame(Convert(file, Way::InPlace, 0x5A), byLine);
    const std::size_t largest = kLargestOutput + kOutputPerByte * file.size();
    Require(byLine.m_Text.size() <= largest && byLine.m_Binary.size() <= largest, "output stays within its bound");
    return 0;
}
