#pragma once

#include <string>

namespace Corvid {

// What the system says about the last call of this thread that failed: "No such file or directory".
std::string LastSystemError();

} // namespace Corvid
