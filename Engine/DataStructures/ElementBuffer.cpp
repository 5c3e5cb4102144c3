#include "Engine/DataStructures/ElementBuffer.h"

#include <limits>

namespace Corvid {

void* AllocateElements(std::size_t count, std::size_t size) {
    if (count > std::numeric_limits<std::ptrdiff_t>::max() / size)
        throw std::bad_alloc();
    return ::operator new(count* size);
}

} // namespace Corvid
