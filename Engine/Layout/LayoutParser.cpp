#include "Engine/Layout/LayoutParser.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <utility>

#include "Engine/Archive/OwnedLabel.h"
#include "Engine/Layout/LayoutClauses.h"
#include "Engine/Layout/LayoutTokens.h"

namespace Corvid {

namespace {

// In the order of LayoutKind, up to Record.
constexpr std::string_view kKindWords[] = {"bool",     "int",      "int64",   "float",   "double", "string",
                                           "word",     "color",    "vector3", "vector4", "pair",   "rect",
                                           "matrix33", "matrix44", "count",   "record"};
static_assert(std::size(kKindWords) == static_cast<std::size_t>(LayoutKind::Record) + 1);

std::optional<LayoutKind> KindFromWord(std::string_view word) {
    const auto found = std::find(std::begin(kKindWords), std::end(kKindWords), word);
    if (found == std::end(kKindWords))
        return std::nullopt;
    return static_cast<LayoutKind>(found - std::begin(kKindWords));
}

// The definition that is being read, and where its lines can be nested.
struct Definition {
    bool m_IsEntity = false;
    std::string m_Name;
    LayoutBuilder m_Builder;
    std::vector<bool> m_Levels; // from the definition itself inwards: whether lines may be nested there
};

// The parsing of one text. A line that is wrong is left out, with all that is nested in it, so that one mistake is one
// error.
class Parser {
public:
    explicit Parser(const LayoutBlocks& blocks) : m_Blocks(blocks) {}

    ParsedLayout Parse(std::string_view text);

private:
    // A complete record or block, ready to be used.
    struct Used {
        std::size_t m_Size = 0;
        int m_Depth = 0; // nodes within each other
    };
    static Used Measure(const Layout& layout);

    void TakeLine(LayoutLine line);
    void TakeHeader();
    void BeginDefinition(bool isEntity);
    void EndDefinition();
    void TakeField();
    void TakeUse();
    void TakeWhen();
    void TakeLabelled();
    bool CheckName(const LayoutToken& token);
    bool CheckLabel(const LayoutToken& token);

    LayoutNode& Add(LayoutKind kind, std::string_view label, int column);
    bool Grow(std::size_t size, int depth, int column);
    bool UseNodes(const Layout& layout, int column);
    void Fail(int column, std::string message) { m_Line.Fail(column, std::move(message)); }

    const LayoutBlocks& m_Blocks;
    ParsedLayout m_Result;
    LayoutTokens m_Line{m_Result.m_Errors}; // that is being read
    bool m_HasHeader = false;
    bool m_IsAssumed = false;
    std::optional<Definition> m_Definition;
    std::map<std::string, Layout, std::less<>> m_Records;
    std::map<std::string, Used, std::less<>> m_Measured;

    int m_WrongDepth = -1; // lines deeper than this one belong to a wrong one; -1: none
    int m_FieldCount = 0;
    std::size_t m_Size = 0;
    bool m_IsStopped = false;
};

// Lines --------------------------------------------------------------------------------------------------------------

ParsedLayout Parser::Parse(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.size() > LayoutBounds::kMostBytes) {
        m_Result.m_Errors.push_back({1, 1, "the layout is larger than 1 MiB"});
        return std::move(m_Result);
    }
    if (text.starts_with(kByteOrderMark))
        text.remove_prefix(kByteOrderMark.size());
    int number = 0;
    while (!text.empty() && !m_IsStopped) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t errorCount = m_Result.m_Errors.size();
        TakeLine(SplitLayoutLine(line, ++number, m_Result.m_Errors));
        if (m_Result.m_Errors.size() > errorCount) {
            m_Result.m_Errors.resize(errorCount + 1); // one per line
            m_IsStopped |= m_Result.m_Errors.size() >= LayoutBounds::kMostErrors;
        }
    }
    m_Line.Begin({number + 1, 0, {}});
    const bool isEntity = m_Definition && m_Definition->m_IsEntity;
    if (m_Result.m_Errors.empty() && !m_HasHeader)
        Fail(1, "the layout is empty; its first line is 'layout 1'");
    else if (m_Result.m_Errors.empty() && !isEntity)
        Fail(1, "the layout has no 'entity', with the type word that it is for");
    if (m_Result.m_Errors.empty())
        EndDefinition();
    return std::move(m_Result);
}

void Parser::TakeLine(LayoutLine line) {
    m_Line.Begin(std::move(line));
    const int depth = m_Line.GetDepth();
    if (m_Line.IsAtEnd()) {
        if (!m_Result.m_Errors.empty() && m_Result.m_Errors.back().m_Line == m_Line.GetNumber())
            m_WrongDepth = depth;
        return;
    }
    if (m_WrongDepth >= 0 && depth > m_WrongDepth)
        return;
    m_WrongDepth = -1;
    if (!m_HasHeader) {
        TakeHeader();
    } else if (depth == 0) {
        if (m_Line.TakeIf("record"))
            BeginDefinition(false);
        else if (m_Line.TakeIf("entity"))
            BeginDefinition(true);
        else
            Fail(m_Line.GetColumn(), "here stands 'record' or 'entity'; fields are indented by a tab");
    } else if (!m_Definition) {
        Fail(m_Line.GetColumn(), "fields stand below a 'record' or 'entity'");
    } else if (static_cast<std::size_t>(depth) > m_Definition->m_Levels.size()) {
        Fail(m_Line.GetColumn(), "more tabs than one below the line above");
    } else {
        while (m_Definition->m_Levels.size() > static_cast<std::size_t>(depth)) {
            if (m_Definition->m_Levels.back())
                m_Definition->m_Builder.End();
            m_Definition->m_Levels.pop_back();
        }
        if (!m_Definition->m_Levels.back())
            Fail(m_Line.GetColumn(), "nothing can be nested in the line above");
        else
            TakeField();
    }
    if (m_Line.IsWrong())
        m_WrongDepth = depth;
}

void Parser::TakeHeader() {
    m_HasHeader = true;
    if (m_Line.GetDepth() != 0 || !m_Line.TakeIf("layout"))
        return Fail(m_Line.GetColumn(), "the first line is 'layout 1'");
    if (!m_Line.TakeIf("1"))
        return Fail(m_Line.GetColumn(),
                    m_Line.IsAtEnd() ? "the version is missing: 'layout 1'"
                                     : "unknown version " + QuotedForMessage(m_Line.Peek().m_Text) + "; known is 1");
    m_IsAssumed = m_Line.TakeIf("assumed");
    m_Line.ExpectEnd();
}

// Definitions --------------------------------------------------------------------------------------------------------

void Parser::BeginDefinition(bool isEntity) {
    if (m_Definition && m_Definition->m_IsEntity)
        return Fail(m_Line.GetFirstColumn(), isEntity ? "a second entity; a layout is for one type"
                                                      : "records stand above the entity that uses them");
    EndDefinition();
    // What stands below a wrong name is read all the same, as a definition that nobody can use.
    m_Definition.emplace();
    m_Definition->m_IsEntity = isEntity;
    m_Definition->m_Levels.push_back(true);
    if (m_Line.IsAtEnd())
        return Fail(m_Line.GetColumn(), isEntity ? "the type word is missing" : "the name of the record is missing");
    const LayoutToken& name = m_Line.Take();
    if (!CheckName(name) || !m_Line.ExpectEnd())
        return;
    if (!isEntity && m_Blocks.Find(name.m_Text) != nullptr)
        return Fail(name.m_Column,
                    QuotedForMessage(name.m_Text) + " is a block that is built in; give the record another name");
    if (!isEntity && m_Records.contains(name.m_Text))
        return Fail(name.m_Column, "a second record " + QuotedForMessage(name.m_Text));
    m_Definition->m_Name = name.m_Text;
}

void Parser::EndDefinition() {
    if (!m_Definition)
        return;
    Layout layout = m_Definition->m_Builder.Finish(m_Definition->m_Name, m_IsAssumed);
    if (m_Definition->m_IsEntity)
        m_Result.m_Layout = std::move(layout);
    else if (!m_Definition->m_Name.empty())
        m_Records.emplace(m_Definition->m_Name, std::move(layout));
    m_Definition.reset();
}

// Fields -------------------------------------------------------------------------------------------------------------

void Parser::TakeField() {
    if (++m_FieldCount > LayoutBounds::kMostFields) {
        m_IsStopped = true;
        return Fail(m_Line.GetColumn(), "more than 10,000 fields");
    }
    if (m_Line.TakeIf("use"))
        TakeUse();
    else if (m_Line.TakeIf("when"))
        TakeWhen();
    else
        TakeLabelled();
}

void Parser::TakeUse() {
    const int column = m_Line.GetFirstColumn();
    if (m_Line.IsAtEnd())
        return Fail(m_Line.GetColumn(), "the name of a built-in block is missing");
    const LayoutToken& name = m_Line.Take();
    const Layout* const block = m_Blocks.Find(name.m_Text);
    if (block == nullptr) {
        std::vector<std::string_view> names;
        for (const auto& [known, layout] : m_Blocks)
            names.push_back(known);
        return Fail(name.m_Column,
                    "unknown block " + QuotedForMessage(name.m_Text) + SuggestionFor(name.m_Text, names));
    }
    if (!m_Line.ExpectEnd() || !Grow(1, 1, column))
        return;
    Add(LayoutKind::Use, {}, column).m_Name = name.m_Text;
    m_Definition->m_Levels.push_back(false);
    UseNodes(*block, name.m_Column);
}

void Parser::TakeWhen() {
    LayoutNode when;
    if (!m_Line.TakeIf("?")) {
        if (!TakeCondition(m_Line, m_Definition->m_Builder, when.m_Condition))
            return;
        when.m_IsDoubtful = m_Line.TakeIf("?");
        while (when.m_IsDoubtful && !m_Line.IsAtEnd()) {
            if (!TakeCondition(m_Line, m_Definition->m_Builder, when.m_Doubt.m_Alternatives.emplace_back()))
                return;
        }
    } else {
        when.m_IsDoubtful = true;
    }
    const int column = m_Line.GetFirstColumn();
    std::size_t size = 1 + when.m_Condition.m_Words.size() + when.m_Doubt.m_Alternatives.size();
    for (const LayoutCondition& condition : when.m_Doubt.m_Alternatives)
        size += condition.m_Words.size();
    if (!m_Line.ExpectEnd() || !Grow(size, 1, column))
        return;
    LayoutNode& node = Add(LayoutKind::When, {}, column);
    node.m_Condition = std::move(when.m_Condition);
    node.m_Doubt = std::move(when.m_Doubt);
    node.m_IsDoubtful = when.m_IsDoubtful;
    m_Definition->m_Builder.Begin();
    m_Definition->m_Levels.push_back(true);
}

void Parser::TakeLabelled() {
    const LayoutToken label = m_Line.Take();
    if (!CheckLabel(label))
        return;
    LayoutNode field;
    field.m_Kind = LayoutKind::Record;
    const Layout* record = nullptr;
    int nameColumn = 0;
    if (!m_Line.IsAtEnd()) {
        const LayoutToken& word = m_Line.Take();
        const auto kind = word.m_IsQuoted ? std::nullopt : KindFromWord(word.m_Text);
        if (!kind)
            return Fail(word.m_Column,
                        "unknown kind " + QuotedForMessage(word.m_Text) + SuggestionFor(word.m_Text, kKindWords));
        field.m_Kind = *kind;
        if (*kind == LayoutKind::Record) {
            nameColumn = m_Line.GetColumn();
            if (m_Line.IsAtEnd())
                return Fail(nameColumn, "the name of a record is missing; without 'record', its fields stand below");
            field.m_Name = m_Line.Take().m_Text;
            const auto found = m_Records.find(field.m_Name);
            if (found == m_Records.end()) {
                std::vector<std::string_view> names;
                for (const auto& [known, layout] : m_Records)
                    names.push_back(known);
                return Fail(nameColumn, "no record " + QuotedForMessage(field.m_Name) + " above this line" +
                                            SuggestionFor(field.m_Name, names));
            }
            record = &found->second;
        }
    }
    if (field.m_Kind == LayoutKind::Word && !TakeWords(m_Line, field.m_Words))
        return;
    if (!TakeDoubt(m_Line, field) || !m_Line.ExpectEnd())
        return;
    if (!Grow(1 + field.m_Words.size() + field.m_Doubt.m_SeenNumbers.size(), 1, label.m_Column))
        return;
    LayoutNode& node = Add(field.m_Kind, label.m_Text, label.m_Column);
    node.m_Name = std::move(field.m_Name);
    node.m_Words = std::move(field.m_Words);
    node.m_Doubt = std::move(field.m_Doubt);
    node.m_IsDoubtful = field.m_IsDoubtful;
    const bool isOpen = record == nullptr && (field.m_Kind == LayoutKind::Record || field.m_Kind == LayoutKind::Count);
    if (isOpen)
        m_Definition->m_Builder.Begin();
    m_Definition->m_Levels.push_back(isOpen);
    if (record != nullptr)
        UseNodes(*record, nameColumn);
}

// Bounds and errors --------------------------------------------------------------------------------------------------

Parser::Used Parser::Measure(const Layout& layout) {
    Used used;
    std::vector<LayoutIndex> ends;
    for (LayoutIndex index = 0; index < layout.GetSize(); ++index) {
        const LayoutNode& node = layout[index];
        while (!ends.empty() && ends.back() <= index)
            ends.pop_back();
        ends.push_back(node.m_End);
        used.m_Depth = std::max(used.m_Depth, static_cast<int>(ends.size()));
        used.m_Size += 1 + node.m_Words.size() + node.m_Condition.m_Words.size() + node.m_Doubt.m_SeenNumbers.size();
        for (const LayoutCondition& condition : node.m_Doubt.m_Alternatives)
            used.m_Size += 1 + condition.m_Words.size();
    }
    return used;
}

// Makes room for so much more, `depth` levels below the innermost one.
bool Parser::Grow(std::size_t size, int depth, int column) {
    if (static_cast<int>(m_Definition->m_Levels.size()) - 1 + depth > LayoutBounds::kMostDepth) {
        Fail(column, "more than 32 levels within each other");
        return false;
    }
    m_Size += size;
    if (m_Size > LayoutBounds::kMostSize) {
        m_IsStopped = true;
        Fail(column, "more than 100,000 fields and words, with those of all records that are used");
        return false;
    }
    return true;
}

LayoutNode& Parser::Add(LayoutKind kind, std::string_view label, int column) {
    LayoutNode& node = m_Definition->m_Builder.GetNode(m_Definition->m_Builder.Add(kind, label));
    node.m_Line = m_Line.GetNumber();
    node.m_Column = column;
    return node;
}

// Nests the fields of a record or block in the node that was added last.
bool Parser::UseNodes(const Layout& layout, int column) {
    const auto [measured, isNew] = m_Measured.try_emplace(layout.GetName());
    if (isNew)
        measured->second = Measure(layout);
    if (!Grow(measured->second.m_Size, measured->second.m_Depth, column))
        return false;
    m_Definition->m_Builder.Begin();
    m_Definition->m_Builder.AddAll(layout.GetNodes());
    m_Definition->m_Builder.End();
    return true;
}

// Names are what labels are, so that a name can become one.
bool Parser::CheckName(const LayoutToken& token) {
    if (!OwnedLabel::IsLabel(token.m_Text))
        Fail(token.m_Column, "a name has 1 to 127 characters of printable ASCII");
    return !m_Line.IsWrong();
}

bool Parser::CheckLabel(const LayoutToken& token) {
    if (!OwnedLabel::IsLabel(token.m_Text) || token.m_Text.front() == '[')
        Fail(token.m_Column,
             "a label has 1 to 127 characters of printable ASCII, the first of them neither a blank nor '['");
    else if (token.Is("layout") || token.Is("record") || token.Is("entity"))
        Fail(token.m_Column, "a label that is a directive is written in quotes: \"" + token.m_Text + '"');
    else if (token.Is("?"))
        Fail(token.m_Column, "a label that is '?' is written in quotes");
    return !m_Line.IsWrong();
}

} // namespace

ParsedLayout ParseLayout(std::string_view text, const LayoutBlocks& blocks) {
    return Parser(blocks).Parse(text);
}

std::string_view WordOf(LayoutKind kind) {
    return kind <= LayoutKind::Record ? kKindWords[static_cast<std::size_t>(kind)] : std::string_view();
}

} // namespace Corvid
