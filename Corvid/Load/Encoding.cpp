#include "Corvid/Load/Encoding.h"

#include <algorithm>
#include <cstring>

#include "Engine/Archive/Text/TextLine.h"
#include "Engine/Archive/Text/TextLineReader.h"
#include "Engine/String/NumberScan.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

constexpr std::string_view kBinaryMark = "BIN";
constexpr std::string_view kTextMark = "TXT";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE"; // little-endian

std::string FromUtf16(std::string_view bytes) {
    std::u16string units(bytes.size() / sizeof(char16_t), 0);
    std::memcpy(units.data(), bytes.data(), units.size() * sizeof(char16_t));
    std::string text = ToUtf8(units);
    text.reserve(text.size() + kScanPadding);
    return text;
}

// The line buffer holds no more of a first line, and a NUL ends it.
std::string_view FirstLine(std::string_view text) {
    const std::string_view line = text.substr(0, std::min(text.find('\n'), std::size_t{TextLineReader::kMaxLineUnits}));
    return line.substr(0, line.find('\0'));
}

} // namespace

std::optional<ArchiveFormat> DetectEncoding(std::string_view bytes) {
    if (bytes.starts_with(kBinaryMark))
        return ArchiveFormat::Binary;
    std::string storage;
    const bool isUtf16 = bytes.starts_with(kUtf16Mark);
    const std::string_view start =
        TextOf(isUtf16 ? bytes.substr(0, 4 * TextLineReader::kMaxLineUnits) : bytes, storage);
    return FirstLine(start).find(kTextMark) != start.npos ? std::optional(ArchiveFormat::Text) : std::nullopt;
}

std::string_view TextOf(std::string_view bytes, std::string& storage) {
    if (bytes.starts_with(kUtf8Mark))
        return bytes.substr(kUtf8Mark.size());
    if (!bytes.starts_with(kUtf16Mark))
        return bytes;
    storage = FromUtf16(bytes.substr(kUtf16Mark.size()));
    return storage;
}

std::string_view FirstLabelIn(std::string_view text) {
    const std::size_t headerEnd = text.find('\n');
    text = headerEnd != text.npos ? SkipWhiteSpace(text.substr(headerEnd)) : std::string_view();
    std::size_t length = 0;
    while (length < text.size() && !IsWhiteSpace(text[length]))
        ++length;
    return text.substr(0, length);
}

} // namespace Corvid
