#include "Engine/File/TemporaryName.h"

#include <charconv>
#include <cstring>

namespace Corvid {

TemporaryName MakeTemporaryName(std::uint32_t processId, std::uint64_t randomNumber) {
    constexpr char kStart[] = ".recast-";
    constexpr char kEnd[] = ".tmp";
    constexpr int kDigits = 16;
    TemporaryName name{};
    std::memcpy(name.data(), kStart, sizeof kStart - 1);
    char* next = std::to_chars(name.data() + sizeof kStart - 1, name.data() + name.size(), processId).ptr;
    *next++ = '-';
    for (int shift = (kDigits - 1) * 4; shift >= 0; shift -= 4)
        *next++ = "0123456789abcdef"[randomNumber >> shift & 0xF];
    std::memcpy(next, kEnd, sizeof kEnd);
    return name;
}

} // namespace Corvid
