#include "Corvid/Values/ValueTreeWriter.h"

#include <algorithm>

#include "Engine/Archive/LabelText.h"

namespace Corvid {

void ValueTreeWriter::WriteColor(Label label, const Color& value) {
    const float numbers[] = {value.red, value.green, value.blue, value.alpha};
    m_Tree.AddFloats(ValueKind::Color, LabelOf(label), numbers);
}

void ValueTreeWriter::WriteIntRect(Label label, const IntRect& value) {
    const std::int32_t numbers[] = {value.x, value.y, value.width, value.height};
    m_Tree.AddInts(ValueKind::Rect, LabelOf(label), numbers);
}

void ValueTreeWriter::WriteIntPair(Label label, const IntPair& value) {
    WriteIntPair(label, value.first, value.second);
}

void ValueTreeWriter::WriteIntPair(Label label, std::int32_t first, std::int32_t second) {
    const std::int32_t numbers[] = {first, second};
    m_Tree.AddInts(ValueKind::Pair, LabelOf(label), numbers);
}

void ValueTreeWriter::WriteVector3(Label label, const Vector3& value) {
    const float numbers[] = {value.x, value.y, value.z};
    m_Tree.AddFloats(ValueKind::Vector3, LabelOf(label), numbers);
}

void ValueTreeWriter::WriteVector4(Label label, const Vector4& value) {
    const float numbers[] = {value.x, value.y, value.z, value.w};
    m_Tree.AddFloats(ValueKind::Vector4, LabelOf(label), numbers);
}

void ValueTreeWriter::WriteMatrix33(Label label, const Matrix33& value) {
    std::vector<float> numbers;
    for (int i = 0; i < 3; ++i)
        numbers.insert(numbers.end(), {value.GetRow(i).x, value.GetRow(i).y, value.GetRow(i).z});
    m_Tree.AddFloats(ValueKind::Matrix33, LabelOf(label), numbers);
}

void ValueTreeWriter::WriteMatrix44(Label label, const Matrix44& value) {
    std::vector<float> numbers;
    for (int i = 0; i < 4; ++i)
        numbers.insert(numbers.end(), {value.GetRow(i).x, value.GetRow(i).y, value.GetRow(i).z, value.GetRow(i).w});
    m_Tree.AddFloats(ValueKind::Matrix44, LabelOf(label), numbers);
}

void ValueTreeWriter::WriteString(Label label, const char16_t* value) {
    m_Tree.AddString(LabelOf(label), value);
}

void ValueTreeWriter::WriteInt64(Label label, std::int64_t value) {
    m_Tree.AddInt64(LabelOf(label), value);
}

void ValueTreeWriter::WriteBool(Label label, bool value) {
    m_Tree.AddBool(LabelOf(label), value);
}

void ValueTreeWriter::WriteDouble(Label label, double value) {
    m_Tree.AddDouble(LabelOf(label), value);
}

void ValueTreeWriter::WriteFloat(Label label, float value) {
    m_Tree.AddFloat(LabelOf(label), value);
}

void ValueTreeWriter::WriteInt(Label label, std::int32_t value) {
    m_Tree.AddInt(LabelOf(label), value);
}

void ValueTreeWriter::WriteInt(Label label, std::uint32_t value) {
    m_Tree.AddInt(LabelOf(label), static_cast<std::int32_t>(value)); // as every encoding shows it
}

void ValueTreeWriter::WriteObject(const Archivable& object) {
    object.Save(*this);
}

void ValueTreeWriter::WriteLabeledObject(Label label, const Archivable& object) {
    m_Tree.BeginRecord(LabelOf(label));
    object.Save(*this);
    m_Tree.EndRecord();
}

std::uint32_t ValueTreeWriter::NumberOf(Label label) {
    const std::uint32_t number = m_Tree.LabelNumber(LabelText(label));
    m_Words.resize(std::max<std::size_t>(m_Words.size(), number + 1));
    m_Words[number] = std::bit_cast<LabelWords>(label);
    return number;
}

void ValueTreeWriter::BeginList(Label, std::span<const Label> elementLabels) {
    const std::vector<LabelText> texts(elementLabels.begin(), elementLabels.end());
    const std::vector<std::string_view> labels(texts.begin(), texts.end());
    m_Tree.BeginList(labels);
}

} // namespace Corvid
