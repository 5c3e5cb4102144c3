#pragma once

#include <string>

#include "Engine/Archive/Binary/BinaryFileArchive.h"

namespace Corvid {

// Where the bytes of a SteamFileArchive stand: made before the archive that writes to them.
class SteamStorage {
protected:
    std::string m_Bytes;
};

// The binary encodings towards remote storage. There is none here: what is written stays in memory and goes with the
// archive; no file is opened and no header written.
class SteamFileArchive final : private SteamStorage, public BinaryFileArchive {
public:
    SteamFileArchive() : BinaryFileArchive(File::WriteToMemory(u"", m_Bytes)) {}

    const std::string& GetBytes() {
        GetOutput().Flush();
        return m_Bytes;
    }
};

} // namespace Corvid
