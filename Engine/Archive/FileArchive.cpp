#include "Engine/Archive/FileArchive.h"

#include <algorithm>
#include <utility>

namespace Corvid {

FileArchive::FileArchive(std::unique_ptr<File> file, const char* sourceFile)
    : m_File(std::move(file)), m_SourceFile(sourceFile) {
    if (m_File->GetAccess() == FileAccess::Read)
        GetInput().SetReader(*this);
}

ElementRoom FileArchive::GetRoomFor(std::uint64_t bytesOfOne) const {
    return {std::max<std::uint64_t>(bytesOfOne, 1), GetInput().GetBytesLeft(), GetInput().GetSize()};
}

void FileArchive::ReportFailedCheck(const char* condition, int sourceLine) const {
    const PositionScope scope(this);
    Corvid::ReportFailedCheck(condition, m_SourceFile, sourceLine);
}

void FileArchive::ReportMessage(Message message, std::initializer_list<ReportArgument> arguments) const {
    const PositionScope scope(this);
    Corvid::ReportMessage(message, arguments);
}

} // namespace Corvid
