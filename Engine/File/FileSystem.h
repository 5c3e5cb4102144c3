#pragma once

#include <memory>
#include <string_view>

#include "Engine/File/File.h"

namespace Corvid {

// Opening and closing with the reports that go with them.
namespace FileSystem {

// Null, and a report, when the path cannot be opened.
std::unique_ptr<File> OpenForReading(std::u16string_view path);
std::unique_ptr<File> OpenForWriting(std::u16string_view path);

// A failure, such as a full disk, is reported.
bool Close(File& file);

} // namespace FileSystem

} // namespace Corvid
