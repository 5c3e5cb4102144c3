#include "Engine/File/File.h"

#include <utility>

#include "Engine/Report/Reporter.h"

namespace Corvid {

std::unique_ptr<File> File::OpenForReading(std::u16string_view path) {
    std::unique_ptr<File> file(new File(path));
    if (!file->m_Source.Open(path))
        return nullptr;
    file->m_IsOnDisk = true;
    file->m_Input.emplace(file->m_Source, file->m_Path);
    return file;
}

std::unique_ptr<File> File::OpenForWriting(std::u16string_view path) {
    std::unique_ptr<File> file(new File(path));
    if (!file->m_Destination.Open(path))
        return nullptr;
    file->m_IsOnDisk = true;
    file->m_Output.emplace(static_cast<ByteSink&>(*file));
    return file;
}

std::unique_ptr<File> File::ReadFromMemory(std::u16string_view path, std::string bytes) {
    std::unique_ptr<File> file(new File(path));
    file->m_Input.emplace(std::move(bytes));
    return file;
}

std::unique_ptr<File> File::WriteToMemory(std::u16string_view path, std::string& bytes) {
    std::unique_ptr<File> file(new File(path));
    file->m_Memory = &bytes;
    file->m_Output.emplace(static_cast<ByteSink&>(*file));
    return file;
}

int File::Close() {
    if (m_Output)
        m_Output->Flush();
    if (!m_IsOnDisk)
        return 0;
    return GetAccess() == FileAccess::Write ? m_Destination.Close() : m_Source.Close();
}

void File::WriteBlock(const char* bytes, std::size_t count) {
    std::size_t fileWriteResult = count;
    if (m_IsOnDisk)
        fileWriteResult = m_Destination.Write(bytes, count);
    else
        m_Memory->append(bytes, count);
    Check(fileWriteResult == count, "fileWriteResult == count");
}

} // namespace Corvid
