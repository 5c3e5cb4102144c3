#include "Engine/Archive/Binary/BinaryFileArchive.h"

#include <gtest/gtest.h>

#include <bit>
#include <string>

#include "Tests/Engine/Archive/TextArchiveFixture.h"
#include "Tests/Engine/File/TemporaryFolder.h"

namespace Corvid {
namespace {

using namespace std::string_literals;

class BinaryArchiveTest : public TextArchiveFixture {
protected:
    // What is written, and that it comes back.
    template <class Written, class Value>
    void ExpectBytes(void (Archive::*write)(Label, Written), void (Archive::*read)(Label, Value&), const Value& value,
                     const std::string& bytes) {
        const std::string twice = m_Header + bytes + bytes;
        EXPECT_EQ(SaveWith(ArchiveFormat::Binary,
                           [&](Archive& archive) {
                               (archive.*write)(kValue, value);
                               (archive.*write)(kValue, value);
                           }),
                  twice);
        LoadWith(twice, [&](Archive& archive) {
            for (int i = 0; i < 2; ++i)
                EXPECT_EQ(ReadOver(Value{}, archive, read), value);
        });
        EXPECT_EQ(TakeReports(), ""); // nothing is left unread
    }

    const std::string m_Header = "BIN\n";
    const std::string m_TooLong = Failed("numChars < bufferSize", "Engine/Archive/BinaryFileArchive");
};

std::string Units(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text)
        bytes.append({static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)});
    return bytes;
}

TEST_F(BinaryArchiveTest, EveryOperationHasItsBytes) {
    using A = Archive;
    const std::string one = "\0\0\x80\x3F"s, two = "\0\0\0\x40"s, zero(4, '\0');
    ExpectBytes<std::int32_t, std::int32_t>(&A::WriteInt, &A::ReadInt, -2, "\xFE\xFF\xFF\xFF");
    ExpectBytes<std::uint32_t, std::uint32_t>(&A::WriteInt, &A::ReadInt, 3000000000, "\x00\x5E\xD0\xB2"s);
    ExpectBytes(&A::WriteEnum, &A::ReadEnum, -1, "\xFF\xFF\xFF\xFF");
    ExpectBytes(&A::WriteInt64, &A::ReadInt64, std::int64_t{0x0102030405060708}, "\x08\x07\x06\x05\x04\x03\x02\x01");
    ExpectBytes(&A::WriteBool, &A::ReadBool, true, "\1");
    ExpectBytes(&A::WriteBool, &A::ReadBool, false, "\0"s);
    ExpectBytes(&A::WriteFloat, &A::ReadFloat, -2.0f, "\0\0\0\xC0"s);
    ExpectBytes(&A::WriteDouble, &A::ReadDouble, 0.1, "\x9A\x99\x99\x99\x99\x99\xB9\x3F");
    ExpectBytes<const IntPair&, IntPair>(&A::WriteIntPair, &A::ReadIntPair, {1, 2}, "\1\0\0\0\2\0\0\0"s);
    ExpectBytes(&A::WriteIntRect, &A::ReadIntRect, IntRect{1, 2, 3, 4}, "\1\0\0\0\2\0\0\0\3\0\0\0\4\0\0\0"s);
    ExpectBytes(&A::WriteVector3, &A::ReadVector3, Vector3{1, 0, 2}, one + zero + two);
    ExpectBytes(&A::WriteVector4, &A::ReadVector4, Vector4{1, 2, 0, 1}, one + two + zero + one);
    ExpectBytes(&A::WriteColor, &A::ReadColor, Color{1, 0, 0, 2}, one + zero + zero + two);
    ExpectBytes(&A::WriteMatrix33, &A::ReadMatrix33, Matrix33({1, 0, 0}, {0, 1, 0}, {0, 2, 1}),
                one + zero + zero + zero + one + zero + zero + two + one);
    Matrix44 matrix;
    matrix.At(3, 2) = 2;
    ExpectBytes(&A::WriteMatrix44, &A::ReadMatrix44, matrix, std::string(56, '\0') + two + zero);
}

TEST_F(BinaryArchiveTest, ObjectsAddNothingOfTheirOwn) {
    class Seven final : public Archivable {
    public:
        void Load(Archive& archive) override { archive.ReadIntPair(u"Any", m_Value, m_Bits); }
        void Load(Archive& archive, void* context) override {
            Load(archive);
            m_Context = context;
        }
        void Save(Archive& archive) const override {
            archive.WriteIntPair(u"Any", 7, 0x7F800001); // a signalling NaN
        }
        std::int32_t m_Value = 0, m_Bits = 0;
        void* m_Context = nullptr;
    };
    const std::string seven = "\7\0\0\0\1\0\x80\x7F"s;
    const std::string bytes = m_Header + seven + seven + seven + "\0\0\0\0\2\0\0\0H\0\xAC\x20"s;
    EXPECT_EQ(SaveWith(ArchiveFormat::Binary,
                       [](Archive& archive) {
                           archive.WriteObject(Seven());
                           archive.WriteLabeledObject(u"Any", Seven());
                           archive.WriteLabeledObject(u"Any", Seven());
                           archive.WriteString(u"Any", u"");
                           archive.WriteString(u"Any", u"H\u20AC");
                       }),
              bytes);
    LoadWith(bytes, [this](Archive& archive) {
        Seven objects[2];
        FixedString<3> empty(u"ab"), name;
        archive.ReadObject(objects[0]);
        archive.ReadLabeledObject(u"Other", objects[1], this);
        EXPECT_EQ(ReadOver<std::int32_t>(0, archive, &Archive::ReadInt), 7);
        const float number = ReadOver(0.0f, archive, &Archive::ReadFloat);
        EXPECT_EQ(std::bit_cast<std::int32_t>(number), objects[0].m_Bits); // bit by bit
        ReadValue(archive, u"Other", empty);
        ReadValue(archive, u"Other", name);
        EXPECT_TRUE(objects[0].m_Value == 7 && objects[0].m_Context == nullptr);
        EXPECT_TRUE(objects[1].m_Value == 7 && objects[1].m_Context == this);
        EXPECT_TRUE(empty.IsEmpty() && name == u"H\u20AC");
    });
    EXPECT_EQ(TakeReports(), "");
}

TEST_F(BinaryArchiveTest, StringStaysInStep) {
    const struct {
        const char* name;
        std::string bytes; // behind them stands 7, if anything
        int capacity;
        std::u16string expected;
        std::string reports;
        bool isInStep;
    } kCases[] = {
        {"Short", "\x02\0\0\0"s + Units(u"ab"), 4, u"ab", "", true},
        {"BelowCapacity", "\x03\0\0\0"s + Units(u"abc"), 4, u"abc", "", true},
        {"AtCapacity", "\x04\0\0\0"s + Units(u"abcd"), 4, u"abc", m_TooLong, true},
        {"AboveCapacity", "\x06\0\0\0"s + Units(u"abcdef"), 4, u"abc", m_TooLong, true},
        {"CapacityOfOne", "\x02\0\0\0"s + Units(u"ab"), 1, u"", m_TooLong, true},
        {"NulInside", "\x03\0\0\0"s + Units(u"a\0b"s), 4, u"a", "", true},
        {"LoneHalf", "\x01\0\0\0"s + Units(u"\xD83D"), 4, u"\xD83D", "", true},
        {"CutUnits", "\x03\0\0\0"s + Units(u"ab"), 4, u"ab", ShortRead(3, 2), false},
        {"CutInAUnit", "\x03\0\0\0"s + Units(u"ab") + "c", 4, u"ab", ShortRead(3, 2), false},
        {"CutBehindCapacity", "\x06\0\0\0"s + Units(u"abcd") + "e", 4, u"abc", m_TooLong + ShortRead(6, 4), false},
        {"HugeCount", "\xFF\xFF\xFF\x7F" + Units(u"ab"), 4, u"ab", m_TooLong + ShortRead(0x7FFFFFFF, 2), false},
        {"NoUnits", "\x03\0\0\0"s, 4, u"", ShortRead(3, 0), false},
        {"CutCount", "\x03\0\0"s, 4, u"kept", ShortRead(1, 0), false},
        {"NoCount", "", 4, u"kept", ShortRead(1, 0), false},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        std::u16string buffer = u"kept";
        std::int32_t next = -1;
        LoadWith(m_Header + c.bytes + (c.isInStep ? "\x07\0\0\0"s : ""s), [&](Archive& archive) {
            archive.ReadString(u"Name", buffer.data(), c.capacity);
            EXPECT_EQ(TakeReports(), c.reports);
            archive.ReadInt(u"Next", next);
        });
        EXPECT_EQ(std::u16string(buffer.c_str()), c.expected);
        EXPECT_EQ(next, c.isInStep ? 7 : -1);
        EXPECT_EQ(TakeReports(), c.isInStep ? "" : ShortRead(1, 0));
    }
    FixedString<4> name; // the count has no sign
    LoadWith(m_Header + "\xFF\xFF\xFF\xFF" + Units(u"ab"),
             [&](Archive& archive) { ReadValue(archive, u"Name", name); });
    EXPECT_EQ(name.GetView(), u"ab");
    EXPECT_EQ(m_Reports.Count("desired read bytes = 4294967295, actual read bytes = 2."), 1);
}

TEST_F(BinaryArchiveTest, BoolIsAnyByteButZero) {
    for (const int byte : {0, 1, 2, 0x80, 0xFF}) {
        LoadWith(m_Header + static_cast<char>(byte), [&](Archive& archive) {
            EXPECT_EQ(ReadOver(byte == 0, archive, &Archive::ReadBool), byte != 0) << byte;
        });
    }
}

// One report a failed read; a number stays as it was.
TEST_F(BinaryArchiveTest, InputMayEndAnywhere) {
    const std::string bytes = "\x01\0\0\0\x02\x03\0\0\0\0\0\0\0\0\0\x80\x3F\0\0\0\0\0\0\xF0\x3F\0\0\x80\x3F"s;
    const std::size_t kEnds[] = {4, 5, 13, 17, 25, 29}; // of its six values
    for (std::size_t length = 0; length <= bytes.size(); ++length) {
        SCOPED_TRACE(length);
        LoadWith(m_Header + bytes.substr(0, length), [&](Archive& archive) {
            EXPECT_EQ(ReadOver<std::uint32_t>(9, archive, &Archive::ReadInt), length < kEnds[0] ? 9u : 1u);
            EXPECT_EQ(ReadOver(false, archive, &Archive::ReadBool), length >= kEnds[1]);
            EXPECT_EQ(ReadOver<std::int64_t>(9, archive, &Archive::ReadInt64), length < kEnds[2] ? 9 : 3);
            EXPECT_EQ(ReadOver(9.0f, archive, &Archive::ReadFloat), length < kEnds[3] ? 9.0f : 1.0f);
            EXPECT_EQ(ReadOver(9.0, archive, &Archive::ReadDouble), length < kEnds[4] ? 9.0 : 1.0);
            EXPECT_EQ(ReadOver<Color>({9, 9, 9, 9}, archive, &Archive::ReadColor),
                      (Color{length < kEnds[5] ? 9.0f : 1.0f, 9, 9, 9}));
        });
        std::string expected;
        for (const std::size_t end : kEnds)
            expected += length < end ? ShortRead(1, 0) : "";
        for (int i = 0; i < 3; ++i) // the colour's other channels
            expected += ShortRead(1, 0);
        EXPECT_EQ(TakeReports(), expected);
    }
}

TEST_F(BinaryArchiveTest, EdgeOfTheWindowMayStandAnywhere) {
    constexpr std::uint32_t kLong = 300000; // units, more than a window holds
    const TemporaryFolder folder;
    for (std::uint32_t shift = 0; shift < 24; ++shift) {
        const std::uint32_t frontUnits = InputStream::kWindowSize / 2 - 10;
        std::string file = m_Header;
        const auto addInt = [&file](std::uint32_t value) {
            for (int i = 0; i < 32; i += 8)
                file.push_back(static_cast<char>(value >> i & 0xFF));
        };
        addInt(frontUnits);
        file.append(2 * frontUnits + shift, '\1'); // a string and some bools
        addInt(0x12345678);
        file += "\x9A\x99\x99\x99\x99\x99\xB9\x3F";
        addInt(kLong);
        file += std::string(2 * kLong, '\1');
        addInt(0x12345678);
        folder.Put("file", file);

        auto archive = m_Archives.OpenForReading(folder / "file");
        ASSERT_NE(archive, nullptr);
        std::u16string text(kLong + 1, u'#');
        archive->ReadString(u"Front", text.data(), static_cast<int>(frontUnits) + 1);
        for (std::uint32_t i = 0; i < shift; ++i)
            ASSERT_TRUE(ReadOver(false, *archive, &Archive::ReadBool));
        EXPECT_EQ(ReadOver<std::int32_t>(0, *archive, &Archive::ReadInt), 0x12345678);
        EXPECT_EQ(ReadOver(0.0, *archive, &Archive::ReadDouble), 0.1);
        const bool hasRoom = shift % 2 == 0;
        archive->ReadString(u"Long", text.data(), hasRoom ? static_cast<int>(text.size()) : 10);
        EXPECT_EQ(text.find(u'\0'), hasRoom ? kLong : 9);
        EXPECT_EQ(ReadOver<std::int32_t>(0, *archive, &Archive::ReadInt), 0x12345678);
        archive->ReportUnreadInput();
        m_Archives.Release(std::move(archive));
        EXPECT_EQ(TakeReports(), hasRoom ? "" : m_TooLong);
    }
}

TEST_F(BinaryArchiveTest, CompositesAreMadeOfSingleValues) {
    class Coarse final : public BinaryFileArchive { // one byte per float
    public:
        using BinaryFileArchive::BinaryFileArchive;
        void ReadFloat(Label label, float& value) override {
            bool isSet = false;
            ReadBool(label, isSet);
            value = isSet ? 1.0f : 0.0f;
        }
        void WriteFloat(Label label, float value) override { WriteBool(label, value != 0); }
    };
    std::string bytes;
    Coarse out(File::WriteToMemory(u"memory", bytes));
    Matrix44 view;
    view.At(3, 2) = 1;
    out.WriteVector3(kValue, {1, 0, 1});
    out.WriteVector4(kValue, {0, 1, 0, 1});
    out.WriteColor(kValue, {1, 1, 0, 0});
    out.WriteMatrix33(kValue, Matrix33::Identity());
    out.WriteMatrix44(kValue, view);
    out.GetFile().Close();
    EXPECT_EQ(bytes, "\1\0\1"s + "\0\1\0\1"s + "\1\1\0\0"s + "\1\0\0\0\1\0\0\0\1"s + std::string(14, '\0') + "\1\0"s);

    Coarse in(File::ReadFromMemory(u"memory", bytes));
    EXPECT_EQ(ReadOver<Vector3>({}, in, &Archive::ReadVector3), (Vector3{1, 0, 1}));
    EXPECT_EQ(ReadOver<Vector4>({}, in, &Archive::ReadVector4), (Vector4{0, 1, 0, 1}));
    EXPECT_EQ(ReadOver<Color>({}, in, &Archive::ReadColor), (Color{1, 1, 0, 0}));
    EXPECT_EQ(ReadOver<Matrix33>({}, in, &Archive::ReadMatrix33), Matrix33::Identity());
    EXPECT_EQ(ReadOver<Matrix44>({}, in, &Archive::ReadMatrix44), view);
}

TEST_F(BinaryArchiveTest, StoppedArchiveReadsNothingMore) {
    for (const std::string& file : {m_Header + "\1\0\0\0\2\0\0\0"s, "TXT\nValue 1\nValue 2\n"s}) {
        LoadWith(file, [&](Archive& archive) {
            FixedString<5> name(u"kept");
            EXPECT_EQ(ReadOver<std::int32_t>(0, archive, &Archive::ReadInt), 1);
            archive.Stop();
            EXPECT_EQ(ReadOver<std::int32_t>(0, archive, &Archive::ReadInt), 0);
            EXPECT_EQ(ReadOver(9.0f, archive, &Archive::ReadFloat), 9.0f);
            ReadValue(archive, u"Value", name);
            EXPECT_EQ(name.GetView(), u"kept");
            EXPECT_EQ(TakeReports(), "");
        });
        EXPECT_EQ(m_Reports.Count("Unread input in 'memory': "), 1);
        TakeReports();
    }
}

} // namespace
} // namespace Corvid
