#include "Engine/Archive/Checksum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "Tests/Engine/Archive/TextArchiveFixture.h"

namespace Corvid {
namespace {

TEST(Fletcher32Test, IsTheClassicOne) {
    std::vector<std::uint16_t> counting(721); // folded twice on the way
    std::iota(counting.begin(), counting.end(), std::uint16_t{1});
    const struct {
        const char* name;
        std::vector<std::uint16_t> words;
        std::uint32_t expected;
    } kCases[] = {
        {"None", {}, 0xFFFFFFFF},
        {"Zeros", {0, 0}, 0xFFFFFFFF},
        {"abcdef", {0x6261, 0x6463, 0x6665}, 0x56502D2A},
        {"abcdefgh", {0x6261, 0x6463, 0x6665, 0x6867}, 0xEBE19591},
        {"Counting", counting, 0x29E6F8BC},
        {"LargeWords", std::vector<std::uint16_t>(1000, 0xFFF0), 0x7161C567},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(Fletcher32(c.words.data(), c.words.size()), c.expected) << c.name;
}

class ChecksumTest : public TextArchiveFixture {
protected:
    // What one value adds.
    template <class Written, class Value>
    void ExpectSum(void (Archive::*write)(Label, Written), void (Archive::*read)(Label, Value&), const Value& value,
                   std::uint32_t inText, std::uint32_t inBinary) {
        for (const ArchiveFormat format : {ArchiveFormat::Text, ArchiveFormat::Binary}) {
            const std::uint32_t sum = format == ArchiveFormat::Text ? inText : inBinary;
            const std::string file = SaveWith(format, [&](Archive& archive) {
                for (int i = 0; i < 3; ++i)
                    (archive.*write)(kValue, value);
            });
            LoadWith(file, [&](FileArchive& archive) {
                EXPECT_EQ(archive.GetChecksum(), 0u);
                ReadOver(Value{}, archive, read);
                EXPECT_EQ(archive.GetChecksum(), sum);
                ReadOver(Value{}, archive, read);
                EXPECT_EQ(archive.GetChecksum(), 2 * sum); // with wrap-around
                archive.EnableChecksum(false);
                ReadOver(Value{}, archive, read);
                EXPECT_EQ(archive.GetChecksum(), 2 * sum);
                archive.EnableChecksum(true);
                ReadOver(Value{}, archive, read); // nothing is there
                EXPECT_EQ(archive.GetChecksum(), 2 * sum);
            });
        }
    }
    template <class Written, class Value>
    void ExpectSum(void (Archive::*write)(Label, Written), void (Archive::*read)(Label, Value&), const Value& value,
                   std::uint32_t sum) {
        ExpectSum(write, read, value, sum, sum);
    }
};

TEST_F(ChecksumTest, EveryValueIsAdded) {
    constexpr std::uint32_t kFew = 0xFFFFFFFF; // what a float adds whose double ends in 32 zero bits: -1
    constexpr std::uint32_t kTenth = 0xA000A000;
    using A = Archive;
    ExpectSum<std::int32_t, std::int32_t>(&A::WriteInt, &A::ReadInt, -2, 0xFFFFFFFE);
    ExpectSum<std::uint32_t, std::uint32_t>(&A::WriteInt, &A::ReadInt, 3000000000, 3000000000);
    ExpectSum(&A::WriteEnum, &A::ReadEnum, 3, 3);
    ExpectSum<std::int64_t, std::int64_t>(&A::WriteInt64, &A::ReadInt64, 0x500000007, 7, 0);
    ExpectSum(&A::WriteBool, &A::ReadBool, true, 1);
    ExpectSum(&A::WriteBool, &A::ReadBool, false, 0);
    ExpectSum<const IntPair&, IntPair>(&A::WriteIntPair, &A::ReadIntPair, {1, 2}, 3);
    ExpectSum(&A::WriteIntRect, &A::ReadIntRect, IntRect{1, 2, 3, -5}, 1);
    ExpectSum(&A::WriteFloat, &A::ReadFloat, 0.1f, kTenth);
    ExpectSum(&A::WriteFloat, &A::ReadFloat, 2.5f, kFew);
    ExpectSum(&A::WriteDouble, &A::ReadDouble, 0.1, 0xA6230C87);
    ExpectSum(&A::WriteDouble, &A::ReadDouble, 1.0, 0x3FF03FF0);
    ExpectSum(&A::WriteVector3, &A::ReadVector3, Vector3{1, 0.1f, 2}, kTenth + 2 * kFew);
    ExpectSum(&A::WriteVector4, &A::ReadVector4, Vector4{1, 2, 3, 0.1f}, kTenth + 3 * kFew);
    ExpectSum(&A::WriteMatrix33, &A::ReadMatrix33, Matrix33::Identity(), 9 * kFew);
    ExpectSum(&A::WriteMatrix44, &A::ReadMatrix44, Matrix44(), 16 * kFew);
    ExpectSum(&A::WriteColor, &A::ReadColor, kWhite, 4 * kFew);
}

TEST_F(ChecksumTest, StringsAddTheirHashInBothEncodings) {
    std::vector<std::uint32_t> sums;
    for (const char16_t* name : {u"", u"Hull", u"hull", u"lluH", u"Hull "}) {
        for (const ArchiveFormat format : {ArchiveFormat::Text, ArchiveFormat::Binary}) {
            FixedString<20> read;
            LoadWith(SaveWith(format, [&](Archive& archive) { archive.WriteString(kValue, name); }),
                     [&](FileArchive& archive) {
                         ReadValue(archive, kValue, read);
                         const auto known = std::count(sums.begin(), sums.end(), archive.GetChecksum());
                         EXPECT_EQ(known, format == ArchiveFormat::Text ? 0 : 1);
                         if (known == 0)
                             sums.push_back(archive.GetChecksum());
                     });
        }
    }
}

TEST_F(ChecksumTest, FaultyValuesAddNothing) {
    const auto readSome = [](FileArchive& archive) {
        ReadOver<std::int32_t>(0, archive, &Archive::ReadInt);
        ReadOver(0.0f, archive, &Archive::ReadFloat);
        ReadOver(false, archive, &Archive::ReadBool);
        EXPECT_EQ(archive.GetChecksum(), 0u);
    };
    for (const char* lines : {"Other 5", "Value x", "Value "})
        Read(lines, readSome);
    m_Archives.EnableChecksums(false);
    Read("Value 5\nValue 0.1\nValue TRUE\n", readSome);
}

} // namespace
} // namespace Corvid
