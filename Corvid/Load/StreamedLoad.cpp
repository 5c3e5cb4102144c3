#include "Corvid/Load/StreamedLoad.h"

#include <utility>

#include "Corvid/Diagnostics/NotingReportSink.h"
#include "Corvid/Explain/BadText.h"
#include "Corvid/Load/Encoding.h"
#include "Corvid/Load/FastLoad.h"

namespace Corvid {

namespace {

// Whether the text begins as a text of the kind does, as far as it can be seen in its first bytes.
bool BeginsAs(Kind kind, std::string_view start) {
    std::string storage;
    return KindFromFirstLabel(FirstLabelIn(TextOf(start, storage))) == kind;
}

} // namespace

std::optional<LoadedFile> LoadStreamed(std::u16string_view path, const LoadOptions& options) {
    NotingReportSink ignored;
    const Reporter reporter(ignored);
    LoadedFile loaded;
    loaded.m_Kind = options.m_Kind ? options.m_Kind : KindFromFileName(path);
    if (!loaded.m_Kind || *loaded.m_Kind == Kind::Entity) // how an entity is read depends on its type
        return std::nullopt;
    std::unique_ptr<File> file = File::OpenForReading(path);
    if (file == nullptr || !file->IsSizeKnown())
        return std::nullopt;
    InputStream& input = file->GetInput();
    loaded.m_Size = input.GetSize();
    const std::string_view start(input.GetPosition(), input.GetAvailable());
    loaded.m_Encoding = DetectEncoding(start);
    const bool isText = loaded.m_Encoding == ArchiveFormat::Text;
    if (!loaded.m_Encoding || (isText && !BeginsAs(*loaded.m_Kind, start)))
        return std::nullopt;
    BadTextScan scan; // UTF-16, too, is bad text to it: that has to be converted as a whole
    if (isText)
        input.SetWatcher(scan);
    FastLoad load = LoadFast(CreateKindObject(*loaded.m_Kind, path), std::move(file));
    if (!load.m_IsClean || scan.HasBadText() || (options.m_IsForText && load.m_HasStringBeyondText))
        return std::nullopt;
    loaded.m_Object = std::move(load.m_Object);
    return loaded;
}

} // namespace Corvid
