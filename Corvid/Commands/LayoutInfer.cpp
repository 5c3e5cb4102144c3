#include "Corvid/Commands/LayoutInfer.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "Corvid/Commands/FileRun.h"
#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Load/Encoding.h"
#include "Engine/Layout/Infer/LayoutInference.h"
#include "Engine/Layout/LayoutLibrary.h"
#include "Engine/Layout/LayoutParser.h"
#include "Engine/Layout/LayoutText.h"
#include "Engine/String/NearWord.h"
#include "Engine/String/Unicode.h"
#include "GS/Entity/EntityTypeTable.h"
#include "Kinds/BuiltInLayouts.h"

namespace Corvid {

namespace {

constexpr std::string_view kCommand = "layout infer";

// Diagnostics of several files, gathered to be printed by path.
class Findings {
public:
    explicit Findings(const LayoutInferOptions& options, const Console& console) {
        m_Style.m_HasColor = console.HasColor(options.m_Look.m_Color, true);
        m_Limits.m_MostLines = 0;
        if (options.m_Look.m_IsQuiet)
            m_Limits.m_Least = Severity::Error;
    }

    DiagnosticLog& Of(const std::string& path) { return m_Logs[path]; }

    bool HasErrors() const {
        return std::any_of(m_Logs.begin(), m_Logs.end(), [](const auto& entry) { return entry.second.HasErrors(); });
    }

    void Print(Console& console) const {
        for (const auto& [path, log] : m_Logs) {
            std::string text;
            for (const ShownDiagnostic& shown : SelectShown(log, m_Limits))
                AppendDiagnostic(text, path, PrintedPath(path), shown, m_Style);
            if (!text.empty())
                console.PrintError(text);
        }
    }

private:
    std::map<std::string, DiagnosticLog> m_Logs;
    DiagnosticStyle m_Style;
    DiagnosticLimits m_Limits;
};

DiagnosticPlace PlaceAt(int line) {
    return line > 0 ? DiagnosticPlace::AtLine(static_cast<std::uint64_t>(line), 1) : DiagnosticPlace();
}

void AddProblems(const std::vector<InferenceProblem>& problems, DiagnosticCode code, Findings& findings) {
    for (const InferenceProblem& problem : problems) {
        std::string message = problem.m_Message;
        if (!problem.m_Other.m_Sample.empty())
            message += ": " + PrintedPath(problem.m_Other.m_Sample) +
                       (problem.m_Other.m_Line > 0 ? ":" + std::to_string(problem.m_Other.m_Line) : std::string());
        findings.Of(problem.m_Place.m_Sample).Add(code, PlaceAt(problem.m_Place.m_Line), {}, std::move(message));
    }
}

// Whether files of the type are described by layouts at all; if not, says so.
bool IsWanted(const InferredType& type, std::string& summary, Findings& findings) {
    const std::string& sample = type.m_AnySample;
    std::vector<std::string> words;
    for (const EntityTypeRow& row : kEntityTypes) {
        words.push_back(ToUtf8(row.m_Word));
        if (words.back() != type.m_TypeWord)
            continue;
        if (row.m_Create == nullptr)
            findings.Of(sample).Add(DiagnosticCode::UnknownType, {}, {},
                                    "'" + type.m_TypeWord + "' has no definition: files of this type are never loaded");
        else if (row.m_IsLayoutSettled)
            summary += type.m_TypeWord + ": built in, needs no layout\n";
        return row.m_Create != nullptr && !row.m_IsLayoutSettled;
    }
    const std::vector<std::string_view> views(words.begin(), words.end());
    const std::string_view near = NearestWord(type.m_TypeWord, views);
    findings.Of(sample).Add(DiagnosticCode::UnknownType, {}, "entityType",
                            "'" + type.m_TypeWord + "' is no entity type" +
                                (near.empty() ? "" : " (did you mean '" + std::string(near) + "'?)"));
    return false;
}

// The marks at their lines of the file that was written.
void AddMarks(const InferredType& type, const std::string& text, DiagnosticLog& log) {
    const ParsedLayout parsed = ParseLayout(text, BuiltInBlocks());
    if (!parsed.m_Layout)
        return;
    if (type.m_Layout.IsAssumed())
        log.Add({DiagnosticCode::Unproven,
                 Severity::Warning,
                 DiagnosticPlace::AtLine(1, 1),
                 {},
                 "that decimals are float and digits are int is assumed; a binary file decides"});
    for (const InferredMark& mark : type.m_Marks) {
        const LayoutNode& node = (*parsed.m_Layout)[mark.m_Node];
        log.Add({DiagnosticCode::Unproven, Severity::Warning,
                 DiagnosticPlace::AtLine(static_cast<std::uint64_t>(node.m_Line),
                                         static_cast<std::uint64_t>(node.m_Column)),
                 mark.m_Field, mark.m_Advice});
    }
}

std::string CountsOf(const InferredType& type) {
    std::string text = CountOf(static_cast<std::uint64_t>(type.m_TextCount), "text") + " and ";
    text += type.m_BinaryCount == 1 ? "1 binary file" : std::to_string(type.m_BinaryCount) + " binary files";
    if (type.m_TwinCount > 0)
        text += ", " + std::to_string(type.m_TwinCount) + " of the same content as a text";
    return text;
}

// The layout that is continued. Null: there is something wrong with it, which was said.
std::shared_ptr<const LibraryLayout> ReadKnown(const std::string& path, const LayoutInferOptions& options,
                                               Console& console, int& status) {
    std::shared_ptr<const LibraryLayout> known = LayoutLibrary::Read(EnginePath(path), BuiltInBlocks());
    if (known->m_Plan != nullptr)
        return known;
    Findings findings(options, console);
    for (const LayoutError& error : known->m_Errors) {
        const bool isUnread = error.m_Line == 0;
        findings.Of(path).Add(isUnread ? DiagnosticCode::CannotRead : DiagnosticCode::BadLayout,
                              isUnread ? DiagnosticPlace()
                                       : DiagnosticPlace::AtLine(static_cast<std::uint64_t>(error.m_Line),
                                                                 static_cast<std::uint64_t>(error.m_Column)),
                              {}, error.m_Message);
        status = isUnread ? kExitCouldNotRun : kExitFindings;
    }
    findings.Print(console);
    return nullptr;
}

} // namespace

void DeclareCommand(CommandDeclaration& declaration, LayoutInferOptions& options) {
    declaration.Describe("Makes layouts of entity types out of sample files, and marks what these do not prove.",
                         "[OPTION]... SAMPLE... -o DIR");
    declaration.Explain("Samples are text and binary files, in any mix; they are sorted by their type word, and their "
                        "names mean nothing. A binary file with the content of a text proves most. Writes a file "
                        "TYPE.layout for each type, and says of every mark what would settle it. See "
                        "corvid-layout(5).");
    declaration.Text("-o,--output", "DIR", options.m_Folder, "write the layouts into this folder, which is made",
                     ValueRole::Folder);
    declaration.Require();
    declaration.Text("--with", "FILE", options.m_Known,
                     "start from this layout: what it says without a doubt stays, and a sample that contradicts it is "
                     "an error",
                     ValueRole::File);
    DeclareFiles(declaration, options.m_Samples);
    DeclareLook(declaration, options.m_Look);
    declaration.Example("corvid layout infer Examples/Entity -o layouts",
                        "makes a layout of each type of which there are samples below the folder");
    declaration.Example("corvid layout infer --with layouts/Quest.layout Examples/Entity/Quests -o layouts",
                        "lets more samples remove doubts of a layout that is there");
}

int RunCommand(const LayoutInferOptions& options, Console& console) {
    std::shared_ptr<const LibraryLayout> known;
    if (options.m_Known.has_value()) {
        int status = kExitDone;
        known = ReadKnown(*options.m_Known, options, console, status);
        if (known == nullptr)
            return status;
    }
    const FileList list = FindFiles(options.m_Samples, options.m_Folder);
    if (const int status = CheckFileList(list, kCommand, console); status != kExitDone)
        return status;

    std::vector<Sample> samples;
    DiagnosticPrinting printing;
    const FileRunResult run = RunOverFiles(
        list, 1, options.m_Look, printing, console,
        [&](const ListedFile& file) {
            FileOutcome outcome;
            const std::optional<Kind> kind = KindFromFileName(EnginePath(file.m_Path));
            if (kind && *kind != Kind::Entity)
                return outcome;
            std::optional<std::string> bytes = ReadListedFile(file, outcome);
            if (!bytes)
                return outcome;
            const std::optional<ArchiveFormat> encoding = DetectEncoding(*bytes);
            if (!encoding) {
                outcome.m_Log.Add(DiagnosticCode::NotAnArchive, {}, {}, "neither a text nor a binary archive");
                outcome.m_Status = kExitFindings;
                return outcome;
            }
            if (*encoding == ArchiveFormat::Text) {
                std::string storage;
                *bytes = std::string(TextOf(*bytes, storage));
            }
            samples.push_back({file.m_Path, std::move(*bytes)});
            return outcome;
        },
        [](const ListedFile&, const FileOutcome&) {});
    if (run.m_NotBegun > 0)
        return run.m_Status;

    int status = run.m_Status;
    Findings findings(options, console);
    std::optional<LayoutToContinue> toContinue;
    if (known != nullptr)
        toContinue.emplace(LayoutToContinue{known->m_Plan->GetLayout(), *options.m_Known});
    const Inference inference = InferLayouts(samples, BuiltInBlocks(), toContinue.has_value() ? &*toContinue : nullptr);
    AddProblems(inference.m_Problems, DiagnosticCode::BadText, findings);
    if (toContinue.has_value() &&
        std::none_of(inference.m_Types.begin(), inference.m_Types.end(),
                     [&](const InferredType& type) { return type.m_TypeWord == toContinue->m_Layout.GetName(); }))
        findings.Of(*options.m_Known)
            .Add(DiagnosticCode::BadLayout, {}, {},
                 "none of the samples is of the type '" + toContinue->m_Layout.GetName() + "', which it describes");
    std::string summary;
    for (const InferredType& type : inference.m_Types) {
        if (!IsWanted(type, summary, findings))
            continue;
        AddProblems(type.m_Problems, DiagnosticCode::BadLayout, findings);
        if (!type.m_HasLayout)
            continue;
        const bool isClosed = IsPathSeparator(options.m_Folder.empty() ? ' ' : options.m_Folder.back());
        const std::string path = options.m_Folder + (isClosed ? "" : "/") + type.m_TypeWord + ".layout";
        const std::string text = WriteLayoutText(type.m_Layout, BuiltInBlocks());
        const std::string error = WriteFileBytes(path, text, true);
        if (!error.empty()) {
            findings.Of(path).Add(DiagnosticCode::CannotWrite, {}, {}, error);
            status = kExitCouldNotRun;
            continue;
        }
        AddMarks(type, text, findings.Of(path));
        summary += PrintedPath(path) + ": from " + CountsOf(type) + ", " + CountOf(type.m_Marks.size(), "mark") + '\n';
    }
    findings.Print(console);
    if (!options.m_Look.m_IsQuiet)
        console.PrintError(summary.empty() ? "no layout was made\n" : summary);
    if (findings.HasErrors())
        status = std::max(status, kExitFindings);
    return status;
}

} // namespace Corvid
