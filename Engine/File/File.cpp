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

std::unique_ptr<File> File::ReadFromMemory(std::u16string_view path, const PaddedView& bytes) {
    std::unique_ptr<File> file(new File(path));
    file->m_Input.emplace(bytes);
    return file;
}

std::unique_ptr<File> File::WriteToMemory(std::u16string_view path, GrowingBuffer& bytes) {
    std::unique_ptr<File> file(new File(path));
    file->m_GrowingMemory = &bytes;
    file->m_Output.emplace(static_cast<ByteSink&>(*file));
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
        return m_IsMemoryShort ? -1 : 0;
    return GetAccess() == FileAccess::Write ? m_Destination.Close() : m_Source.Close();
}

void File::WriteBlock(const char* bytes, std::size_t count) {
    const std::size_t fileWriteResult = TakeBlock(bytes, count);
    const PositionScope scope(nullptr); // about no input
    Check(fileWriteResult == count, "fileWriteResult == count");
}

std::size_t File::TakeBlock(const char* bytes, std::size_t count) {
    if (m_IsOnDisk)
        return m_Destination.Write(bytes, count);
    if (m_GrowingMemory != nullptr)
        m_IsMemoryShort = m_IsMemoryShort || !m_GrowingMemory->Append(bytes, count);
    else
        m_Memory->append(bytes, count);
    return m_IsMemoryShort ? 0 : count;
}

} // namespace Corvid
