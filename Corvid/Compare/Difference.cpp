#include "Corvid/Compare/Difference.h"

namespace Corvid {

std::string_view WordOf(Change change) {
    constexpr std::string_view kWords[] = {"changed", "added", "removed", "moved"};
    return kWords[static_cast<std::size_t>(change)];
}

} // namespace Corvid
