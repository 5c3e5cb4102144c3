#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Engine/File/DestinationFile.h"
#include "Engine/File/GrowingBuffer.h"
#include "Engine/File/InputStream.h"
#include "Engine/File/OutputStream.h"
#include "Engine/File/SourceFile.h"

namespace Corvid {

enum class FileAccess { Read, Write };

// An open file, in binary: what text needs (encodings, line ends) is the text archive's business. Files over memory
// behave like files on disk and serve tests, tools and archives without a disk.
class File final : private ByteSink {
public:
    static std::unique_ptr<File> OpenForReading(std::u16string_view path); // null when it cannot be opened
    static std::unique_ptr<File> OpenForWriting(std::u16string_view path); // null when it cannot be opened
    static std::unique_ptr<File> ReadFromMemory(std::u16string_view path, std::string bytes);
    static std::unique_ptr<File> ReadFromMemory(std::u16string_view path, const PaddedView& bytes);

    // What they write to outlives the file. A string throws when memory is short, a growing buffer fails the write, and
    // what becomes of the bytes that a sink takes is its own business.
    static std::unique_ptr<File> WriteToMemory(std::u16string_view path, std::string& bytes);
    static std::unique_ptr<File> WriteToMemory(std::u16string_view path, GrowingBuffer& bytes);
    static std::unique_ptr<File> WriteToSink(std::u16string_view path, ByteSink& sink);

    File(const File&) = delete;
    File& operator=(const File&) = delete;

    std::u16string_view GetPath() const { return m_Path; } // whole, as it was opened
    FileAccess GetAccess() const { return m_Access; }

    // The first is empty when writing; what the second is given when reading is lost, and reported.
    InputStream& GetInput() { return *m_Input; }
    OutputStream& GetOutput() { return *m_Output; }

    // Whether what is left is known to its last byte without reading it.
    bool IsSizeKnown() const { return m_Source.IsRegular() || !m_IsOnDisk; }

    // Whether reading stopped because the source brought more than is taken from what is no ordinary file.
    bool IsEndless() const { return m_Source.GetError() == SourceError::Endless; }

    // False when reading ended for another reason than the end of the source.
    bool IsWhole() const { return m_Source.GetError() == SourceError::None; }

    // Hands out what is still in the window and closes: 0 when all went well. A file for writing reaches its
    // destination here; without Close(), or after a failed write, the destination keeps what it had.
    int Close();

private:
    explicit File(std::u16string_view path) : m_Path(path) {}
    void BeginReading();
    void BeginWriting();
    void WriteBlock(const char* bytes, std::size_t count) override;
    std::size_t TakeBlock(const char* bytes, std::size_t count);

    std::u16string m_Path;
    FileAccess m_Access = FileAccess::Read;
    bool m_IsOnDisk = false;
    SourceFile m_Source;
    DestinationFile m_Destination;
    std::string* m_Memory = nullptr;
    GrowingBuffer* m_GrowingMemory = nullptr;
    ByteSink* m_Sink = nullptr;
    bool m_IsMemoryShort = false;
    std::optional<InputStream> m_Input;
    std::optional<OutputStream> m_Output;
};

} // namespace Corvid
