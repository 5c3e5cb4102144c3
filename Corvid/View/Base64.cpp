#include "Corvid/View/Base64.h"

#include <charconv>
#include <cstdint>

namespace Corvid {

std::string ToBase64(std::string_view bytes) {
    static constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const auto byte = [&](std::size_t at) -> std::uint32_t {
            return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
        };
        const std::uint32_t group = byte(i) << 16 | byte(i + 1) << 8 | byte(i + 2);
        text += kDigits[group >> 18];
        text += kDigits[group >> 12 & 63];
        text += i + 1 < bytes.size() ? kDigits[group >> 6 & 63] : '=';
        text += i + 2 < bytes.size() ? kDigits[group & 63] : '=';
    }
    return text;
}

std::string BytesOfHex(std::string_view digits) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        std::uint8_t byte = 0;
        std::from_chars(digits.data() + i, digits.data() + i + 2, byte, 16);
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

} // namespace Corvid
