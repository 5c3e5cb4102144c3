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
    file->BeginReading();
    return file;
}

std::unique_ptr<File> File::OpenForWriting(std::u16string_view path) {
    std::unique_ptr<File> file(new File(path));
    if (!file->m_Destination.Open(path))
        return nullptr;
    file->m_IsOnDisk = true;
    file->BeginWriting();
    return file;
}

std::unique_ptr<File> File::ReadFromMemory(std::u16string_view path, std::string bytes) {
    std::unique_ptr<File> file(new File(path));
    file->m_Input.emplace(std::move(bytes));
    file->BeginReading();
    return file;
}

std::unique_ptr<File> File::ReadFromMemory(std::u16string_view path, const PaddedView& bytes) {
    std::unique_ptr<File> file(new File(path));
    file->m_Input.emplace(bytes);
    file->BeginReading();
    return file;
}

std::unique_ptr<File> File::WriteToMemory(std::u16string_view path, GrowingBuffer& bytes) {
    std::unique_ptr<File> file(new File(path));
    file->m_GrowingMemory = &bytes;
    file->BeginWriting();
    return file;
}

std::unique_ptr<File> File::WriteToMemory(std::u16string_view path, std::string& bytes) {
    std::unique_ptr<File> file(new File(path));
    file->m_Memory = &bytes;
    file->BeginWriting();
    return file;
}

std::unique_ptr<File> File::WriteToSink(std::u16string_view path, ByteSink& sink) {
    std::unique_ptr<File> file(new File(path));
    file->m_Sink = &sink;
    file->BeginWriting();
    return file;
}

void File::BeginReading() {
    m_Access = FileAccess::Read;
    m_Output.emplace(static_cast<ByteSink&>(*this));
}

void File::BeginWriting() {
    static constexpr char kNothing[InputStream::kPadding] = {};
    m_Access = FileAccess::Write;
    m_Input.emplace(PaddedView{kNothing, 0});
    m_Output.emplace(static_cast<ByteSink&>(*this));
}

int File::Close() {
    m_Output->Flush();
    if (!m_IsOnDisk)
        return m_IsMemoryShort ? -1 : 0;
    return GetAccess() == FileAccess::Write ? m_Destination.Close() : m_Source.Close();
}

void File::WriteBlock(const char* bytes, std::size_t count) {
    const bool isTaken = TakeBlock(bytes, count) == count;
    const PositionScope scope(nullptr); // about no input
    Check(isTaken, "fileWriteResult == count");
}

std::size_t File::TakeBlock(const char* bytes, std::size_t count) {
    if (GetAccess() == FileAccess::Read)
        return 0;
    if (m_IsOnDisk)
        return m_Destination.Write(bytes, count);
    if (m_Sink != nullptr)
        m_Sink->WriteBlock(bytes, count);
    else if (m_GrowingMemory != nullptr)
        m_IsMemoryShort = m_IsMemoryShort || !m_GrowingMemory->Append(bytes, count);
    else
        m_Memory->append(bytes, count);
    return m_IsMemoryShort ? 0 : count;
}

} // namespace Corvid
