#include "Engine/Archive/FileArchive.h"

#include <utility>

namespace Corvid {

FileArchive::FileArchive(std::unique_ptr<File> file) : m_File(std::move(file)), m_PositionScope(*this) {}

} // namespace Corvid
