#include "Corvid/Values/ValueTreeReader.h"

#include <algorithm>

#include "Engine/Archive/LabelText.h"

namespace Corvid {

// In a tree, the elements of a list follow its count just as they are read.
const ValueNode* ValueTreeReader::Take(Label label, ValueKind kind) {
    if (m_Next == m_Tree.GetSize())
        return nullptr;
    const ValueNode& node = m_Tree[m_Next];
    if (node.m_Kind != kind || m_Tree.GetLabel(node) != std::string_view(LabelText(label)))
        return nullptr;
    ++m_Next;
    return &node;
}

void ValueTreeReader::ReadColor(Label label, Color& value) {
    if (const ValueNode* node = Take(label, ValueKind::Color)) {
        const auto numbers = m_Tree.GetFloats(*node);
        value = {numbers[0], numbers[1], numbers[2], numbers[3]};
    }
}

void ValueTreeReader::ReadIntRect(Label label, IntRect& value) {
    if (const ValueNode* node = Take(label, ValueKind::Rect)) {
        const auto numbers = m_Tree.GetInts(*node);
        value = {numbers[0], numbers[1], numbers[2], numbers[3]};
    }
}

void ValueTreeReader::ReadIntPair(Label label, IntPair& value) {
    ReadIntPair(label, value.first, value.second);
}

void ValueTreeReader::ReadIntPair(Label label, std::int32_t& first, std::int32_t& second) {
    if (const ValueNode* node = Take(label, ValueKind::Pair)) {
        const auto numbers = m_Tree.GetInts(*node);
        first = numbers[0];
        second = numbers[1];
    }
}

void ValueTreeReader::ReadVector3(Label label, Vector3& value) {
    if (const ValueNode* node = Take(label, ValueKind::Vector3)) {
        const auto numbers = m_Tree.GetFloats(*node);
        value = {numbers[0], numbers[1], numbers[2]};
    }
}

void ValueTreeReader::ReadVector4(Label label, Vector4& value) {
    if (const ValueNode* node = Take(label, ValueKind::Vector4)) {
        const auto numbers = m_Tree.GetFloats(*node);
        value = {numbers[0], numbers[1], numbers[2], numbers[3]};
    }
}

void ValueTreeReader::ReadMatrix33(Label label, Matrix33& value) {
    if (const ValueNode* node = Take(label, ValueKind::Matrix33)) {
        const float* number = m_Tree.GetFloats(*node).data();
        for (int i = 0; i < 3; ++i, number += 3)
            value.GetRow(i) = {number[0], number[1], number[2]};
    }
}

void ValueTreeReader::ReadMatrix44(Label label, Matrix44& value) {
    if (const ValueNode* node = Take(label, ValueKind::Matrix44)) {
        const float* number = m_Tree.GetFloats(*node).data();
        for (int i = 0; i < 4; ++i, number += 4)
            value.GetRow(i) = {number[0], number[1], number[2], number[3]};
    }
}

void ValueTreeReader::ReadString(Label label, char16_t* buffer, int capacity) {
    const ValueNode* const node = capacity > 0 ? Take(label, ValueKind::String) : nullptr;
    if (node == nullptr)
        return;
    const std::u16string_view text = m_Tree.GetString(*node).substr(0, static_cast<std::size_t>(capacity - 1));
    *std::copy(text.begin(), text.end(), buffer) = 0;
}

void ValueTreeReader::ReadInt64(Label label, std::int64_t& value) {
    if (const ValueNode* node = Take(label, ValueKind::Int64))
        value = m_Tree.GetInt64(*node);
}

void ValueTreeReader::ReadBool(Label label, bool& value) {
    if (const ValueNode* node = Take(label, ValueKind::Bool))
        value = m_Tree.GetBool(*node);
}

void ValueTreeReader::ReadDouble(Label label, double& value) {
    if (const ValueNode* node = Take(label, ValueKind::Double))
        value = m_Tree.GetDouble(*node);
}

void ValueTreeReader::ReadFloat(Label label, float& value) {
    if (const ValueNode* node = Take(label, ValueKind::Float))
        value = m_Tree.GetFloat(*node);
}

void ValueTreeReader::ReadInt(Label label, std::int32_t& value) {
    const ValueNode* node = Take(label, ValueKind::Int);
    if (node == nullptr)
        node = Take(label, ValueKind::List);
    if (node != nullptr)
        value = m_Tree.GetInt(*node);
}

void ValueTreeReader::ReadInt(Label label, std::uint32_t& value) {
    auto number = static_cast<std::int32_t>(value);
    ReadInt(label, number);
    value = static_cast<std::uint32_t>(number);
}

void ValueTreeReader::ReadLabeledObject(Label label, Archivable& object, void* context) {
    const ValueNode* const node = Take(label, ValueKind::Record);
    if (node == nullptr)
        return;
    object.Load(*this, context);
    m_Next = node->m_End;
}

std::optional<bool> ValueTreeReader::IsNext(Label label) {
    return m_Next != m_Tree.GetSize() && m_Tree.GetLabel(m_Tree[m_Next]) == std::string_view(LabelText(label));
}

} // namespace Corvid
