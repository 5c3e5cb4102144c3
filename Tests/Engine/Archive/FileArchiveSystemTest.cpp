#include "Engine/Archive/FileArchiveSystem.h"

#include <gtest/gtest.h>

#include <fstream>
#include <new>
#include <string>
#include <thread>
#include <vector>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "Engine/Archive/Binary/SteamFileArchive.h"
#include "Tests/Engine/Archive/TextArchiveFixture.h"
#include "Tests/Engine/File/TemporaryFolder.h"

namespace Corvid {
namespace {

using namespace std::string_literals;

// A record of one archive that reads from another, too.
class BothArchives final : public Record<BothArchives> {
public:
    explicit BothArchives(Archive& other) : m_Other(other) {}
    static void Fields(auto& self, auto& fields) {
        fields.AfterLoad(self, [](auto& record) { ReadOver<std::int32_t>(0, record.m_Other, &Archive::ReadInt); });
        fields.AfterLoad(self, [](auto&) { Check(false, "of the record"); });
    }

private:
    Archive& m_Other;
};

class FileArchiveSystemTest : public TextArchiveFixture {
protected:
    static std::string FailedHere(std::string_view condition) {
        return Failed(condition, "Engine/Archive/FileArchiveSystem");
    }
    static std::string Undetected(const std::string& path) {
        return "Could not detect if Archive File is Binary or Text: " + path;
    }
    static std::string NotOpened(const std::string& path) { return "Failed to Open File: '" + path + "'\n"; }
    static std::int32_t ReadInt(Archive& archive) { return ReadOver<std::int32_t>(0, archive, &Archive::ReadInt); }
};

TEST_F(FileArchiveSystemTest, EncodingIsFoundByTheFirstBytes) {
    const std::string undetected = Undetected("memory");
    const std::string shortRead = ShortRead(1, 0);
    const std::string textOf16 = "\xFF\xFET\0X\0T\0\n\0V\0a\0l\0u\0e\0 \0003\0"s;
    const struct {
        const char* name;
        std::string file;
        bool isFound;
        std::int32_t value; // the first
        std::string reports;
    } kCases[] = {
        {"Empty", "", false, 0, shortRead + shortRead + shortRead + shortRead + undetected},
        {"OneByte", "T", false, 0, shortRead + shortRead + shortRead + undetected},
        {"ThreeBytes", "TXT", true, 0, shortRead + Missing("Value", 1, "")},
        {"BinaryOfThreeBytes", "BIN", true, 0, shortRead + shortRead},
        {"Binary", "BIN\n\3\0\0\0"s, true, 3, ""},
        {"BinaryWithAnyFourthByte", "BINARY\0\0"s, true, 'R' + 256 * 'Y', ""},
        {"BinaryInLowerCase", "bin\n\3\0\0\0"s, false, 0, undetected},
        {"BinaryBehindMark",
         "\xEF\xBB\xBF"
         "BIN\n",
         false, 0, undetected},
        {"Text", "TXT\nValue 3\n", true, 3, ""},
        {"TextWithMark", "\xEF\xBB\xBFTXT\r\nValue 3\r\n", true, 3, ""},
        {"TextInAWord", "MyTXTfile\nValue 3\n", true, 3, ""},
        {"TextBehindBinary", "xBIN TXT\nValue 3\n", true, 3, ""},
        {"TextInLowerCase", "txt\nValue 3\n", false, 0, undetected},
        {"TextInTheSecondLine", "\nTXT\nValue 3\n", false, 0, undetected},
        {"TextBehindANul", "\0TXT\nValue 3\n"s, false, 0, undetected},
        {"TextAtTheEndOfTheLineBuffer", std::string(1019, '-') + "TXT\nValue 3\n", true, 3, ""},
        {"TextBehindTheLineBuffer", std::string(1021, '-') + "TXT\nValue 3\n", false, 0, undetected},
        {"Utf16", textOf16, true, 3, ""},
        {"Utf16BigEndian", "\xFE\xFF\0T\0X\0T\0\n"s, false, 0, undetected},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        auto archive = m_Archives.OpenForReading(File::ReadFromMemory(u"memory", c.file));
        EXPECT_EQ(archive != nullptr, c.isFound);
        EXPECT_EQ(m_Archives.GetFileArchiveCount(), c.isFound ? 1 : 0);
        if (archive != nullptr) {
            EXPECT_EQ(ReadInt(*archive), c.value);
            m_Archives.Release(std::move(archive));
        }
        EXPECT_EQ(TakeReports(), c.reports);
    }
}

TEST_F(FileArchiveSystemTest, SourceThatCannotBeOpenedIsReportedOnce) {
    const TemporaryFolder folder;
    for (const char* name : {"missing", "."}) {
        const std::string path = folder.GetName(name);
        EXPECT_EQ(m_Archives.OpenForReading(folder / name), nullptr);
        EXPECT_EQ(TakeReports(), NotOpened(path) + Undetected(path));
        EXPECT_EQ(m_Archives.Load(folder / name, [](FileArchive&) { return true; }), LoadResult::NotOpened);
        EXPECT_EQ(TakeReports(), NotOpened(path) + Undetected(path));
    }
    folder.Put("empty", "");
    EXPECT_EQ(m_Archives.Load(folder / "empty", [](FileArchive&) { return true; }), LoadResult::NotOpened);
    EXPECT_EQ(m_Reports.Count("desired read bytes = 1, actual read bytes = 0.\n"), 4);
    EXPECT_EQ(m_Reports.GetTexts().size(), 5u);
}

TEST_F(FileArchiveSystemTest, DestinationThatCannotBeOpenedIsReportedOnce) {
    const TemporaryFolder folder;
    for (const char* name : {"missing/file", "."}) {
        for (const ArchiveFormat format : {ArchiveFormat::Text, ArchiveFormat::Binary}) {
            EXPECT_EQ(m_Archives.OpenForWriting(folder / name, format), nullptr);
            EXPECT_EQ(TakeReports(), NotOpened(folder.GetName(name)) + FailedHere("file != NULL"));
        }
    }
    EXPECT_EQ(m_Archives.OpenForWriting(File::ReadFromMemory(u"memory", ""), ArchiveFormat::Text), nullptr);
    EXPECT_EQ(TakeReports(), FailedHere("file->GetAccess() == FileAccess::Write"));
}

TEST_F(FileArchiveSystemTest, SavedFileIsLoadedBack) {
    const TemporaryFolder folder;
    const auto save = [](FileArchive& archive) { archive.WriteInt(kValue, std::int32_t{3}); };
    const std::string contents[] = {"\xEF\xBB\xBFTXT\r\nValue 3\r\n", "BIN\n\3\0\0\0"s};
    for (const int format : {0, 1}) {
        folder.Put("file", "a longer file than the one that replaces it");
        EXPECT_EQ(m_Archives.Save(folder / "file", static_cast<ArchiveFormat>(format), save), SaveResult::Saved);
        EXPECT_EQ(folder.Get("file"), contents[format]);
        const auto load = [](FileArchive& archive) {
            EXPECT_EQ(ReadInt(archive), 3);
            return true;
        };
        EXPECT_EQ(m_Archives.Load(folder / "file", load), LoadResult::Loaded);
    }
    EXPECT_EQ(TakeReports(), "");
    EXPECT_EQ(m_Archives.GetFileArchiveCount(), 0);
}

TEST_F(FileArchiveSystemTest, DestinationStaysWhenMemoryIsShort) {
    const TemporaryFolder folder;
    folder.Put("file", "TXT\n");
    const auto lack = [](FileArchive&) -> bool { throw std::bad_alloc(); };
    const auto take = [](FileArchive&) { return true; };
    const auto write = [](FileArchive& archive) { archive.WriteBool(kValue, true); };
    const std::string report = "There is not enough memory for this conversion.\n";
    const std::u16string path = folder / "file";
    EXPECT_EQ(m_Archives.Save(path, ArchiveFormat::Text, lack), SaveResult::Failed);
    EXPECT_EQ(TakeReports(), report);

    class Object final : public FileObject {};
    Object partial, whole;
    EXPECT_EQ(m_Archives.Load(path, partial, lack), LoadResult::Incomplete);
    EXPECT_EQ(TakeReports(), report);
    EXPECT_EQ(m_Archives.Load(path, whole, take), LoadResult::Loaded);
    EXPECT_EQ(m_Archives.Load(path, partial, take), LoadResult::Loaded); // may have been appended to
    EXPECT_EQ(m_Archives.Save(path, ArchiveFormat::Binary, partial, write), SaveResult::NotWhole);
    EXPECT_EQ(folder.Get("file"), "TXT\n");
    EXPECT_EQ(folder.List(), std::set<std::string>{"file"});
    EXPECT_EQ(m_Archives.GetFileArchiveCount(), 0);

    EXPECT_EQ(m_Archives.Save(path, ArchiveFormat::Binary, whole, write), SaveResult::Saved);
    EXPECT_EQ(folder.Get("file"), "BIN\n\1");
    EXPECT_EQ(m_Archives.Save(folder / "none/file", ArchiveFormat::Binary, whole, write), SaveResult::NotOpened);
}

#ifdef __linux__
TEST_F(FileArchiveSystemTest, FullDiskFailsTheSave) {
    const auto write = [](FileArchive& archive) { archive.WriteBool(kValue, true); };
    EXPECT_EQ(m_Archives.Save(u"/dev/full", ArchiveFormat::Text, write), SaveResult::Failed);
    EXPECT_NE(TakeReports(), "");
}
#endif

TEST_F(FileArchiveSystemTest, OpenArchivesAreCounted) {
    {
        FileArchiveSystem system;
        system.Release(nullptr);
        EXPECT_EQ(TakeReports(), FailedHere("fileArchiveCount >= 0"));
    }
    EXPECT_EQ(TakeReports(), FailedHere("fileArchiveCount == 0"));
    {
        FileArchiveSystem system;
        system.CreateArchive(File::ReadFromMemory(u"memory", ""), ArchiveFormat::Text);
    }
    EXPECT_EQ(TakeReports(), FailedHere("fileArchiveCount == 0"));

    std::string bytes;
    for (const int format : {-1, 3}) { // counted too, although nothing was made
        auto archive =
            m_Archives.OpenForWriting(File::WriteToMemory(u"memory", bytes), static_cast<ArchiveFormat>(format));
        EXPECT_EQ(archive, nullptr);
        EXPECT_EQ(TakeReports(), FailedHere("false"));
        EXPECT_EQ(m_Archives.GetFileArchiveCount(), 1);
        m_Archives.Release(std::move(archive));
        EXPECT_EQ(TakeReports(), "");
    }
}

TEST_F(FileArchiveSystemTest, RemoteStorageOpensNoFile) {
    const TemporaryFolder folder;
    auto archive = m_Archives.OpenForWriting(folder / "file", static_cast<ArchiveFormat>(2));
    ASSERT_NE(archive, nullptr);
    archive->WriteInt(kValue, std::int32_t{3});
    archive->WriteBool(kValue, true);
    EXPECT_EQ(static_cast<SteamFileArchive&>(*archive).GetBytes(), "\3\0\0\0\1"s);
    m_Archives.Release(std::move(archive));
    EXPECT_TRUE(folder.List().empty());
    EXPECT_EQ(TakeReports(), "");
}

TEST_F(FileArchiveSystemTest, BytesOfOthersAreReadAnyNumberOfTimes) {
    for (std::string bytes : {"TXT\nValue 3\n"s, "BIN\n\3\0\0\0"s, "\xFF\xFET\0X\0T\0\n\0V\0a\0l\0u\0e\0 \0003\0"s}) {
        bytes.append(InputStream::kPadding, '\0');
        const PaddedView view{bytes.data(), bytes.size() - InputStream::kPadding};
        auto first = m_Archives.OpenForReading(File::ReadFromMemory(u"memory", view));
        auto second = m_Archives.OpenForReading(File::ReadFromMemory(u"memory", view));
        EXPECT_EQ(ReadInt(*first), 3);
        EXPECT_EQ(ReadInt(*second), 3);
        first->ReportUnreadInput();
        m_Archives.Release(std::move(first));
        m_Archives.Release(std::move(second));
    }
    EXPECT_EQ(TakeReports(), "");
}

TEST_F(FileArchiveSystemTest, GrowingMemoryTakesWhatAFileTakes) {
    const auto write = [](Archive& archive) {
        for (int i = 0; i < 100000; ++i) // several windows
            archive.WriteInt(kValue, i);
    };
    for (const ArchiveFormat format : {ArchiveFormat::Text, ArchiveFormat::Binary}) {
        GrowingBuffer bytes;
        auto archive = m_Archives.OpenForWriting(File::WriteToMemory(u"memory", bytes), format);
        write(*archive);
        m_Archives.Release(std::move(archive));
        EXPECT_TRUE(std::string_view(bytes.GetBytes(), bytes.GetSize()) == SaveWith(format, write));
    }
    EXPECT_EQ(TakeReports(), "");
}

TEST_F(FileArchiveSystemTest, WrongDirectionFindsNothing) {
    std::string bytes;
    const auto write = [&](ArchiveFormat format) {
        return format == ArchiveFormat::Steam
                   ? m_Archives.OpenForWriting(u"", format)
                   : m_Archives.OpenForWriting(File::WriteToMemory(u"memory", bytes), format);
    };
    for (const ArchiveFormat format : {ArchiveFormat::Text, ArchiveFormat::Binary, ArchiveFormat::Steam}) {
        auto archive = write(format);
        const bool isText = format == ArchiveFormat::Text;
        archive->WriteInt(kValue, std::int32_t{3});
        EXPECT_EQ(ReadInt(*archive), 0);
        EXPECT_EQ(TakeReports().starts_with(isText ? Missing("Value", 1, "") : "Failed to Read File"), true);
        char16_t text[10] = u"kept";
        archive->ReadString(kValue, text, 10);
        archive->ReportUnreadInput();
        archive->WriteInt(kValue, std::int32_t{4});
        m_Archives.Release(std::move(archive));
        EXPECT_EQ(std::u16string_view(text), u"kept");
        TakeReports();
        EXPECT_TRUE(!isText || bytes == std::string(kTextHeader) + "Value 3\r\nValue 4\r\n");
    }
    for (const std::string& file : {"TXT\nValue 3\n"s, "BIN\n\3\0\0\0"s}) {
        auto archive = m_Archives.OpenForReading(File::ReadFromMemory(u"memory", file));
        archive->WriteInt(kValue, std::int32_t{4});
        EXPECT_EQ(ReadInt(*archive), 3);
        m_Archives.Release(std::move(archive));
        EXPECT_EQ(TakeReports(), Failed("fileWriteResult == count", "Engine/File/File"));
    }
}

TEST_F(FileArchiveSystemTest, ReportsCarryTheirPosition) {
    using Kind = ReportPosition::Kind;
    const auto expect = [this](const std::string& file, Kind kind, const std::vector<std::uint64_t>& expected) {
        LoadWith(file, [&](Archive& archive) {
            for (int i = 0; i < 2; ++i)
                ReadOver<Vector3>({}, archive, &Archive::ReadVector3);
            std::vector<std::uint64_t> positions;
            for (const ReportPosition& position : m_Reports.GetPositions()) {
                EXPECT_EQ(position.m_Kind, kind);
                positions.push_back(position.m_Value);
            }
            EXPECT_EQ(positions, expected) << file;
        });
        m_Reports.Take();
    };
    expect("TXT\nValue [ 1 2 ]\nValue [ 1 x ]\n", Kind::Line, {2, 3});
    expect("TXT\nOther 3\n", Kind::Line, {2, 2});
    expect("TXT\nValue [ 1 2 3 ]\nOther\n", Kind::Line, {3});
    expect("TXT\nValue [ 1 2 3 ]\nValue", Kind::Line, {3});
    expect("TXT\nValue [ 1 2 3 ]\n", Kind::Line, {3}); // behind the last line
    expect("BIN\n" + std::string(20, '\0') + "abc", Kind::Offset, {27});
    ReportMessage(Message::OutOfMemory);
    EXPECT_EQ(m_Reports.GetPositions()[0].m_Kind, Kind::None);
}

TEST_F(FileArchiveSystemTest, OpenArchivesReportForThemselves) {
    using Kind = ReportPosition::Kind;
    const auto expect = [this](Kind kind, std::uint64_t value) {
        const auto positions = m_Reports.GetPositions();
        ASSERT_EQ(positions.size(), 1u);
        EXPECT_TRUE(positions[0].m_Kind == kind && positions[0].m_Value == value) << positions[0].m_Value;
        m_Reports.Take();
    };
    // Released in the order in which they were opened, and the other way round; read in turn, beneath a record or not.
    for (const bool isFirstReleasedFirst : {true, false}) {
        auto text = m_Archives.OpenForReading(File::ReadFromMemory(u"a", "TXT\nValue x\nValue Word\n"));
        auto binary = m_Archives.OpenForReading(File::ReadFromMemory(u"b", "BIN\nabc"));
        ReadInt(*text);
        expect(Kind::Line, 2);
        ReadInt(*binary);
        expect(Kind::Offset, 7);
        BothArchives record(*binary);
        text->ReadObject(record);
        const auto positions = m_Reports.GetPositions();
        ASSERT_EQ(positions.size(), 2u);
        EXPECT_TRUE(positions[0].m_Kind == Kind::Offset && positions[1].m_Kind == Kind::Line);
        m_Reports.Take();
        m_Archives.Release(std::move(isFirstReleasedFirst ? text : binary));
        m_Archives.Release(std::move(isFirstReleasedFirst ? binary : text));
        ReportMessage(Message::OutOfMemory);
        expect(Kind::None, 0);
    }
    // An archive may outlive its reporter.
    std::unique_ptr<FileArchive> archive;
    {
        ReportLog inner;
        archive = m_Archives.OpenForReading(File::ReadFromMemory(u"a", "TXT\nValue x\n"));
    }
    ReadInt(*archive);
    expect(Kind::Line, 2);
    m_Archives.Release(std::move(archive));
}

TEST_F(FileArchiveSystemTest, UnreadInputIsReported) {
    const std::string longLine = "B " + std::string(2500, 'b');
    const auto expect = [this](const std::string& file, const std::string& reports) {
        LoadWith(file, [](Archive& archive) { ReadInt(archive); });
        EXPECT_EQ(TakeReports(), reports) << file;
    };
    const std::string unread = "Unread input in 'memory': ";
    expect("TXT\nValue 3\n", "");
    expect("TXT\nValue 3\n\r\n \t\v\n\f", "");
    expect("TXT\nValue 3\n\n\tB 2\r\n\nC 3", unread + "2 lines, the first is line 4: B 2\n");
    expect("TXT\nValue 3\n" + longLine + "\nC\n",
           unread + "2 lines, the first is line 3: " + longLine.substr(0, 1023) + '\n');
    expect("TXT\nValue 3" + std::string(1020, ' ') + "x\n", unread + "1 lines, the first is line 2: x\n");
    expect("TXT\nValue 3\n\0\n"s, unread + "1 lines, the first is line 3: \n");
    expect("TXT\nValue 3\n \0 B 2"s, unread + "1 lines, the first is line 3: \n");
    expect("TXT\nB 2\n", Missing("Value", 1, "B 2\n") + unread + "1 lines, the first is line 2: B 2\n");
    expect("BIN\n\3\0\0\0"s, "");
    expect("BIN\n\3\0\0\0\0\0\0"s, unread + "3 bytes, the first at offset 8\n");
}

#ifndef _WIN32
TEST_F(FileArchiveSystemTest, SourceMayBeAPipe) {
    const TemporaryFolder folder;
    const std::string path = folder.GetName("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::string lines = "TXT\n", units = "\xFF\xFET\0X\0T\0\n\0"s, bytes = "BIN\n";
    constexpr int kCount = 40000; // more than a window holds
    for (int i = 0; i < kCount; ++i) {
        lines += "Value 3\n";
        units += "V\0a\0l\0u\0e\0 \0003\0\n\0"s;
        bytes += "\3\0\0\0\0\0\0\0"s;
    }
    for (const std::string& file : {lines, units, bytes}) {
        std::thread writer([&] { std::ofstream(path, std::ios::binary) << file; });
        m_Archives.Load(folder / "pipe", [&](FileArchive& archive) {
            int sum = 0;
            for (int i = 0; i < (file[0] == 'B' ? 2 : 1) * kCount; ++i)
                sum += ReadInt(archive);
            EXPECT_EQ(sum, 3 * kCount);
            return true;
        });
        writer.join();
        EXPECT_EQ(TakeReports(), "");
    }
}
#endif

} // namespace
} // namespace Corvid
