#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "Tests/Engine/Archive/TextArchiveFixture.h"
#include "Tests/Engine/File/TemporaryFolder.h"

namespace Corvid {
namespace {

// A line comes in pieces of at most 1023 units, its line end among them.

constexpr std::int32_t kKept = -7;
constexpr const char* kReplacement = "\xEF\xBF\xBD";
constexpr int kCapacity = 3000;

using TextLongLineTest = TextArchiveFixture;

std::string Repeat(std::string_view part, int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += part;
    return text;
}

std::string Without(std::string text, char mark) {
    std::erase(text, mark);
    return text;
}

std::string Fill(std::string text, std::size_t length) {
    return text.append(length - text.size(), ' ');
}

TEST_F(TextLongLineTest, LineIsCutAtTheEndOfTheLineBuffer) {
    const std::string start = "Name \"";
    const std::string smile = "\xF0\x9F\x98\x80"; // two units
    const auto letters = [](std::size_t count) { return std::string(count, 'a'); };
    const auto wide = [](std::size_t count) { return std::u16string(count, u'a'); };
    const struct {
        const char* name;
        std::string line; // its line end follows
        std::u16string expected;
        std::string reports; // by reading "Name" and "Count" from the line and the line Count 3
    } kCases[] = {
        {"Units1021", start + letters(1014) + '"', wide(1014), ""},
        {"Units1022", start + letters(1015) + '"', wide(1015), ""},
        {"Units1023", start + letters(1016) + '"', wide(1016), Missing("Count", 2, "\n")},
        {"Units1024", start + letters(1017) + '"', wide(1017),
         Unterminated(letters(1017), 1, start + letters(1017)) + Missing("Count", 2, "\"\n")},
        {"PairInFrontOfTheEnd", start + letters(1015) + smile + '"', wide(1015) + u"\xD83D\xDE00",
         Unterminated(letters(1015) + smile, 1, start + letters(1015) + smile) + Missing("Count", 2, "\"\n")},
        {"PairAcrossTheEnd", start + letters(1016) + smile + '"', wide(1016) + u'\xD83D',
         Unterminated(letters(1016) + kReplacement, 1, start + letters(1016) + kReplacement) +
             Missing("Count", 2, kReplacement + std::string("\"\n"))},
        {"UnitsNotBytes", start + Repeat("\xE2\x82\xAC", 1015) + '"', std::u16string(1015, u'\u20AC'), ""},
        {"LabelBehindTheEnd", std::string(1023, ' ') + "Name \"a\"", u"kept",
         Missing("Name", 1, std::string(1023, ' ')) + Missing("Count", 2, std::string(1023, ' '))},
        {"LabelAcrossTheEnd", std::string(1020, ' ') + "Name \"a\"", u"kept",
         Missing("Name", 1, std::string(1020, ' ') + "Nam") + Missing("Count", 2, std::string(1020, ' ') + "Nam")},
    };
    for (const auto& c : kCases) {
        for (const std::string lineEnd : {"\n", "\r\n"}) {
            SCOPED_TRACE(c.name);
            FixedString<kCapacity> name(u"kept");
            std::int32_t count = kKept;
            EXPECT_EQ(Read(c.line + lineEnd + "Count 3" + lineEnd,
                           [&](Archive& archive) {
                               ReadValue(archive, u"Name", name);
                               archive.ReadInt(u"Count", count);
                           }),
                      c.reports);
            EXPECT_EQ(name.GetView(), c.expected);
            EXPECT_EQ(count, c.reports.empty() ? 3 : kKept);
        }
    }
}

TEST_F(TextLongLineTest, NumberEndsWithItsPiece) {
    const std::string lines = "Frame\r\n" + Fill(" [ 1 x 3 ]", 1023) + std::string(1013, ' ') + "[ 4 5 6789|" +
                              "7 8 ]\r\nCount " + std::string(1015, ' ') + "12|3\r\nLast x";
    Matrix33 matrix;
    std::int32_t value = kKept;
    std::vector<std::uint64_t> positions;
    EXPECT_EQ(Read(Without(lines, '|'),
                   [&](Archive& archive) {
                       archive.ReadMatrix33(u"Frame", matrix);
                       archive.ReadInt(u"Count", value);
                       archive.ReadInt(u"Other", value);
                       archive.SkipEntry(u"None", u"Last", {});
                       archive.ReadInt(u"Last", value);
                       for (const ReportPosition& position : m_Reports.GetPositions())
                           positions.push_back(position.m_Value);
                   }),
              Failed("result == 3") + Failed("result == 3") + Missing("Other", 3, "3\n") +
                  "Unread input in 'memory': 1 lines, the first is line 4: 3\n" + Failed("result == 1"));
    EXPECT_EQ(positions, (std::vector<std::uint64_t>{3, 3, 4, 4, 5})); // lines of the file, whole ones
    EXPECT_EQ(matrix, Matrix33({1, 0, 0}, {4, 5, 6789}, {}));
    EXPECT_EQ(value, 12);
}

// A file on disk streams through a window: whatever stands at its edge is read as anywhere else.
TEST_F(TextLongLineTest, EdgeOfTheWindowMayStandAnywhere) {
    const std::string record = "In\r\n\tCount 123456\r\n\tSize 1.250000\r\n\tAt [ 1.000000 -2.000000 3.500000 ]\n"
                               "\tName \"\xE2\x82\xAC uro\"\r\n\tTint 0\r\n";
    class Record final : public Archivable {
    public:
        void Load(Archive& archive) override {
            archive.ReadInt(u"Count", m_Count);
            archive.ReadFloat(u"Size", m_Size);
            archive.ReadVector3(u"At", m_At);
            ReadValue(archive, u"Name", m_Name);
            archive.ReadColor(u"Tint", m_Tint);
        }
        void Save(Archive&) const override {}

        std::int32_t m_Count = kKept;
        float m_Size = 0.0f;
        Vector3 m_At{};
        FixedString<10> m_Name;
        Color m_Tint = kWhite;
    };
    constexpr std::size_t kRecords = 60; // more than is kept in the window for a look ahead
    constexpr std::size_t kFront = InputStream::kWindowSize - 4000;
    const TemporaryFolder folder;
    for (std::size_t shift = 0; shift < record.size(); ++shift) {
        SCOPED_TRACE(shift);
        std::string file = "TXT\n";
        while (file.size() < kFront + shift)
            file += std::string(std::min<std::size_t>(kFront + shift - file.size(), 100) - 1, '-') + '\n';
        for (std::size_t i = 0; i < kRecords; ++i)
            file += record;
        folder.Put("file", file);
        auto archive = m_Archives.OpenForReading(folder / "file");
        ASSERT_NE(archive, nullptr);
        archive->EnableChecksum(shift % 2 == 0);
        if (shift % 3 == 0)
            static_cast<TextFileArchive&>(*archive).ReadByLineOnly();
        archive->SkipEntry(u"None", u"In", std::array<Label, 1>{u"Out"});
        EXPECT_TRUE(TakeReports().starts_with("Unread input"));
        for (std::size_t i = 0; i < kRecords; ++i) {
            Record read;
            archive->ReadLabeledObject(u"In", read);
            ASSERT_TRUE(read.m_Count == 123456 && read.m_Size == 1.25f && read.m_At == (Vector3{1.0f, -2.0f, 3.5f}) &&
                        read.m_Name == u"\u20AC uro" && read.m_Tint == Color{})
                << i;
        }
        archive->ReportUnreadInput();
        m_Archives.Release(std::move(archive));
        ASSERT_EQ(TakeReports(), "");
    }
}

} // namespace
} // namespace Corvid
