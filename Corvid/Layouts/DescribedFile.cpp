#include "Corvid/Layouts/DescribedFile.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "Corvid/Diagnostics/NotingReportSink.h"
#include "Corvid/Explain/TextValue.h"
#include "Corvid/Layouts/TouchedDoubts.h"
#include "Corvid/Values/ValueTreeWriter.h"

namespace Corvid {

namespace {

std::optional<std::string> Save(const DescribedEntity& entity, ArchiveFormat format) {
    std::string bytes;
    FileArchiveSystem archives;
    archives.EnableChecksums(false);
    std::unique_ptr<FileArchive> archive =
        archives.OpenForWriting(File::WriteToMemory(u"", bytes), format, FloatForm::Exact);
    if (archive == nullptr)
        return std::nullopt;
    entity.Save(*archive);
    archives.Release(std::move(archive));
    return bytes;
}

// False: something was reported.
bool Load(DescribedEntity& entity, std::string bytes) {
    NotingReportSink reports;
    const Reporter reporter(reports);
    FileArchiveSystem archives;
    archives.EnableChecksums(false);
    std::unique_ptr<FileArchive> archive = archives.OpenForReading(File::ReadFromMemory(u"", std::move(bytes)));
    if (archive == nullptr)
        return false;
    entity.Load(*archive);
    archive->ReportUnreadInput();
    archives.Release(std::move(archive));
    return !reports.HasReports();
}

bool HasUnknownCondition(const Layout& layout) {
    const auto nodes = layout.GetNodes();
    return std::any_of(nodes.begin(), nodes.end(), [](const LayoutNode& node) {
        return node.m_Kind == LayoutKind::When && node.m_Condition.m_Field == kNoLayoutIndex;
    });
}

// The first line that differs.
std::string DifferentLine(std::string_view text, std::string_view other) {
    std::size_t at = 0;
    while (at < text.size() && at < other.size() && text[at] == other[at])
        ++at;
    const std::size_t start = at == 0 ? 0 : text.rfind('\n', at - 1) + 1;
    std::string_view line = text.substr(start, text.find_first_of("\r\n", start) - start);
    line.remove_prefix(std::min(line.find_first_not_of('\t'), line.size()));
    return Excerpt(line);
}

} // namespace

bool CheckDoubts(const DescribedEntity& entity, const std::string& layoutPath, bool isFromBinary,
                 bool isUnprovenAllowed, DiagnosticLog& log) {
    const Layout layout = WithTypeWord(entity.GetLayout());
    if (layout.IsAssumed())
        log.Add({DiagnosticCode::Unproven,
                 Severity::Warning,
                 {},
                 {},
                 layoutPath + " is assumed: no binary sample has shown that decimals are float and digits int; "
                              "corvid layout infer with a binary file does",
                 true});
    bool isAllowed = true;
    for (const TouchedDoubt& doubt : FollowLayout(layout, ValuesOf(entity), isFromBinary).m_Touched) {
        const bool isOvercome = isUnprovenAllowed && !doubt.m_IsBeyondHelp;
        const LayoutNode& node = layout[doubt.m_Node];
        std::string message =
            doubt.m_Why + "; the doubt is marked at " + layoutPath + ':' + std::to_string(node.m_Line);
        if (doubt.m_IsBeyondHelp)
            message += ", and corvid layout infer with more samples settles it";
        else if (!isOvercome)
            message += "; more samples for corvid layout infer settle it, --allow-unproven goes on";
        log.Add({DiagnosticCode::Unproven,
                 isOvercome ? Severity::Warning : Severity::Error,
                 {},
                 doubt.m_Field,
                 std::move(message)});
        isAllowed &= isOvercome;
    }
    return isAllowed;
}

std::string ExplainNoReturn(const DescribedEntity& entity, std::string_view source, ArchiveFormat encoding) {
    NotingReportSink ignored;
    const Reporter reporter(ignored);
    const bool isBinary = encoding == ArchiveFormat::Binary;
    const std::optional<std::string> text = Save(entity, ArchiveFormat::Text);
    const std::optional<std::string> binary = Save(entity, ArchiveFormat::Binary);
    if (!text || !binary)
        return "there is too little memory to convert it and back";
    if (isBinary && *binary != source) {
        std::size_t at = 0;
        while (at < binary->size() && at < source.size() && (*binary)[at] == source[at])
            ++at;
        return "saved again, it differs from its source at byte " + std::to_string(at);
    }
    // A binary file with fields of which nobody knows when they are there is never read, so it is not asked to.
    const bool isByText = isBinary || HasUnknownCondition(entity.GetLayout());
    DescribedEntity again(entity.GetPlan());
    if (!Load(again, isByText ? *text : *binary))
        return std::string("as ") + (isByText ? "text" : "binary") + " it does not load again without a fault";
    const std::optional<std::string> textAgain = Save(again, ArchiveFormat::Text);
    if (textAgain != text)
        return std::string("converted to ") + (isByText ? "text" : "binary") + " and back, it differs at '" +
               DifferentLine(*text, textAgain.value_or("")) + "'";
    return {};
}

} // namespace Corvid
