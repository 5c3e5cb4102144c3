#include "Corvid/Files/PrintedPath.h"

#include <algorithm>

namespace Corvid {

namespace {

#ifdef _WIN32
constexpr bool kIsBackslashOrdinary = true; // it separates folders
#else
constexpr bool kIsBackslashOrdinary = false;
#endif

bool NeedsEscape(char unit) {
    return static_cast<unsigned char>(unit) < 0x20 || unit == 0x7F || unit == '"' ||
           (unit == '\\' && !kIsBackslashOrdinary);
}

void AppendEscape(std::string& out, char unit) {
    constexpr std::string_view kPlain = "\a\b\t\n\v\f\r\"\\";
    constexpr std::string_view kLetters = "abtnvfr\"\\";
    out.push_back('\\');
    if (const std::size_t place = kPlain.find(unit); place != std::string_view::npos) {
        out.push_back(kLetters[place]);
        return;
    }
    for (int shift = 6; shift >= 0; shift -= 3)
        out.push_back(static_cast<char>('0' + (static_cast<unsigned char>(unit) >> shift & 7)));
}

} // namespace

std::string PrintedPath(std::string_view path) {
    if (std::none_of(path.begin(), path.end(), NeedsEscape))
        return std::string(path);
    std::string out = "\"";
    for (const char unit : path) {
        if (NeedsEscape(unit))
            AppendEscape(out, unit);
        else
            out.push_back(unit);
    }
    return out + '"';
}

std::uint64_t HashOfPath(std::string_view path) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char unit : path)
        hash = (hash ^ static_cast<unsigned char>(unit)) * 0x100000001B3;
    return hash;
}

} // namespace Corvid
