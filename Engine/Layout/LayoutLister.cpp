#include "Engine/Layout/LayoutLister.h"

#include "Engine/Archive/LabelText.h"

namespace Corvid {

static_assert(static_cast<int>(LayoutKind::Matrix44) == static_cast<int>(FieldKind::Matrix44));

void LayoutLister::Value(Label label, const FieldShape& shape) {
    LayoutNode& node = m_Builder.GetNode(m_Builder.Add(static_cast<LayoutKind>(shape.m_Kind), LabelText(label)));
    node.m_Words.assign(shape.m_Words.begin(), shape.m_Words.end());
    node.m_IsInvalidAWord = shape.m_IsInvalidAWord;
    node.m_IsReserved = shape.m_IsReserved;
    node.m_Capacity = shape.m_Capacity;
    node.m_Asset = shape.m_Asset;
    node.m_Range = shape.m_Range;
}

void LayoutLister::BeginRecord(Label label, std::string_view name) {
    m_Builder.GetNode(m_Builder.Add(LayoutKind::Record, LabelText(label))).m_Name = name;
    m_Builder.Begin();
}

void LayoutLister::BeginBlock(std::string_view name) {
    m_Builder.GetNode(m_Builder.Add(LayoutKind::Use, {})).m_Name = name;
    m_Builder.Begin();
}

void LayoutLister::BeginList(Label countLabel, const ListShape& shape) {
    LayoutNode& node = m_Builder.GetNode(m_Builder.Add(LayoutKind::Count, LabelText(countLabel)));
    node.m_Capacity = shape.m_Capacity;
    node.m_SlotCount = shape.m_SlotCount;
    m_Builder.Begin();
}

void LayoutLister::BeginWhen(Label label, std::span<const EnumWord> words, bool isNegated) {
    LayoutCondition condition;
    condition.m_Field = m_Builder.FindEarlier(LabelText(label));
    condition.m_Words.assign(words.begin(), words.end());
    condition.m_IsNegated = isNegated;
    m_Builder.GetNode(m_Builder.Add(LayoutKind::When, {})).m_Condition = std::move(condition);
    m_Builder.Begin();
}

} // namespace Corvid
