#include "Corvid/Layouts/LayoutFolders.h"

#include <cstdlib>

#include "Corvid/Files/FileStatus.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

std::vector<std::u16string> GetLayoutFolders(const std::optional<std::string>& given) {
    std::vector<std::u16string> folders;
    if (given)
        folders.push_back(EnginePath(*given));
    const char* const named = std::getenv("CORVID_LAYOUTS");
    if (named != nullptr && *named != '\0')
        folders.push_back(EnginePath(named));
    folders.push_back(ToUtf16(CORVID_INSTALLED_LAYOUTS));
    return folders;
}

} // namespace Corvid
