#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string_view>

#include "Engine/Archive/Archive.h"
#include "Engine/Archive/Checksum.h"
#include "Engine/File/File.h"

namespace Corvid {

// An archive over an open file, which it owns.
class FileArchive : public Archive {
public:
    // `sourceFile` is what failed checks name, whichever source of the archive they stand in.
    FileArchive(std::unique_ptr<File> file, const char* sourceFile);
    ~FileArchive() override = default;

    File& GetFile() const { return *m_File; }
    std::u16string_view GetPath() const { return m_File->GetPath(); }

    // The sum over all values read so far. Computing it costs time and can be switched off, for later reads.
    std::uint32_t GetChecksum() const { return m_Checksum.GetValue(); }
    virtual void EnableChecksum(bool isEnabled) { m_IsChecksumEnabled = isEnabled; }

    // Reports what stands in the file behind the last value that was read; false where there is nothing.
    virtual bool ReportUnreadInput() = 0;

    // Whether the input ended within a value.
    bool HasCutValue() const { return m_HasCutValue; }

protected:
    InputStream& GetInput() const { return m_File->GetInput(); }
    OutputStream& GetOutput() const { return m_File->GetOutput(); }

    // The reports of an archive, about itself.
    bool Check(bool holds, const char* condition, int sourceLine = __builtin_LINE()) const {
        if (!holds) [[unlikely]]
            ReportFailedCheck(condition, sourceLine);
        return holds;
    }
    void ReportFailedCheck(const char* condition, int sourceLine) const;
    void ReportMessage(Message message, std::initializer_list<ReportArgument> arguments) const;

    bool m_IsChecksumEnabled = true;
    bool m_HasCutValue = false;
    Checksum m_Checksum;

    ElementRoom GetRoomFor(std::uint64_t bytesOfOne) const;

private:
    std::unique_ptr<File> m_File;
    const char* m_SourceFile;
};

} // namespace Corvid
