#include "Engine/Archive/FileArchiveSystem.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "Engine/Archive/Binary/BinaryFileArchive.h"
#include "Engine/Archive/Binary/SteamFileArchive.h"
#include "Engine/Archive/Text/TextFileArchive.h"
#include "Engine/File/FileSystem.h"

namespace Corvid {

namespace {

constexpr std::string_view kBinaryHeader = "BIN\n";
constexpr std::string_view kBinaryMark = "BIN"; // what detection looks at
constexpr std::string_view kTextMark = "TXT";
constexpr std::string_view kTextHeader = "TXT\r\n";
constexpr std::string_view kUtf8ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16ByteOrderMark = "\xFF\xFE"; // little-endian

bool StartsWith(InputStream& input, std::string_view start) {
    input.Ensure(start.size());
    return std::string_view(input.GetPosition(), input.GetAvailable()).starts_with(start);
}

// Each byte that a header lacks is a report of its own.
bool IsBinary(const File& file, InputStream& input) {
    input.Ensure(kBinaryHeader.size());
    for (std::size_t i = input.GetAvailable(); i < kBinaryHeader.size(); ++i)
        ReportMessage(Message::FailedToReadFile, {file.GetPath(), 1, 0});
    return StartsWith(input, kBinaryMark);
}

// Leaves the input behind its byte-order mark, as UTF-8.
bool IsText(InputStream& input) {
    if (StartsWith(input, kUtf16ByteOrderMark)) {
        input.SetPosition(input.GetPosition() + kUtf16ByteOrderMark.size());
        input.ConvertFromUtf16();
    } else if (StartsWith(input, kUtf8ByteOrderMark)) {
        input.SetPosition(input.GetPosition() + kUtf8ByteOrderMark.size());
    }
    return TextLineReader(input).Peek().m_Text.find(kTextMark) != std::string_view::npos;
}

} // namespace

FileArchiveSystem::~FileArchiveSystem() {
    Check(m_FileArchiveCount == 0, "fileArchiveCount == 0");
}

std::unique_ptr<FileArchive> FileArchiveSystem::OpenForReading(std::u16string_view path) {
    std::unique_ptr<File> file = FileSystem::OpenForReading(path);
    if (file == nullptr) {
        ReportMessage(Message::UndetectedEncoding, {path});
        return nullptr;
    }
    return OpenForReading(std::move(file));
}

std::unique_ptr<FileArchive> FileArchiveSystem::OpenForReading(std::unique_ptr<File> file) {
    InputStream& input = file->GetInput();
    const bool isBinary = IsBinary(*file, input);
    const bool isArchive = isBinary || IsText(input);
    if (isArchive && !file->IsSizeKnown())
        input.BringIntoMemory();
    m_IsSourceEndless = file->IsEndless(); // which has been reported
    if (!isArchive && !m_IsSourceEndless)
        ReportMessage(Message::UndetectedEncoding, {file->GetPath()});
    if (!isArchive || m_IsSourceEndless) {
        FileSystem::Close(*file);
        return nullptr;
    }
    if (isBinary) {
        input.SetPosition(input.GetPosition() + std::min(input.GetAvailable(), kBinaryHeader.size()));
        return CreateArchive(std::move(file), ArchiveFormat::Binary);
    }
    std::unique_ptr<FileArchive> archive = CreateArchive(std::move(file), ArchiveFormat::Text);
    static_cast<TextFileArchive&>(*archive).SkipFirstLine();
    return archive;
}

std::unique_ptr<FileArchive> FileArchiveSystem::OpenForWriting(std::u16string_view path, ArchiveFormat format,
                                                               FloatForm floatForm) {
    if (format == ArchiveFormat::Steam)
        return CreateArchive(nullptr, format);
    std::unique_ptr<File> file = FileSystem::OpenForWriting(path);
    return OpenForWriting(std::move(file), format, floatForm);
}

std::unique_ptr<FileArchive> FileArchiveSystem::OpenForWriting(std::unique_ptr<File> file, ArchiveFormat format,
                                                               FloatForm floatForm) {
    if (!Check(file != nullptr, "file != NULL") ||
        !Check(file->GetAccess() == FileAccess::Write, "file->GetAccess() == FileAccess::Write"))
        return nullptr;
    OutputStream& output = file->GetOutput();
    if (format == ArchiveFormat::Text) {
        output.Write(kUtf8ByteOrderMark.data(), kUtf8ByteOrderMark.size());
        output.Write(kTextHeader.data(), kTextHeader.size());
    } else if (format == ArchiveFormat::Binary) {
        output.Write(kBinaryHeader.data(), kBinaryHeader.size());
    }
    return CreateArchive(std::move(file), format, floatForm);
}

std::unique_ptr<FileArchive> FileArchiveSystem::CreateArchive(std::unique_ptr<File> file, ArchiveFormat format,
                                                              FloatForm floatForm) {
    ++m_FileArchiveCount;
    std::unique_ptr<FileArchive> archive;
    switch (format) {
    case ArchiveFormat::Text:
        archive = std::make_unique<TextFileArchive>(std::move(file), floatForm);
        break;
    case ArchiveFormat::Binary:
        archive = std::make_unique<BinaryFileArchive>(std::move(file));
        break;
    case ArchiveFormat::Steam:
        archive = std::make_unique<SteamFileArchive>();
        break;
    }
    if (!Check(archive != nullptr, "false"))
        return nullptr;
    archive->EnableChecksum(m_AreChecksumsEnabled);
    return archive;
}

bool FileArchiveSystem::Release(std::unique_ptr<FileArchive> archive) {
    const bool isClosed = archive == nullptr || FileSystem::Close(archive->GetFile());
    Abandon(std::move(archive));
    return isClosed;
}

void FileArchiveSystem::Abandon(std::unique_ptr<FileArchive> archive) {
    archive.reset();
    --m_FileArchiveCount;
    Check(m_FileArchiveCount >= 0, "fileArchiveCount >= 0");
}

} // namespace Corvid
