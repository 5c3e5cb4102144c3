#include "Corvid/Files/SystemError.h"

#include <cerrno>
#include <cstring>

namespace Corvid {

std::string LastSystemError() {
    return std::strerror(errno);
}

} // namespace Corvid
