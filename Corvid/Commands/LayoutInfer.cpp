#include "Corvid/Commands/LayoutInfer.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "Corvid/Commands/FileRun.h"
#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Layouts/LayoutFindings.h"
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

FileOutcome ReadSample(const ListedFile& file, std::vector<Sample>& samples) {
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
}

// One call of the command: what it finds, file by file, and what it says at the end.
class InferRun {
public:
    InferRun(const LayoutInferOptions& options, Console& console)
        : m_Options(options), m_Console(console), m_Findings(options, console) {}

    int Run();

private:
    bool ReadKnown(); // false: there is something wrong with the layout that is to be continued
    bool ReadSamples();
    void AddProblemsOf(const Inference& inference);
    void WriteLayout(const InferredType& type);
    void Note(int status) { m_Status = std::max(m_Status, status); }

    const LayoutInferOptions& m_Options;
    Console& m_Console;
    std::shared_ptr<const LibraryLayout> m_KnownFile; // of --with
    std::optional<LayoutToContinue> m_Known;          // that lives in it
    std::vector<Sample> m_Samples;
    Findings m_Findings;
    std::string m_Summary;
    int m_Status = kExitDone;
};

int InferRun::Run() {
    if (!ReadKnown()) {
        m_Findings.Print(m_Console);
        return m_Status;
    }
    if (!ReadSamples())
        return m_Status;
    const Inference inference = InferLayouts(m_Samples, BuiltInBlocks(), m_Known ? &*m_Known : nullptr);
    AddProblemsOf(inference);
    for (const InferredType& type : inference.m_Types) {
        if (!IsWanted(type, m_Summary, m_Findings))
            continue;
        AddProblems(type.m_Problems, DiagnosticCode::BadLayout, m_Findings);
        if (type.m_HasLayout)
            WriteLayout(type);
    }
    m_Findings.Print(m_Console);
    if (!m_Options.m_Look.m_IsQuiet)
        m_Console.PrintError(m_Summary.empty() ? "no layout was made\n" : m_Summary);
    if (m_Findings.HasErrors())
        Note(kExitFindings);
    return m_Status;
}

bool InferRun::ReadKnown() {
    if (!m_Options.m_Known.has_value())
        return true;
    const std::string& path = *m_Options.m_Known;
    m_KnownFile = LayoutLibrary::Read(EnginePath(path), BuiltInBlocks());
    if (m_KnownFile->m_Plan == nullptr) {
        m_Status = AddLayoutErrors(m_KnownFile->m_Errors, m_Findings.Of(path)) ? kExitFindings : kExitCouldNotRun;
        return false;
    }
    m_Known.emplace(LayoutToContinue{m_KnownFile->m_Plan->GetLayout(), path});
    return true;
}

bool InferRun::ReadSamples() {
    const FileList list = FindFiles(m_Options.m_Samples, m_Options.m_Folder);
    m_Status = CheckFileList(list, kCommand, m_Console);
    if (m_Status != kExitDone)
        return false;
    const FileRunResult run = RunOverFiles(
        list, 1, m_Options.m_Look, DiagnosticPrinting(), m_Console,
        [&](const ListedFile& file) { return ReadSample(file, m_Samples); },
        [](const ListedFile&, const FileOutcome&) {});
    m_Status = run.m_Status;
    return run.m_NotBegun == 0;
}

void InferRun::AddProblemsOf(const Inference& inference) {
    AddProblems(inference.m_Problems, DiagnosticCode::BadText, m_Findings);
    if (!m_Known)
        return;
    const std::string& word = m_Known->m_Layout.GetName();
    if (std::none_of(inference.m_Types.begin(), inference.m_Types.end(),
                     [&](const InferredType& type) { return type.m_TypeWord == word; }))
        m_Findings.Of(*m_Options.m_Known)
            .Add(DiagnosticCode::BadLayout, {}, {},
                 "none of the samples is of the type '" + word + "', which it describes");
}

void InferRun::WriteLayout(const InferredType& type) {
    const bool isClosed = IsPathSeparator(m_Options.m_Folder.empty() ? ' ' : m_Options.m_Folder.back());
    const std::string path = m_Options.m_Folder + (isClosed ? "" : "/") + type.m_TypeWord + ".layout";
    const std::string text = WriteLayoutText(type.m_Layout, BuiltInBlocks());
    if (const std::string error = WriteFileBytes(path, text, true); !error.empty()) {
        m_Findings.Of(path).Add(DiagnosticCode::CannotWrite, {}, {}, error);
        return Note(kExitCouldNotRun);
    }
    AddMarks(type, text, m_Findings.Of(path));
    m_Summary += PrintedPath(path) + ": from " + CountsOf(type) + ", " + CountOf(type.m_Marks.size(), "mark") + '\n';
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
    return InferRun(options, console).Run();
}

} // namespace Corvid
