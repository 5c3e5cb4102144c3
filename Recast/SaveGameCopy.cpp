#include "Recast/SaveGameCopy.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>

#include "Engine/File/FileSystem.h"
#include "Engine/Report/Reporter.h"

namespace Corvid {

namespace {

// The bytes up to and with the patched one, zero where the source has none.
void CopyStart(InputStream& input, OutputStream& output) {
    std::array<char, kPatchedOffset + 1> start{};
    input.Ensure(start.size());
    const std::size_t count = std::min(input.GetAvailable(), start.size());
    std::copy_n(input.GetPosition(), count, start.begin());
    input.SetPosition(input.GetPosition() + count);
    start[kPatchedOffset] = kPatchedByte;
    output.Write(start.data(), start.size());
}

void CopyRest(InputStream& input, OutputStream& output) {
    while (input.Ensure(1)) {
        output.Write(input.GetPosition(), input.GetAvailable());
        input.SetPosition(input.GetEnd());
    }
}

} // namespace

void CopySaveGame(std::u16string_view source, std::u16string_view destination) {
    const std::unique_ptr<File> from = FileSystem::OpenForReading(source);
    if (from == nullptr)
        return;
    const std::unique_ptr<File> to = FileSystem::OpenForWriting(destination);
    if (!Check(to != nullptr, "file != NULL"))
        return;
    CopyStart(from->GetInput(), to->GetOutput());
    CopyRest(from->GetInput(), to->GetOutput());
    FileSystem::Close(*from);
    if (from->IsWhole())
        FileSystem::Close(*to);
}

} // namespace Corvid
