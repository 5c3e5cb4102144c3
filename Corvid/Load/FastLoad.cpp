#include "Corvid/Load/FastLoad.h"

#include <new>
#include <utility>

#include "Corvid/Diagnostics/NotingReportSink.h"
#include "Engine/Archive/Binary/BinaryFileArchive.h"
#include "Engine/Archive/FileArchiveSystem.h"
#include "Engine/Archive/Text/TextFileArchive.h"

namespace Corvid {

namespace {

void Load(FastLoad& load, std::unique_ptr<File> file) {
    FileArchiveSystem archives;
    archives.EnableChecksums(false);
    std::unique_ptr<FileArchive> archive = archives.OpenForReading(std::move(file));
    if (archive == nullptr)
        return;
    auto* const text = dynamic_cast<TextFileArchive*>(archive.get());
    if (text != nullptr)
        text->TakeBits();
    load.m_Object->Load(*archive);
    if (load.m_Object->IsThere())
        archive->ReportUnreadInput();
    load.m_Object->Finish();
    load.m_IsClean = (text == nullptr || !text->HasDeviated()) && !archive->GetBudget().HasNegativeCount();
    if (text == nullptr)
        load.m_HasStringBeyondText = static_cast<BinaryFileArchive&>(*archive).HasStringBeyondText();
    archives.Release(std::move(archive));
}

} // namespace

FastLoad LoadFast(Kind kind, const PaddedView& bytes, std::u16string_view path) {
    try {
        return LoadFast(CreateKindObject(kind, path), File::ReadFromMemory(path, bytes));
    } catch (const std::bad_alloc&) {
        FastLoad load;
        load.m_IsMemoryShort = true;
        return load;
    }
}

FastLoad LoadFast(std::unique_ptr<KindObject> object, std::unique_ptr<File> file) {
    FastLoad load;
    NotingReportSink reports;
    const Reporter reporter(reports);
    load.m_Object = std::move(object);
    try {
        Load(load, std::move(file));
    } catch (const std::bad_alloc&) {
        load.m_IsMemoryShort = true;
    }
    if (load.m_IsMemoryShort || !load.m_Object->IsThere())
        load.m_Object.reset();
    load.m_IsClean = load.m_IsClean && load.m_Object != nullptr && !reports.HasReports();
    load.m_FirstReport = reports.GetFirst();
    return load;
}

} // namespace Corvid
