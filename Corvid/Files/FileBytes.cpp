#include "Corvid/Files/FileBytes.h"

#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/SystemError.h"
#include "Engine/File/DestinationFile.h"

namespace Corvid {

std::string WriteFileBytes(const std::string& path, std::string_view bytes) {
    DestinationFile destination;
    if (!destination.Open(EnginePath(path)))
        return LastSystemError();
    if (destination.Write(bytes.data(), bytes.size()) != bytes.size())
        return LastSystemError();
    return destination.Close() == 0 ? std::string() : LastSystemError();
}

} // namespace Corvid
