#pragma once

#include <filesystem>

#include "Tests/Engine/File/TemporaryFolder.h"

namespace Corvid {

// A temporary folder that is the current one while it lives, so that tests can use short names.
class WorkingFolder : public TemporaryFolder {
public:
    WorkingFolder() { std::filesystem::current_path(GetPath()); }
    ~WorkingFolder() { std::filesystem::current_path(m_Outer); }

private:
    std::filesystem::path m_Outer = std::filesystem::current_path();
};

} // namespace Corvid
