#pragma once

#include <string>
#include <string_view>

namespace Corvid {

// The parts of a path as the data's home platform splits it, on every system: a colon as second unit ends the drive,
// both slashes separate folders, and the last dot after the last slash starts the extension (".hidden" is all
// extension). The four parts, put together again, are the path.
struct PathParts {
    std::u16string_view m_Drive;     // "C:" or empty
    std::u16string_view m_Folder;    // with its last slash
    std::u16string_view m_Name;      // the file part
    std::u16string_view m_Extension; // with its dot
};

PathParts SplitPath(std::u16string_view path); // views into `path`

} // namespace Corvid
