#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "Engine/Archive/Archive.h"
#include "Engine/Archive/Checksum.h"
#include "Engine/File/File.h"

namespace Corvid {

// An archive over an open file, which it owns. Reports made while it lives carry its position.
class FileArchive : public Archive, public PositionSource {
public:
    explicit FileArchive(std::unique_ptr<File> file);
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

    bool m_IsChecksumEnabled = true;
    bool m_HasCutValue = false;
    Checksum m_Checksum;

private:
    std::uint64_t GetInputSize() const override { return GetInput().GetSize(); }

    std::unique_ptr<File> m_File;
    PositionScope m_PositionScope;
};

} // namespace Corvid
