#include "Engine/Layout/Infer/DraftLayout.h"

#include <algorithm>
#include <cstddef>

#include "Engine/Layout/Infer/BlockRuns.h"

namespace Corvid {

namespace {

// Adds the nodes of one layout, in order.
class DraftWriter {
public:
    DraftWriter(const LayoutBlocks& blocks, bool isAssumed, const Layout* known)
        : m_Blocks(blocks), m_IsAssumed(isAssumed), m_Known(known) {}

    DraftLayout Write(RecordDraft& draft, const std::string& name) {
        FindDeciders(draft);
        AddRecord(draft);
        m_Result.m_Layout = m_Builder.Finish(name, m_IsAssumed);
        m_Result.m_Fields.resize(m_Result.m_Layout.GetSize());
        m_Result.m_Whens.resize(m_Result.m_Layout.GetSize());
        return std::move(m_Result);
    }

private:
    LayoutIndex Add(LayoutKind kind, std::string_view label, DraftField* field) {
        const LayoutIndex node = m_Builder.Add(kind, label);
        m_Result.m_Fields.resize(node + 1);
        m_Result.m_Fields[node] = field;
        if (field != nullptr)
            field->m_Node = node;
        return node;
    }

    void FindDeciders(const RecordDraft& record);
    bool IsDecider(const DraftField& field) const {
        return std::find(m_Deciders.begin(), m_Deciders.end(), &field) != m_Deciders.end();
    }
    void AddRecord(RecordDraft& record);
    void AddBlock(RecordDraft& record, std::uint32_t first, const Layout& block, LayoutIndex node, LayoutIndex end);
    std::uint32_t AddField(RecordDraft& record, std::uint32_t index);
    std::uint32_t FindLoneElement(const RecordDraft& record, std::uint32_t index) const;
    void AddValue(DraftField& field);
    void AddWhen(DraftWhen& when);
    bool Translate(const DraftCondition& condition, LayoutCondition& translated) const;

    const LayoutBlocks& m_Blocks;
    bool m_IsAssumed;
    const Layout* m_Known;
    LayoutBuilder m_Builder;
    DraftLayout m_Result;
    std::vector<const DraftField*> m_Deciders; // on which conditions stand
};

void DraftWriter::FindDeciders(const RecordDraft& record) {
    for (const DraftField& field : record.m_Fields) {
        for (const DraftWhen& when : field.m_Whens) {
            if (!when.IsUnknown())
                m_Deciders.push_back(&when.m_Condition.m_Record->m_Fields[when.m_Condition.m_Field]);
            for (const DraftCondition& other : when.m_Alternatives)
                m_Deciders.push_back(&other.m_Record->m_Fields[other.m_Field]);
        }
        if (field.m_Inner != nullptr)
            FindDeciders(*field.m_Inner);
    }
}

bool DraftWriter::Translate(const DraftCondition& condition, LayoutCondition& translated) const {
    const DraftField& field = condition.m_Record->m_Fields[condition.m_Field];
    translated.m_Field = m_Builder.FindEarlier(field.m_Label);
    translated.m_Words = condition.m_Words;
    translated.m_IsNegated = condition.m_IsNegated;
    return translated.m_Field == field.m_Node && field.m_Node != kNoLayoutIndex;
}

void DraftWriter::AddWhen(DraftWhen& when) {
    LayoutCondition condition;
    std::vector<LayoutCondition> alternatives;
    bool isWhole = true;
    if (!when.IsUnknown() && !Translate(when.m_Condition, condition))
        condition = {};
    for (const DraftCondition& other : when.m_Alternatives)
        isWhole = Translate(other, alternatives.emplace_back()) && isWhole;
    const LayoutIndex index = Add(LayoutKind::When, {}, nullptr);
    LayoutNode& node = m_Builder.GetNode(index);
    node.m_IsDoubtful = when.IsDoubtful() || condition.m_Field == kNoLayoutIndex;
    node.m_Condition = std::move(condition);
    if (isWhole && !when.IsThin() && !when.m_IsUncertain && node.m_Condition.m_Field != kNoLayoutIndex)
        node.m_Doubt.m_Alternatives = std::move(alternatives);
    m_Result.m_Whens.resize(index + 1);
    m_Builder.Begin();
}

void DraftWriter::AddBlock(RecordDraft& record, std::uint32_t first, const Layout& block, LayoutIndex node,
                           LayoutIndex end) {
    for (; node < end; node = block[node].m_End, ++first) {
        DraftField& field = record.m_Fields[first];
        LayoutNode copy = block[node];
        LayoutNode& added = m_Builder.GetNode(Add(copy.m_Kind, copy.m_Label, &field));
        copy.m_End = added.m_End;
        copy.m_Parent = added.m_Parent;
        added = copy;
        if (copy.m_Kind == LayoutKind::Record) {
            m_Builder.Begin();
            AddBlock(*field.m_Inner, 0, block, node + 1, block[node].m_End);
            m_Builder.End();
        }
    }
}

LayoutKind UsualKindOf(const DraftField& field) {
    return field.m_Usual.has_value() && field.m_Kinds.Has(*field.m_Usual) ? *field.m_Usual : LikelyKind(field.m_Kinds);
}

void DraftWriter::AddValue(DraftField& field) {
    const LayoutKind kind = field.m_IsWord ? LayoutKind::Word : UsualKindOf(field);
    LayoutNode& node = m_Builder.GetNode(Add(kind, field.m_Label, &field));
    if (kind == LayoutKind::Word)
        node.m_Words = field.m_Words;
    if (field.m_IsBuiltIn)
        return;
    if (kind == LayoutKind::Bool) {
        node.m_IsDoubtful = !(field.m_WasSeen[0] && field.m_WasSeen[1]);
        if (node.m_IsDoubtful)
            node.m_Doubt.m_SeenBools.push_back(field.m_WasSeen[1]);
        return;
    }
    if (!kNumberKinds.Has(kind))
        return;
    if (field.m_IsWidthOpen && field.m_Kinds == KindSet{LayoutKind::Int, LayoutKind::Int64}) {
        node.m_IsDoubtful = true;
        node.m_Doubt.m_IsOfWidth = true;
        if (field.m_Numbers == std::vector<std::int32_t>{0})
            node.m_Doubt.m_SeenNumbers = field.m_Numbers;
        return;
    }
    node.m_IsDoubtful = m_IsAssumed
                            ? (field.m_Kinds.Has(LayoutKind::Color) && !field.m_Kinds.IsOne()) || field.IsLikelyDouble()
                            : !field.m_Kinds.IsOne();
    const bool isKnown = field.m_Known != kNoLayoutIndex;
    const bool mayCount = isKnown ? (*m_Known)[field.m_Known].m_Kind == LayoutKind::Count : !m_IsAssumed;
    if (kind == LayoutKind::Int && !node.m_IsDoubtful && mayCount && field.m_Numbers.size() == 1 &&
        field.m_Numbers[0] == 0) {
        // Four bytes that were always 0: they may count something that nobody has seen.
        node.m_Kind = LayoutKind::Count;
        node.m_IsDoubtful = true;
        node.m_Doubt.m_SeenNumbers = field.m_Numbers;
    }
}

// Of an integer that was always 1: the field that stands right behind it, always, so that it may count that.
std::uint32_t DraftWriter::FindLoneElement(const RecordDraft& record, std::uint32_t index) const {
    const DraftField& field = record.m_Fields[index];
    if (m_IsAssumed || field.m_Known != kNoLayoutIndex || field.m_IsBuiltIn || field.m_Shape != DraftShape::Value ||
        field.m_Numbers.size() != 1 || field.m_Numbers[0] != 1 || !(field.m_Kinds == KindSet{LayoutKind::Int}) ||
        index + 1 == record.m_Fields.size() || IsDecider(field))
        return kNone;
    const DraftField& next = record.m_Fields[index + 1];
    if (next.m_IsBuiltIn || next.m_Whens != field.m_Whens || IsDecider(next))
        return kNone;
    for (std::size_t i = 0; i < field.m_Tokens.size(); ++i) {
        const bool isBehind =
            field.m_Tokens[i] == kNone ? next.m_Tokens[i] == kNone : next.m_Tokens[i] == field.m_Tokens[i] + 1;
        if (!isBehind)
            return kNone;
    }
    return index + 1;
}

// Returns the index of the field behind what was added.
std::uint32_t DraftWriter::AddField(RecordDraft& record, std::uint32_t index) {
    DraftField& field = record.m_Fields[index];
    if (FindLoneElement(record, index) != kNone) {
        LayoutNode& node = m_Builder.GetNode(Add(LayoutKind::Count, field.m_Label, &field));
        node.m_IsDoubtful = true;
        node.m_Doubt.m_SeenNumbers = field.m_Numbers;
        m_Builder.Begin();
        const std::uint32_t end = AddField(record, index + 1);
        m_Builder.End();
        return end;
    }
    if (field.m_Shape == DraftShape::Value) {
        AddValue(field);
        return index + 1;
    }
    const bool isList = field.m_Shape == DraftShape::List;
    LayoutNode& node = m_Builder.GetNode(Add(isList ? LayoutKind::Count : LayoutKind::Record, field.m_Label, &field));
    if (!isList && field.m_Known != kNoLayoutIndex)
        node.m_Name = (*m_Known)[field.m_Known].m_Name;
    if (isList && field.m_IsUnproven) {
        node.m_IsDoubtful = true;
        node.m_Doubt.m_SeenNumbers = field.m_Numbers;
    }
    m_Builder.Begin();
    AddRecord(*field.m_Inner);
    m_Builder.End();
    return index + 1;
}

void DraftWriter::AddRecord(RecordDraft& record) {
    std::vector<DraftWhen> open;
    std::vector<LayoutIndex> openNodes;
    std::uint32_t index = 0;
    while (index < record.m_Fields.size()) {
        std::vector<DraftWhen>& whens = record.m_Fields[index].m_Whens;
        std::size_t shared = 0;
        while (shared < open.size() && shared < whens.size() && open[shared] == whens[shared])
            ++shared;
        while (open.size() > shared) {
            m_Builder.End();
            open.pop_back();
            openNodes.pop_back();
        }
        while (open.size() < whens.size()) {
            openNodes.push_back(static_cast<LayoutIndex>(m_Result.m_Fields.size()));
            AddWhen(whens[open.size()]);
            open.push_back(whens[open.size()]);
        }
        const std::uint32_t first = index;
        const BlockRun run = record.m_Fields[index].m_IsBuiltIn ? FindBlock(record, index, m_Blocks) : BlockRun{};
        if (run.m_Block != nullptr) {
            m_Builder.GetNode(Add(LayoutKind::Use, {}, nullptr)).m_Name = run.m_Block->GetName();
            m_Builder.Begin();
            AddBlock(record, index, *run.m_Block, 0, run.m_Block->GetSize());
            m_Builder.End();
            index += run.m_Size;
        } else {
            index = AddField(record, index);
        }
        for (std::uint32_t added = first; added < index; ++added) {
            for (std::size_t level = 0; level < openNodes.size(); ++level)
                m_Result.m_Whens[openNodes[level]].push_back(&record.m_Fields[added].m_Whens[level]);
        }
    }
    while (!open.empty()) {
        m_Builder.End();
        open.pop_back();
    }
}

} // namespace

DraftLayout LayoutMaker::Make(RecordDraft& draft, bool isAssumed) const {
    return DraftWriter(m_Blocks, isAssumed, m_Known).Write(draft, m_TypeWord);
}

} // namespace Corvid
