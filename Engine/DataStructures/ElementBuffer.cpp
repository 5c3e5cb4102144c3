#include "Engine/DataStructures/ElementBuffer.h"

#include <limits>

#include "Engine/Report/Reporter.h"

namespace Corvid {

void* AllocateElements(std::size_t count, std::size_t size) {
    void* elements = nullptr;
    if (count <= std::numeric_limits<std::ptrdiff_t>::max() / size)
        elements = ::operator new(count* size, std::nothrow);
    if (elements == nullptr)
        ReportMessage(Message::OutOfMemory);
    return elements;
}

} // namespace Corvid
