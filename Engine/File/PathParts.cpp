#include "Engine/File/PathParts.h"

namespace Corvid {

PathParts SplitPath(std::u16string_view path) {
    PathParts parts;
    if (path.size() >= 2 && path[1] == u':') {
        parts.m_Drive = path.substr(0, 2);
        path.remove_prefix(2);
    }
    const std::size_t slash = path.find_last_of(u"/\\");
    if (slash != path.npos) {
        parts.m_Folder = path.substr(0, slash + 1);
        path.remove_prefix(slash + 1);
    }
    const std::size_t dot = path.rfind(u'.');
    parts.m_Name = path.substr(0, dot);
    if (dot != path.npos)
        parts.m_Extension = path.substr(dot);
    return parts;
}

} // namespace Corvid
