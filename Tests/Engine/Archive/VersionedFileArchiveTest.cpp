#include "Engine/Archive/VersionedFileArchive.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Tests/Engine/File/TemporaryFolder.h"
#include "Tests/Support/ReportLog.h"
#include "Tests/Support/SpelledFile.h"

namespace Corvid {
namespace {

constexpr std::int32_t kCurrentVersion = 3;
constexpr std::int32_t kDefaultVolume = 50;

class Settings : public VersionedFileArchive {
public:
    Settings(FileArchiveSystem& archives, std::u16string_view path)
        : VersionedFileArchive(archives, path, kCurrentVersion) {}

    std::int32_t m_Volume = kDefaultVolume;
    std::vector<std::int32_t> m_LoadedVersions;

private:
    void Load(Archive& archive, std::int32_t version) override {
        m_LoadedVersions.push_back(version);
        archive.ReadInt(u"Volume", m_Volume);
    }
    void Save(Archive& archive) const override { archive.WriteInt(u"Volume", m_Volume); }
};

class PatientSettings final : public Settings {
public:
    using Settings::Settings;

private:
    bool IsOldVersion(std::int32_t version) const override { return version < kCurrentVersion - 1; }
};

std::string SpelledSettings(ArchiveFormat format, std::int32_t version, std::int32_t volume) {
    SpelledFile file;
    file.Int("Version", version).Int("Volume", volume);
    return format == ArchiveFormat::Text ? file.GetText() : file.GetBinary();
}

constexpr const char* kNotFound = "settings not found... New Version being created.\n";
constexpr const char* kFailedToOpen = "settings failed to open... New Version being created.\n";
constexpr const char* kOld = "settings... New Version being created.\n";
constexpr const char* kUndetected = "Could not detect if Archive File is Binary or Text: ";
constexpr const char* kNoDestination = "file != NULL";
constexpr const char* kMissingLabel = "missing Label";

struct Case {
    std::string name;
    std::optional<std::string> before; // the file; none
    std::vector<const char*> reports;  // each holds its text
    std::vector<std::int32_t> loadedVersions;
    std::int32_t volume;
};

class VersionedFileArchiveTest : public ::testing::TestWithParam<ArchiveFormat> {
protected:
    void ExpectReports(const std::vector<const char*>& expected, const std::string& name) {
        ASSERT_EQ(m_Reports.GetTexts().size(), expected.size()) << name << '\n' << m_Reports.Take();
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_NE(m_Reports.GetTexts()[i].find(expected[i]), std::string::npos) << name << m_Reports.GetTexts()[i];
        m_Reports.Take();
    }

    ReportLog m_Reports;
    FileArchiveSystem m_Archives;
    TemporaryFolder m_Folder;
};

INSTANTIATE_TEST_SUITE_P(BothEncodings, VersionedFileArchiveTest,
                         ::testing::Values(ArchiveFormat::Text, ArchiveFormat::Binary));

TEST_P(VersionedFileArchiveTest, EndsWithTheCurrentVersionOnDisk) {
    const ArchiveFormat other = GetParam() == ArchiveFormat::Text ? ArchiveFormat::Binary : ArchiveFormat::Text;
    const auto spelled = [&](std::int32_t version) { return SpelledSettings(GetParam(), version, 9); };
    const Case kCases[] = {
        {"Missing", std::nullopt, {kNotFound}, {3}, kDefaultVolume},
        {"Current", spelled(3), {}, {3}, 9},
        {"Older", spelled(2), {"Detected old version of "}, {2, 3}, 9},
        {"Newer", spelled(4), {kOld}, {4, 3}, 9},
        {"OlderInOtherEncoding", SpelledSettings(other, 2, 9), {kOld}, {2, 3}, 9},
        {"WithoutVersion", "TXT\nVolume 9\n", {kMissingLabel, kOld}, {-1, 3}, 9},
        {"OlderWithMore", spelled(2) + "More 1\r\n", {kOld, "Unread input"}, {2, 3}, 9},
        {"NeitherEncoding", "Version 3\n", {kUndetected, kFailedToOpen}, {3}, kDefaultVolume},
        {"CutHeader", "BI", {"Failed to Read", "Failed to Read", kUndetected, kFailedToOpen}, {3}, kDefaultVolume},
    };
    for (const Case& c : kCases) {
        std::filesystem::remove(m_Folder.GetPath() / "settings");
        if (c.before)
            m_Folder.Put("settings", *c.before);
        Settings settings(m_Archives, m_Folder / "settings");
        settings.SetFormat(GetParam());
        settings.LoadFile();
        EXPECT_EQ(settings.m_LoadedVersions, c.loadedVersions) << c.name;
        EXPECT_EQ(settings.m_Volume, c.volume) << c.name;
        EXPECT_EQ(m_Folder.Get("settings"), SpelledSettings(GetParam(), kCurrentVersion, c.volume)) << c.name;
        ExpectReports(c.reports, c.name);
    }
}

TEST_P(VersionedFileArchiveTest, EndsWithoutAFileThatCannotBeWritten) {
    constexpr const char* kCannotOpen = "Failed to Open File: '";
    const std::vector<const char*> reports = {kNotFound,     kCannotOpen, kNoDestination, kCannotOpen, kUndetected,
                                              kFailedToOpen, kCannotOpen, kNoDestination, kCannotOpen, kUndetected};
    std::filesystem::create_directory(m_Folder.GetPath() / "settings");
    for (const char* path : {"settings", "missing/settings"}) {
        Settings settings(m_Archives, m_Folder / path);
        settings.SetFormat(GetParam());
        settings.LoadFile();
        EXPECT_TRUE(settings.m_LoadedVersions.empty()) << path;
        ExpectReports(reports, path);
    }
    EXPECT_EQ(m_Folder.List(), std::set<std::string>{"settings"});
    EXPECT_EQ(m_Archives.GetFileArchiveCount(), 0);
}

TEST_P(VersionedFileArchiveTest, RemoteStorageLeavesTheDiskAlone) {
    for (const std::int32_t version : {3, 2}) {
        const std::string before = SpelledSettings(GetParam(), version, 9);
        m_Folder.Put("settings", before);
        Settings settings(m_Archives, m_Folder / "settings");
        settings.SetFormat(ArchiveFormat::Steam);
        settings.LoadFile();
        EXPECT_EQ(settings.m_Volume, 9);
        EXPECT_EQ(settings.m_LoadedVersions.size(), version == 3 ? 1u : 2u);
        EXPECT_EQ(m_Folder.Get("settings"), before);
    }
    EXPECT_EQ(m_Reports.Count(kOld), 1);

    Settings missing(m_Archives, m_Folder / "other settings");
    missing.SetFormat(ArchiveFormat::Steam);
    missing.LoadFile();
    EXPECT_TRUE(missing.m_LoadedVersions.empty());
    EXPECT_EQ(m_Folder.List(), std::set<std::string>{"settings"});
    EXPECT_EQ(m_Archives.GetFileArchiveCount(), 0);
}

TEST_P(VersionedFileArchiveTest, FormatAndAgeAreTheOwnersToDecide) {
    Settings(m_Archives, m_Folder / "settings").LoadFile();
    EXPECT_EQ(m_Folder.Get("settings"), SpelledSettings(ArchiveFormat::Text, kCurrentVersion, kDefaultVolume));
    for (const std::int32_t version : {1, 2}) {
        m_Folder.Put("settings", SpelledSettings(GetParam(), version, 9));
        PatientSettings settings(m_Archives, m_Folder / "settings");
        settings.SetFormat(GetParam());
        settings.LoadFile();
        EXPECT_EQ(settings.m_LoadedVersions, version == 1 ? std::vector({1, 3}) : std::vector({2}));
    }
}

TEST_P(VersionedFileArchiveTest, LongPathIsRecordedCutAndOpenedWhole) {
    std::u16string path = m_Folder / "";
    while (path.size() < 300)
        path += u"./";
    path += u"settings";
    Settings settings(m_Archives, path);
    EXPECT_EQ(m_Reports.Count("GetLength( source ) < destination.m_BufferSize"), 1);
    EXPECT_EQ(settings.GetPath().GetView(), path.substr(0, 259));
    settings.SetFormat(GetParam());
    settings.LoadFile();
    EXPECT_EQ(m_Folder.Get("settings"), SpelledSettings(GetParam(), kCurrentVersion, kDefaultVolume));
}

} // namespace
} // namespace Corvid
