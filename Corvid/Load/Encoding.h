#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Engine/Archive/FileArchiveSystem.h"

namespace Corvid {

// By the first bytes, as the engine tells: Text or Binary, or neither.
std::optional<ArchiveFormat> DetectEncoding(std::string_view bytes);

// A text archive as UTF-8 without a byte-order mark; `storage` holds it where it was UTF-16. Behind the text
// kScanPadding bytes are readable if they are behind `bytes`.
std::string_view TextOf(std::string_view bytes, std::string& storage);

// The first label behind the header; empty: there is none.
std::string_view FirstLabelIn(std::string_view text);

} // namespace Corvid
