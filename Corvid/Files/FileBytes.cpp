#include "Corvid/Files/FileBytes.h"

#include <algorithm>
#include <cstring>

#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/SystemError.h"
#include "Engine/File/SourceFile.h"

namespace Corvid {

namespace {

// The folder that a path stands in; empty: the working folder.
std::string FolderOf(const std::string& path) {
    const auto separator = std::find_if(path.rbegin(), path.rend(), IsPathSeparator);
    return separator == path.rend() ? std::string() : std::string(path.begin(), separator.base() - 1);
}

} // namespace

bool HoldSameBytes(const std::string& path, const std::string& otherPath) {
    SourceFile file;
    SourceFile other;
    if (!file.Open(EnginePath(path)) || !other.Open(EnginePath(otherPath)))
        return false;
    char bytes[16 * 1024];
    char otherBytes[sizeof bytes];
    for (;;) {
        const std::size_t count = file.Read(bytes, sizeof bytes);
        if (other.Read(otherBytes, sizeof otherBytes) != count || std::memcmp(bytes, otherBytes, count) != 0)
            return false;
        if (count < sizeof bytes)
            return file.GetError() == SourceError::None && other.GetError() == SourceError::None;
    }
}

std::string OpenDestination(DestinationFile& destination, const std::string& path, bool makesFolders,
                            DestinationFile::Seen seen) {
    if (destination.Open(EnginePath(path), seen))
        return {};
    const std::string folder = FolderOf(path);
    if (!makesFolders || folder.empty())
        return LastSystemError();
    // Another file of the run may have made the folder meanwhile: that is as good.
    return MakeFolders(folder) && destination.Open(EnginePath(path), seen) ? std::string() : LastSystemError();
}

std::string WriteFileBytes(const std::string& path, std::string_view bytes, bool makesFolders) {
    DestinationFile destination;
    if (std::string error = OpenDestination(destination, path, makesFolders); !error.empty())
        return error;
    if (destination.Write(bytes.data(), bytes.size()) != bytes.size())
        return LastSystemError();
    return destination.Close() == 0 ? std::string() : LastSystemError();
}

} // namespace Corvid
