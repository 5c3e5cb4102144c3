#include "Corvid/Values/ValueTree.h"

#include <algorithm>
#include <bit>

namespace Corvid {

namespace {

constexpr std::uint32_t kLabelBits = 0xFFFFFF; // of a node; no layout comes near so many labels

std::size_t FloatCount(ValueKind kind) {
    switch (kind) {
    case ValueKind::Vector3:
        return 3;
    case ValueKind::Color:
    case ValueKind::Vector4:
        return 4;
    case ValueKind::Matrix33:
        return 9;
    case ValueKind::Matrix44:
        return 16;
    default:
        return 0;
    }
}

} // namespace

float ValueTree::GetFloat(const ValueNode& node) const {
    return std::bit_cast<float>(static_cast<std::uint32_t>(node.m_Bits));
}

double ValueTree::GetDouble(const ValueNode& node) const {
    return std::bit_cast<double>(node.m_Bits);
}

std::u16string_view ValueTree::GetString(const ValueNode& node) const {
    return m_Units.c_str() + node.m_Bits;
}

std::span<const float> ValueTree::GetFloats(const ValueNode& node) const {
    return {m_Floats.data() + node.m_Bits, FloatCount(node.m_Kind)};
}

std::span<const std::int32_t> ValueTree::GetInts(const ValueNode& node) const {
    return {m_Ints.data() + node.m_Bits, node.m_Kind == ValueKind::Rect ? std::size_t{4} : std::size_t{2}};
}

// A list keeps its count in the low half of its bits and the place of its labels in the high one.
std::span<const std::uint32_t> ValueTree::GetElementLabels(const ValueNode& list) const {
    const std::size_t place = list.m_Bits >> 32;
    return {m_ElementLabels.data() + place + 1, m_ElementLabels[place]};
}

void ValueTree::AddFloat(TreeLabel label, float value) {
    Add(ValueKind::Float, label, std::bit_cast<std::uint32_t>(value));
}

void ValueTree::AddDouble(TreeLabel label, double value) {
    Add(ValueKind::Double, label, std::bit_cast<std::uint64_t>(value));
}

void ValueTree::AddString(TreeLabel label, std::u16string_view value) {
    Add(ValueKind::String, label, m_Units.size());
    m_Units.append(value).push_back(0);
}

void ValueTree::AddFloats(ValueKind kind, TreeLabel label, std::span<const float> values) {
    Add(kind, label, m_Floats.size());
    m_Floats.insert(m_Floats.end(), values.begin(), values.end());
}

void ValueTree::AddInts(ValueKind kind, TreeLabel label, std::span<const std::int32_t> values) {
    Add(kind, label, m_Ints.size());
    m_Ints.insert(m_Ints.end(), values.begin(), values.end());
}

void ValueTree::EndRecord() {
    const ValueIndex record = m_Open.back();
    NameLists(record + 1, GetSize());
    End();
    m_NextLabel = m_Nodes[record].m_Label; // of the next element, if this is one
}

void ValueTree::BeginList(std::span<const std::string_view> elementLabels) {
    const ValueIndex index = GetSize() - 1;
    m_LastList = index;
    m_Nodes[index].m_Kind = ValueKind::List;
    m_Nodes[index].m_Bits =
        static_cast<std::uint32_t>(m_Nodes[index].m_Bits) | static_cast<std::uint64_t>(m_ElementLabels.size()) << 32;
    m_ElementLabels.push_back(static_cast<std::uint32_t>(elementLabels.size()));
    for (const std::string_view label : elementLabels)
        m_ElementLabels.push_back(LabelNumber(label));
    Begin(index);
}

void ValueTree::SetCount(ValueIndex list, std::int32_t count) {
    std::uint64_t& bits = m_Nodes[list].m_Bits;
    bits = (bits >> 32 << 32) | static_cast<std::uint32_t>(count);
}

void ValueTree::Finish() {
    while (!m_Open.empty()) {
        if (m_Nodes[m_Open.back()].m_Kind == ValueKind::Record)
            EndRecord();
        else
            End();
    }
    NameLists(0, GetSize());
}

ValueIndex ValueTree::Add(ValueKind kind, TreeLabel label, std::uint64_t bits) {
    const ValueIndex index = GetSize();
    const std::uint32_t number = label.m_Text.empty() ? label.m_Number : LabelNumber(label.m_Text);
    m_NextLabel = number + 1;
    ValueNode& node = m_Nodes.emplace_back();
    node.m_Kind = kind;
    node.m_Label = number & kLabelBits;
    node.m_End = index + 1;
    node.m_Bits = bits;
    return index;
}

void ValueTree::End() {
    m_Nodes[m_Open.back()].m_End = GetSize();
    m_Open.pop_back();
}

// Marks the lists among the fields from `first` to `end` that share an element label with another one.
void ValueTree::NameLists(ValueIndex first, ValueIndex end) {
    if (m_LastList < first)
        return; // most records have none
    std::vector<ValueIndex> lists;
    for (ValueIndex index = first; index < end; index = m_Nodes[index].m_End) {
        if (m_Nodes[index].m_Kind == ValueKind::List)
            lists.push_back(index);
    }
    std::unordered_map<std::uint32_t, ValueIndex> owners;
    for (const ValueIndex list : lists) {
        for (const std::uint32_t label : GetElementLabels(m_Nodes[list])) {
            const auto [owner, isFirst] = owners.emplace(label, list);
            if (!isFirst && owner->second != list)
                m_Nodes[list].m_IsNamedByCount = m_Nodes[owner->second].m_IsNamedByCount = true;
        }
    }
}

std::uint32_t ValueTree::LabelNumber(std::string_view label) {
    return m_NextLabel < m_Labels.size() && m_Labels[m_NextLabel] == label ? m_NextLabel : FindLabel(label);
}

std::uint32_t ValueTree::FindLabel(std::string_view label) {
    const auto found = m_LabelIndices.find(label);
    if (found != m_LabelIndices.end())
        return found->second;
    const auto index = static_cast<std::uint32_t>(m_Labels.size());
    m_Labels.emplace_back(label);
    m_LabelIndices.emplace(std::string(label), index);
    return index;
}

} // namespace Corvid
