#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Engine/File/DestinationFile.h"

namespace Corvid {

// The bytes, or what the system says.
struct ReadResult {
    std::string m_Bytes;
    std::string m_Error; // empty: all is well
};

// Waits for a pipe as long as somebody holds its other end, but not when the run is to be stopped.
ReadResult ReadFileBytes(const std::string& path);
ReadResult ReadStandardInput();

// Refuses what is no file: one that a folder held may be a pipe by now, which nobody writes into.
ReadResult ReadFoundFile(const std::string& path);

// Whether two files hold the same; no, where one of them cannot be read.
bool HoldSameBytes(const std::string& path, const std::string& otherPath);

// Opens it, after making the folders above it where `makesFolders` allows that and they are missing; empty, or what the
// system says.
std::string OpenDestination(DestinationFile& destination, const std::string& path, bool makesFolders,
                            DestinationFile::Seen seen = DestinationFile::Seen::Unknown);

// All or nothing, keeping mode and links; empty, or what the system says. `makesFolders`: those above it, if need be.
std::string WriteFileBytes(const std::string& path, std::string_view bytes, bool makesFolders);

} // namespace Corvid
