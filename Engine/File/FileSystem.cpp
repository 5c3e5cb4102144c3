#include "Engine/File/FileSystem.h"

#include "Engine/Report/Reporter.h"

namespace Corvid {

std::unique_ptr<File> FileSystem::OpenForReading(std::u16string_view path) {
    std::unique_ptr<File> file = File::OpenForReading(path);
    if (file == nullptr)
        ReportMessage(Message::FailedToOpenFile, {path});
    return file;
}

std::unique_ptr<File> FileSystem::OpenForWriting(std::u16string_view path) {
    std::unique_ptr<File> file = File::OpenForWriting(path);
    if (file == nullptr)
        ReportMessage(Message::FailedToOpenFile, {path});
    return file;
}

bool FileSystem::Close(File& file) {
    return Check(file.Close() == 0, "closeResult == 0");
}

} // namespace Corvid
