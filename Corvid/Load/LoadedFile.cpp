#include "Corvid/Load/LoadedFile.h"

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

#include "Corvid/Diagnostics/NotingReportSink.h"
#include "Corvid/Explain/BadText.h"
#include "Corvid/Explain/BinaryExplainer.h"
#include "Corvid/Explain/TextExplainer.h"
#include "Corvid/Layouts/DescribedEntity.h"
#include "Corvid/Layouts/DescribedFile.h"
#include "Corvid/Load/Encoding.h"
#include "Corvid/Load/FastLoad.h"
#include "Corvid/Load/KindLayouts.h"
#include "Corvid/Values/ValueTreeReader.h"
#include "Engine/File/PathParts.h"
#include "Engine/String/NearWord.h"
#include "Engine/String/Unicode.h"
#include "GS/Entity/EntityTypeTable.h"

namespace Corvid {

namespace {

constexpr std::string_view kTypeLabel = "entityType";
constexpr std::uint64_t kBinaryHeaderSize = 4;

std::optional<EntityType> EntityTypeFromWord(std::string_view word) {
    for (int value = 0; value < kEntityTypeCount; ++value) {
        if (ToUtf8(kEntityTypes[value].m_Word) == word)
            return static_cast<EntityType>(value);
    }
    return std::nullopt;
}

std::string ExplainUnknownType(std::string_view word, bool isKnown) {
    const std::string quoted = "'" + Excerpt(word) + "'";
    if (isKnown)
        return quoted + " has no definition: files of this type are never loaded";
    std::vector<std::string> known;
    for (const EntityTypeRow& row : kEntityTypes)
        known.push_back(ToUtf8(row.m_Word));
    const std::vector<std::string_view> words(known.begin(), known.end());
    const std::string_view nearest = NearestWord(word, words);
    return quoted + " is no entity type" + (nearest.empty() ? "" : " (did you mean '" + std::string(nearest) + "'?)");
}

// The stages of loading one file. Each may end it by what it finds.
class Loading {
public:
    Loading(std::string bytes, std::u16string_view path, const LoadOptions& options)
        : m_Bytes(std::move(bytes)), m_Path(path), m_Options(options) {
        m_File.m_Size = m_Bytes.size();
        m_Bytes.append(InputStream::kPadding, '\0');
    }

    LoadedFile Run();

private:
    bool FindEncoding();
    bool FindKind();
    bool FindBinaryKind();
    bool HoldsUnsettledEntity();
    bool FindTypeOfEntity();
    std::optional<std::string> FindTypeWord(DiagnosticPlace& place);
    bool FindLayout(std::string_view typeWord, DiagnosticPlace place);
    std::unique_ptr<KindObject> CreateObject() const;
    void Explain(const FastLoad& load);
    void JudgeDescribed(FastLoad& load);

    std::string_view GetBytes() const { return {m_Bytes.data(), m_Bytes.size() - InputStream::kPadding}; }
    PaddedView GetPadded() const { return {m_Bytes.data(), m_Bytes.size() - InputStream::kPadding}; }
    bool IsText() const { return m_File.m_Encoding == ArchiveFormat::Text; }
    void Fail(DiagnosticCode code, DiagnosticPlace place, std::string_view field, std::string message) {
        m_File.m_Log.Add(code, place, std::string(field), std::move(message));
    }

    std::string m_Bytes; // padded
    std::u16string_view m_Path;
    const LoadOptions& m_Options;
    LoadedFile m_File;
    std::string m_TextStorage;
    std::string_view m_Text; // of a text archive
    Layout m_EntityLayout;
    std::shared_ptr<const LibraryLayout> m_DescribedBy; // of an entity whose layout is a file
};

LoadedFile Loading::Run() {
    if (!FindEncoding() || !FindKind() || (m_File.m_Kind == Kind::Entity && !FindTypeOfEntity()))
        return std::move(m_File);
    FastLoad load = LoadFast(CreateObject(), File::ReadFromMemory(m_Path, GetPadded()));
    m_File.m_IsMemoryShort = load.m_IsMemoryShort;
    if (m_File.m_IsMemoryShort)
        return std::move(m_File);
    const bool isBeyondText = m_Options.m_IsForText && load.m_HasStringBeyondText;
    if (!load.m_IsClean || isBeyondText || m_DescribedBy != nullptr || (IsText() && HasBadText(m_Text)))
        Explain(load);
    if (m_DescribedBy != nullptr)
        JudgeDescribed(load);
    m_File.m_Object = std::move(load.m_Object);
    return std::move(m_File);
}

bool Loading::FindEncoding() {
    m_File.m_Encoding = DetectEncoding(GetBytes());
    if (!m_File.m_Encoding) {
        Fail(DiagnosticCode::NotAnArchive, {}, {},
             GetBytes().empty()
                 ? "the file is empty"
                 : "neither a text archive, whose first line holds TXT, nor a binary one, which begins with BIN");
        return false;
    }
    if (IsText())
        m_Text = TextOf(GetBytes(), m_TextStorage);
    return true;
}

bool Loading::FindKind() {
    const std::optional<Kind> extension = KindFromFileName(m_Path);
    if (m_Options.m_Kind) {
        m_File.m_Kind = m_Options.m_Kind;
        return true;
    }
    if (!IsText()) {
        m_File.m_Kind = extension;
        return extension || FindBinaryKind();
    }
    const std::string_view label = FirstLabelIn(m_Text);
    const std::optional<Kind> content = KindFromFirstLabel(label);
    m_File.m_Kind = content ? content : extension;
    if (content && extension && *content != *extension)
        Fail(DiagnosticCode::KindDiffers, {}, {},
             "the name says " + std::string(WordOf(*extension)) + ", and the content is " +
                 std::string(WordOf(*content)) + "; --type decides");
    if (!m_File.m_Kind)
        Fail(DiagnosticCode::UnknownKind, {}, {},
             "neither the name nor the first label '" + Excerpt(label) +
                 "' tells the kind; --type mesh, particle, brushes or entity does");
    return m_File.m_Kind.has_value();
}

// A binary file is of the one kind that has nothing to report of it.
bool Loading::FindBinaryKind() {
    std::vector<Kind> kinds;
    for (const Kind kind : kKinds) {
        if (LoadFast(kind, GetPadded(), m_Path).m_IsClean)
            kinds.push_back(kind);
    }
    if (kinds.size() == 1)
        m_File.m_Kind = kinds.front();
    else if (kinds.empty() && HoldsUnsettledEntity())
        m_File.m_Kind = Kind::Entity; // a layout may read it
    else
        Fail(DiagnosticCode::UnknownKind, {}, {},
             std::string(kinds.empty() ? "no kind of file reads like this" : "several kinds of files read like this") +
                 "; --type mesh, particle, brushes or entity tells which it is");
    return m_File.m_Kind.has_value();
}

bool Loading::HoldsUnsettledEntity() {
    DiagnosticPlace place;
    const std::optional<EntityType> type = EntityTypeFromWord(FindTypeWord(place).value_or(""));
    const EntityTypeRow* const row = type ? FindEntityType(*type) : nullptr;
    return row != nullptr && row->m_Create != nullptr && !row->m_IsLayoutSettled;
}

// Of an entity without a layout, nothing more can be said.
bool Loading::FindTypeOfEntity() {
    DiagnosticPlace place;
    const std::optional<std::string> found = FindTypeWord(place);
    if (!found)
        return true; // what is wrong with it shows when the file is read
    const std::string& word = *found;
    m_File.m_EntityType = word;
    const std::optional<EntityType> type = EntityTypeFromWord(word);
    const EntityTypeRow* const row = type ? FindEntityType(*type) : nullptr;
    if (row == nullptr || row->m_Create == nullptr) {
        Fail(DiagnosticCode::UnknownType, place, kTypeLabel, ExplainUnknownType(word, row != nullptr));
        return false;
    }
    if (!row->m_IsLayoutSettled)
        return FindLayout(word, place);
    m_File.m_LayoutOrigin = "built-in";
    m_EntityLayout = LayoutOfEntityType(*type);
    return true;
}

bool Loading::FindLayout(std::string_view typeWord, DiagnosticPlace place) {
    m_DescribedBy = m_Options.m_Layouts != nullptr ? m_Options.m_Layouts->Find(typeWord) : nullptr;
    if (m_DescribedBy == nullptr) {
        Fail(DiagnosticCode::NoLayout, place, kTypeLabel,
             "nobody has described the fields of '" + std::string(typeWord) +
                 "'; corvid layout infer SAMPLE... -o DIR makes a layout from " +
                 "sample files, and --layouts DIR uses it");
        return false;
    }
    m_File.m_LayoutOrigin = ToUtf8(m_DescribedBy->m_Path);
    if (m_DescribedBy->m_Plan == nullptr) {
        const LayoutError& error = m_DescribedBy->m_Errors.front();
        Fail(DiagnosticCode::BadLayout, place, kTypeLabel,
             m_File.m_LayoutOrigin + ':' + std::to_string(error.m_Line) + ':' + std::to_string(error.m_Column) + ": " +
                 error.m_Message);
        return false;
    }
    m_EntityLayout = WithTypeWord(m_DescribedBy->m_Plan->GetLayout());
    return true;
}

std::unique_ptr<KindObject> Loading::CreateObject() const {
    if (m_DescribedBy != nullptr)
        return std::make_unique<DescribedEntity>(m_DescribedBy->m_Plan);
    return CreateKindObject(*m_File.m_Kind, m_Path);
}

// The type word, wherever it stands. Nothing: it cannot be read.
std::optional<std::string> Loading::FindTypeWord(DiagnosticPlace& place) {
    DiagnosticLog log;
    ValueTree tree;
    const Layout& layout = LayoutOfKind(Kind::Entity);
    LayoutNode node = layout[0];
    node.m_Words.clear();
    node.m_Kind = LayoutKind::String;
    bool isSpoilt = false; // its line is no text
    if (!IsText()) {
        place = DiagnosticPlace::AtOffset(kBinaryHeaderSize);
        BinaryExplainer(Layout("", {node}), GetBytes(), false, log, tree).Run();
    } else {
        TextLines lines(m_Text);
        if (HasBadText(m_Text))
            ReportBadText(lines, log);
        TextExplainer(Layout("", {node}), lines, log, tree).Run(false);
        for (LineIndex line = 0; line < lines.GetSize(); ++line) {
            const ArchiveLine here = lines[line];
            if (here.GetLabel() == kTypeLabel || IsNearWord(here.GetLabel(), kTypeLabel)) {
                const std::size_t value = here.m_Text.find_first_not_of(" \t", here.GetLabelEnd());
                place = DiagnosticPlace::AtLine(lines.GetNumber(line), here.GetColumn(value));
                isSpoilt = lines.IsSpoilt(line);
                break;
            }
        }
    }
    std::string word = tree.GetSize() > 0 ? ToUtf8(tree.GetString(tree[0])) : std::string();
    bool isFaulty = false;
    for (const Diagnostic& diagnostic : log.GetAll()) {
        const bool isOfWord = diagnostic.m_Field == kTypeLabel;
        isFaulty = isFaulty || (isOfWord && (word.empty() || diagnostic.m_Code == DiagnosticCode::TooLong));
    }
    return isFaulty || (isSpoilt && !EntityTypeFromWord(word)) ? std::nullopt : std::optional(std::move(word));
}

// Reads again, by the layout: for diagnostics, and for what can be read.
void Loading::Explain(const FastLoad& load) {
    const Kind kind = *m_File.m_Kind;
    const Layout& layout = m_EntityLayout.GetSize() > 0 ? m_EntityLayout : LayoutOfKind(kind);
    DiagnosticLog log;
    ValueTree tree;
    if (IsText()) {
        TextLines lines(m_Text);
        ReportBadText(lines, log);
        tree.Reserve(lines.GetSize()); // a value takes a line, or several
        TextExplainer(layout, lines, log, tree).Run(kind != Kind::Entity || &layout == &m_EntityLayout);
    } else {
        BinaryExplainer explainer(layout, GetBytes(), m_Options.m_IsForText, log, tree);
        if (m_DescribedBy != nullptr)
            explainer.SetStrict();
        explainer.Run();
    }
    log.SortByPlace();
    if (!log.HasErrors() && !load.m_IsClean && load.m_Object == nullptr) // known to the engine alone
        log.Add(DiagnosticCode::BadValue, {}, {}, Excerpt(load.m_FirstReport));
    const bool hasErrors = log.HasErrors();
    m_File.m_Log.Append(std::move(log));
    if (!hasErrors)
        return;
    NotingReportSink ignored;
    const Reporter reporter(ignored);
    m_File.m_Readable = CreateObject();
    ValueTreeReader reader(tree);
    m_File.m_Readable->Load(reader);
    if (!m_File.m_Readable->IsThere())
        m_File.m_Readable.reset();
}

// A described file has to come back from a conversion, and may not touch what its layout leaves open.
void Loading::JudgeDescribed(FastLoad& load) {
    if (load.m_Object == nullptr)
        return;
    const auto& entity = static_cast<const DescribedEntity&>(*load.m_Object);
    if (!m_File.m_Log.HasErrors()) {
        const std::string why = ExplainNoReturn(entity, GetBytes(), *m_File.m_Encoding);
        if (!why.empty())
            Fail(DiagnosticCode::Refused, {}, {}, why);
    }
    const bool isAllowed =
        CheckDoubts(entity, m_File.m_LayoutOrigin, !IsText(), m_Options.m_IsUnprovenAllowed, m_File.m_Log);
    if (!isAllowed && m_File.m_Readable == nullptr)
        m_File.m_Readable = std::move(load.m_Object);
    if (!isAllowed)
        load.m_Object.reset();
}

} // namespace

LoadedFile LoadFromBytes(std::string bytes, std::u16string_view path, const LoadOptions& options) {
    try {
        return Loading(std::move(bytes), path, options).Run();
    } catch (const std::bad_alloc&) {
        LoadedFile file;
        file.m_IsMemoryShort = true;
        return file;
    }
}

bool SaveToSink(const KindObject& object, ArchiveFormat format, FloatPrecision floats, ByteSink& sink) {
    NotingReportSink ignored;
    const Reporter reporter(ignored);
    try {
        FileArchiveSystem archives;
        archives.EnableChecksums(false);
        const FloatForm floatForm = floats == FloatPrecision::Exact ? FloatForm::Exact : FloatForm::SixDecimals;
        auto archive = archives.OpenForWriting(File::WriteToSink(u"", sink), format, floatForm);
        object.Save(*archive);
        archives.Release(std::move(archive));
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

std::optional<std::string> SaveToBytes(const KindObject& object, ArchiveFormat format, FloatPrecision floats) {
    MemorySink sink;
    return SaveToSink(object, format, floats, sink) ? std::optional(std::move(sink.m_Bytes)) : std::nullopt;
}

} // namespace Corvid
