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
    template <class Value> static void ReadAny(Archive& archive, void (Archive::*read)(Label, Value&)) {
        ReadOver(Value{}, archive, read);
    }
    static void ReadName(Archive& archive) {
        FixedString<20> name;
        ReadValue(archive, kValue, name);
    }
};

constexpr std::uint32_t kOne = 0xFFFFFFFF; // what a float whose double ends in 32 zero bits adds: -1

TEST_F(ChecksumTest, EveryValueIsAdded) {
    using A = Archive;
    const struct {
        const char* name;
        void (*write)(Archive&);
        void (*read)(Archive&);
        std::uint32_t text, binary;
    } kCases[] = {
        {"Int", [](A& a) { a.WriteInt(kValue, std::int32_t{5}); }, [](A& a) { ReadAny<std::int32_t>(a, &A::ReadInt); },
         5, 5},
        {"Negative", [](A& a) { a.WriteInt(kValue, std::int32_t{-2}); },
         [](A& a) { ReadAny<std::int32_t>(a, &A::ReadInt); }, 0xFFFFFFFE, 0xFFFFFFFE},
        {"Unsigned", [](A& a) { a.WriteInt(kValue, std::uint32_t{3000000000}); },
         [](A& a) { ReadAny<std::uint32_t>(a, &A::ReadInt); }, 3000000000, 3000000000},
        {"Enum", [](A& a) { a.WriteEnum(kValue, 3); }, [](A& a) { ReadAny<std::int32_t>(a, &A::ReadEnum); }, 3, 3},
        {"Int64", [](A& a) { a.WriteInt64(kValue, 0x500000007); },
         [](A& a) { ReadAny<std::int64_t>(a, &A::ReadInt64); }, 7, 0},
        {"True", [](A& a) { a.WriteBool(kValue, true); }, [](A& a) { ReadAny<bool>(a, &A::ReadBool); }, 1, 1},
        {"False", [](A& a) { a.WriteBool(kValue, false); }, [](A& a) { ReadAny<bool>(a, &A::ReadBool); }, 0, 0},
        {"Pair", [](A& a) { a.WriteIntPair(kValue, 1, 2); }, [](A& a) { ReadAny<IntPair>(a, &A::ReadIntPair); }, 3, 3},
        {"Rect",
         [](A& a) {
             a.WriteIntRect(kValue, {1, 2, 3, -5});
         },
         [](A& a) { ReadAny<IntRect>(a, &A::ReadIntRect); }, 1, 1},
        {"Float", [](A& a) { a.WriteFloat(kValue, 0.1f); }, [](A& a) { ReadAny<float>(a, &A::ReadFloat); }, 0xA000A000,
         0xA000A000},
        {"FloatOfFewBits", [](A& a) { a.WriteFloat(kValue, 2.5f); }, [](A& a) { ReadAny<float>(a, &A::ReadFloat); },
         kOne, kOne},
        {"Double", [](A& a) { a.WriteDouble(kValue, 0.1); }, [](A& a) { ReadAny<double>(a, &A::ReadDouble); },
         0xA6230C87, 0xA6230C87},
        {"DoubleOfFewBits", [](A& a) { a.WriteDouble(kValue, 1.0); }, [](A& a) { ReadAny<double>(a, &A::ReadDouble); },
         0x3FF03FF0, 0x3FF03FF0},
        {"Vector3",
         [](A& a) {
             a.WriteVector3(kValue, {1, 0.1f, 2});
         },
         [](A& a) { ReadAny<Vector3>(a, &A::ReadVector3); }, 0xA000A000 + 2 * kOne, 0xA000A000 + 2 * kOne},
        {"Vector4",
         [](A& a) {
             a.WriteVector4(kValue, {1, 2, 3, 4});
         },
         [](A& a) { ReadAny<Vector4>(a, &A::ReadVector4); }, 4 * kOne, 4 * kOne},
        {"Matrix33", [](A& a) { a.WriteMatrix33(kValue, Matrix33::Identity()); },
         [](A& a) { ReadAny<Matrix33>(a, &A::ReadMatrix33); }, 9 * kOne, 9 * kOne},
        {"Matrix44", [](A& a) { a.WriteMatrix44(kValue, {}); }, [](A& a) { ReadAny<Matrix44>(a, &A::ReadMatrix44); },
         16 * kOne, 16 * kOne},
        {"Color", [](A& a) { a.WriteColor(kValue, kWhite); }, [](A& a) { ReadAny<Color>(a, &A::ReadColor); }, 4 * kOne,
         4 * kOne},
    };
    for (const auto& c : kCases) {
        for (const ArchiveFormat format : {ArchiveFormat::Text, ArchiveFormat::Binary}) {
            SCOPED_TRACE(c.name);
            const std::uint32_t expected = format == ArchiveFormat::Text ? c.text : c.binary;
            const std::string file = SaveWith(format, [&](Archive& archive) {
                for (int i = 0; i < 3; ++i)
                    c.write(archive);
            });
            LoadWith(file, [&](FileArchive& archive) {
                EXPECT_EQ(archive.GetChecksum(), 0u);
                c.read(archive);
                EXPECT_EQ(archive.GetChecksum(), expected);
                c.read(archive);
                EXPECT_EQ(archive.GetChecksum(), 2 * expected); // with wrap-around
                archive.EnableChecksum(false);
                c.read(archive);
                EXPECT_EQ(archive.GetChecksum(), 2 * expected);
                archive.EnableChecksum(true);
                c.read(archive); // nothing is there
                EXPECT_EQ(archive.GetChecksum(), 2 * expected);
            });
        }
    }
}

TEST_F(ChecksumTest, StringsAddTheirHashInBothEncodings) {
    std::vector<std::uint32_t> sums;
    for (const char16_t* name : {u"", u"Hull", u"hull", u"lluH", u"Hull "}) {
        std::uint32_t sum[2];
        for (const int format : {0, 1}) {
            const auto archiveFormat = static_cast<ArchiveFormat>(format);
            const std::string file =
                SaveWith(archiveFormat, [&](Archive& archive) { archive.WriteString(kValue, name); });
            LoadWith(file, [&](FileArchive& archive) {
                ReadName(archive);
                sum[format] = archive.GetChecksum();
            });
        }
        EXPECT_EQ(sum[0], sum[1]);
        EXPECT_EQ(std::count(sums.begin(), sums.end(), sum[0]), 0);
        sums.push_back(sum[0]);
    }
}

TEST_F(ChecksumTest, FaultyValuesAddNothing) {
    const char* const kLines[] = {"Other 5", "Value x", "Value "};
    for (const char* line : kLines) {
        Read(line, [&](FileArchive& archive) {
            ReadAny<std::int32_t>(archive, &Archive::ReadInt);
            ReadAny<float>(archive, &Archive::ReadFloat);
            EXPECT_EQ(archive.GetChecksum(), 0u) << line;
        });
    }
    m_Archives.EnableChecksums(false);
    Read("Value 5\nValue TRUE\n", [&](FileArchive& archive) {
        ReadAny<std::int32_t>(archive, &Archive::ReadInt);
        ReadAny<bool>(archive, &Archive::ReadBool);
        EXPECT_EQ(archive.GetChecksum(), 0u);
    });
}

} // namespace
} // namespace Corvid
