#include "Engine/Layout/LayoutText.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "Engine/Archive/OwnedLabel.h"
#include "Engine/Layout/LayoutLine.h"
#include "Engine/Layout/LayoutParser.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

// Places of conditions count from the start of their range; one outside of it is no part of the range.
bool AreConditionsSame(const LayoutCondition& a, LayoutIndex aFirst, const LayoutCondition& b, LayoutIndex bFirst) {
    const bool isAnywhere = a.m_Field != kNoLayoutIndex && b.m_Field != kNoLayoutIndex;
    return (isAnywhere ? a.m_Field - aFirst == b.m_Field - bFirst : a.m_Field == b.m_Field) && a.m_Words == b.m_Words &&
           a.m_IsNegated == b.m_IsNegated;
}

bool AreDoubtsSame(const LayoutDoubt& a, LayoutIndex aFirst, const LayoutDoubt& b, LayoutIndex bFirst) {
    return a.m_SeenNumbers == b.m_SeenNumbers && a.m_IsOfWidth == b.m_IsOfWidth && a.m_SeenBools == b.m_SeenBools &&
           std::equal(a.m_Alternatives.begin(), a.m_Alternatives.end(), b.m_Alternatives.begin(),
                      b.m_Alternatives.end(), [aFirst, bFirst](const auto& one, const auto& other) {
                          return AreConditionsSame(one, aFirst, other, bFirst);
                      });
}

// Whether all conditions of the range refer to fields of the range.
bool StandsAlone(const Layout& layout, LayoutIndex first, LayoutIndex end) {
    const auto isInside = [first, end](const LayoutCondition& condition) {
        return condition.m_Field == kNoLayoutIndex || (condition.m_Field >= first && condition.m_Field < end);
    };
    for (LayoutIndex index = first; index < end; ++index) {
        const auto& alternatives = layout[index].m_Doubt.m_Alternatives;
        if (!isInside(layout[index].m_Condition) || !std::all_of(alternatives.begin(), alternatives.end(), isInside))
            return false;
    }
    return true;
}

class LayoutWriter {
public:
    LayoutWriter(const Layout& layout, const LayoutBlocks& blocks, const LayoutComments& comments)
        : m_Layout(layout), m_Blocks(blocks), m_Comments(comments) {}

    std::string Write() {
        m_Text = m_Layout.IsAssumed() ? "layout 1 assumed\n" : "layout 1\n";
        for (const std::string& comment : m_Comments.m_Head)
            m_Text += "# " + comment + '\n';
        NameRecords(0, m_Layout.GetSize());
        m_Text += "entity " + LayoutWord(m_Layout.GetName()) + '\n';
        WriteFields(0, m_Layout.GetSize(), 1);
        return std::move(m_Text);
    }

private:
    bool IsBlock(LayoutIndex index) const {
        const Layout* const block = m_Blocks.Find(m_Layout[index].m_Name);
        return block != nullptr &&
               AreNodesSame(*block, 0, block->GetSize(), m_Layout, index + 1, m_Layout[index].m_End);
    }

    // Writes the named records, inner ones first.
    void NameRecords(LayoutIndex first, LayoutIndex end) {
        for (LayoutIndex index = first; index < end; ++index) {
            const LayoutNode& node = m_Layout[index];
            if (node.m_Kind == LayoutKind::Use && IsBlock(index)) {
                index = node.m_End - 1;
                continue;
            }
            if (node.m_Kind != LayoutKind::Record || node.m_Name.empty() || m_Records.contains(node.m_Name) ||
                m_Blocks.Find(node.m_Name) != nullptr || !OwnedLabel::IsLabel(node.m_Name) ||
                !StandsAlone(m_Layout, index + 1, node.m_End))
                continue;
            NameRecords(index + 1, node.m_End);
            m_Records.emplace(node.m_Name, index);
            m_Text += "record " + LayoutWord(node.m_Name) + '\n';
            WriteFields(index + 1, node.m_End, 1);
            index = node.m_End - 1;
        }
    }

    bool IsNamed(LayoutIndex index) const {
        const LayoutNode& node = m_Layout[index];
        const auto found = m_Records.find(node.m_Name);
        return found != m_Records.end() && AreNodesSame(m_Layout, found->second + 1, m_Layout[found->second].m_End,
                                                        m_Layout, index + 1, node.m_End);
    }

    void WriteFields(LayoutIndex first, LayoutIndex end, std::size_t depth) {
        for (LayoutIndex index = first; index < end; index = m_Layout[index].m_End) {
            const LayoutNode& node = m_Layout[index];
            if (node.m_Kind == LayoutKind::Use && !IsBlock(index)) {
                WriteFields(index + 1, node.m_End, depth);
                continue;
            }
            m_Text.append(depth, '\t');
            bool isNested = node.m_Kind == LayoutKind::Count || node.m_Kind == LayoutKind::When;
            if (node.m_Kind == LayoutKind::Use) {
                m_Text += "use " + LayoutWord(node.m_Name);
            } else if (node.m_Kind == LayoutKind::When) {
                WriteWhen(node);
            } else {
                m_Text += LayoutWord(node.m_Label);
                if (node.m_Kind != LayoutKind::Record)
                    m_Text.append(" ").append(WordOf(node.m_Kind));
                else if (IsNamed(index))
                    m_Text += " record " + LayoutWord(node.m_Name);
                else
                    isNested = true;
                WriteWords(node.m_Words);
                WriteDoubt(node);
            }
            const auto comment = m_Comments.m_Fields.find(index);
            if (comment != m_Comments.m_Fields.end())
                m_Text += " # " + comment->second;
            m_Text += '\n';
            if (isNested)
                WriteFields(index + 1, node.m_End, depth + 1);
        }
    }

    void WriteWords(const std::vector<std::u16string>& words) {
        for (const std::u16string& word : words)
            m_Text += ' ' + QuotedLayoutWord(ToUtf8(word));
    }

    void WriteDoubt(const LayoutNode& node) {
        if (!node.m_IsDoubtful)
            return;
        m_Text += " ?";
        if (node.m_Doubt.m_IsOfWidth)
            m_Text.append(" ").append(WordOf(node.m_Kind == LayoutKind::Int ? LayoutKind::Int64 : LayoutKind::Int));
        for (const std::int32_t number : node.m_Doubt.m_SeenNumbers)
            m_Text += ' ' + std::to_string(number);
        for (const bool value : node.m_Doubt.m_SeenBools)
            m_Text += value ? " TRUE" : " FALSE";
    }

    // Conditions without words first: behind words, a label in quotes would be one of them.
    void WriteWhen(const LayoutNode& node) {
        m_Text += "when";
        if (node.m_Condition.m_Field != kNoLayoutIndex)
            WriteCondition(node.m_Condition);
        if (!node.m_IsDoubtful)
            return;
        m_Text += " ?";
        for (const bool hasWords : {false, true}) {
            for (const LayoutCondition& condition : node.m_Doubt.m_Alternatives) {
                if (condition.m_Words.empty() != hasWords)
                    WriteCondition(condition);
            }
        }
    }

    void WriteCondition(const LayoutCondition& condition) {
        m_Text += condition.m_IsNegated ? " not " : " ";
        m_Text += LayoutWord(m_Layout[condition.m_Field].m_Label);
        if (condition.m_Words.empty())
            return;
        m_Text += " =";
        WriteWords(condition.m_Words);
    }

    const Layout& m_Layout;
    const LayoutBlocks& m_Blocks;
    const LayoutComments& m_Comments;
    std::map<std::string, LayoutIndex, std::less<>> m_Records; // where each named one stands first
    std::string m_Text;
};

} // namespace

bool AreNodesSame(const Layout& a, LayoutIndex aFirst, LayoutIndex aEnd, const Layout& b, LayoutIndex bFirst,
                  LayoutIndex bEnd) {
    if (aEnd - aFirst != bEnd - bFirst)
        return false;
    for (LayoutIndex i = 0; i < aEnd - aFirst; ++i) {
        const LayoutNode& one = a[aFirst + i];
        const LayoutNode& other = b[bFirst + i];
        if (one.m_Kind != other.m_Kind || one.m_Label != other.m_Label || one.m_Name != other.m_Name ||
            one.m_Words != other.m_Words || one.m_IsDoubtful != other.m_IsDoubtful ||
            one.m_End - aFirst != other.m_End - bFirst ||
            !AreConditionsSame(one.m_Condition, aFirst, other.m_Condition, bFirst) ||
            !AreDoubtsSame(one.m_Doubt, aFirst, other.m_Doubt, bFirst))
            return false;
    }
    return true;
}

std::string WriteLayoutText(const Layout& layout, const LayoutBlocks& blocks, const LayoutComments& comments) {
    return LayoutWriter(layout, blocks, comments).Write();
}

} // namespace Corvid
