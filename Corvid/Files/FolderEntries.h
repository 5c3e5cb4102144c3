#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>

#include "Corvid/Files/FileStatus.h"

namespace Corvid {

struct FolderEntry {
    enum class Type { File, Folder, Link, Other };

    std::string m_Name;
    Type m_Type = Type::File;
    std::optional<FileStatus> m_Status; // as GetFileStatus() tells it, where it was asked for
};

// Hands over the entries but for "." and "..", in no order; false when the folder cannot be read, and
// LastSystemError() says why.
bool ReadFolder(const std::string& path, const std::function<void(FolderEntry)>& take);

// Asks for the statuses of the entries that `wants` picks; cheaper than by whole paths.
void AskStatuses(std::span<FolderEntry> entries, const std::string& folder, bool (*wants)(const FolderEntry&));

} // namespace Corvid
