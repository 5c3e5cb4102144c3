#include "Engine/Layout/RecordPlan.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace Corvid {

namespace {

// The least that a value takes in binary, in bytes, in the order of LayoutKind.
constexpr unsigned kSmallestSizes[] = {
    1,  // Bool
    4,  // Int
    8,  // Int64
    4,  // Float
    8,  // Double
    4,  // String
    4,  // Word
    16, // Color
    12, // Vector3
    16, // Vector4
    8,  // Pair
    16, // Rect
    36, // Matrix33
    64, // Matrix44
    4,  // Count
};

bool HasLabel(LayoutKind kind) {
    return kind != LayoutKind::Use && kind != LayoutKind::When;
}

} // namespace

bool PlannedCondition::Holds(std::span<const ConditionSlot> slots, const std::u16string& units) const {
    const auto found =
        std::find_if(m_Slots.begin(), m_Slots.end(), [slots](auto slot) { return slots[slot].m_IsThere; });
    if (found == m_Slots.end())
        return m_IsNegated;
    const ConditionSlot& slot = slots[*found];
    if (m_Words.empty())
        return slot.m_Bool != m_IsNegated;
    const std::u16string_view word = units.c_str() + slot.m_Units;
    return (std::find(m_Words.begin(), m_Words.end(), word) != m_Words.end()) != m_IsNegated;
}

RecordPlan::RecordPlan(Layout layout) : m_Layout(std::move(layout)) {
    const ConditionFields fields(m_Layout);
    const LayoutIndex size = m_Layout.GetSize();
    std::vector<bool> isAskedFor(size, false);
    const auto ask = [&](LayoutIndex when, const LayoutCondition& condition) {
        for (const LayoutIndex candidate : fields.CandidatesOf(when, condition.m_Field))
            isAskedFor[candidate] = true;
    };
    for (LayoutIndex index = 0; index < size; ++index) {
        ask(index, m_Layout[index].m_Condition);
        for (const LayoutCondition& condition : m_Layout[index].m_Doubt.m_Alternatives)
            ask(index, condition);
    }
    m_Steps.reserve(size);
    for (LayoutIndex index = 0; index < size; ++index) {
        const LayoutNode& node = m_Layout[index];
        const bool hasLabel = HasLabel(node.m_Kind);
        Step& step = m_Steps.emplace_back(Step{
            node.m_Kind, node.m_End, OwnedLabel(hasLabel ? std::string_view(node.m_Label) : "-"), kNone, kNone, 0});
        if (isAskedFor[index])
            step.m_Slot = m_SlotCount++;
        if (node.m_Kind == LayoutKind::String || node.m_Kind == LayoutKind::Word) {
            step.m_Capacity = node.m_Capacity > 0 ? node.m_Capacity : kStringCapacity;
            m_BufferSize = std::max(m_BufferSize, step.m_Capacity);
        }
    }
    for (LayoutIndex index = 0; index < size; ++index) {
        if (m_Steps[index].m_Kind == LayoutKind::Count)
            AddList(index);
        else if (m_Steps[index].m_Kind == LayoutKind::When)
            AddWhen(index, fields);
    }
}

PlannedCondition RecordPlan::Plan(LayoutIndex when, const LayoutCondition& condition,
                                  const ConditionFields& fields) const {
    PlannedCondition planned{{}, condition.m_Words, condition.m_IsNegated};
    for (const LayoutIndex candidate : fields.CandidatesOf(when, condition.m_Field))
        planned.m_Slots.push_back(m_Steps[candidate].m_Slot);
    return planned;
}

void RecordPlan::AddList(LayoutIndex index) {
    List list;
    for (LayoutIndex inner = index + 1; inner < m_Layout[index].m_End;) {
        const LayoutNode& node = m_Layout[inner];
        if (node.m_Kind == LayoutKind::When) {
            inner = node.m_End;
            continue;
        }
        if (HasLabel(node.m_Kind))
            list.m_Smallest.m_LabelLetters += node.m_Label.size();
        if (node.m_Kind <= LayoutKind::Count)
            list.m_Smallest.m_BinaryBytes += kSmallestSizes[static_cast<std::size_t>(node.m_Kind)];
        inner = node.m_Kind == LayoutKind::Count ? node.m_End : inner + 1;
    }
    // The labels of one element, each once.
    std::vector<std::string_view> texts;
    for (LayoutIndex inner = index + 1; inner < m_Layout[index].m_End;) {
        const LayoutNode& node = m_Layout[inner];
        if (!HasLabel(node.m_Kind)) {
            ++inner;
            continue;
        }
        if (std::find(texts.begin(), texts.end(), node.m_Label) == texts.end()) {
            texts.push_back(node.m_Label);
            list.m_ElementLabels.push_back(m_Steps[inner].m_Label);
        }
        inner = node.m_End;
    }
    m_Steps[index].m_Extra = static_cast<std::uint32_t>(m_Lists.size());
    m_Lists.push_back(std::move(list));
}

void RecordPlan::AddWhen(LayoutIndex index, const ConditionFields& fields) {
    const LayoutNode& node = m_Layout[index];
    When when{Plan(index, node.m_Condition, fields), node.m_Condition.m_Field == kNoLayoutIndex, u"-", 0, 0};
    bool isFirst = true;
    bool isFirstSlot = true;
    for (LayoutIndex inner = index + 1; inner < node.m_End; ++inner) {
        const Step& step = m_Steps[inner];
        if (isFirst && HasLabel(step.m_Kind)) {
            when.m_FirstLabel = step.m_Label;
            isFirst = false;
        }
        if (step.m_Slot == kNone)
            continue;
        if (isFirstSlot)
            when.m_FirstSlot = step.m_Slot;
        isFirstSlot = false;
        when.m_EndSlot = step.m_Slot + 1;
    }
    m_Steps[index].m_Extra = static_cast<std::uint32_t>(m_Whens.size());
    m_Whens.push_back(std::move(when));
}

} // namespace Corvid
