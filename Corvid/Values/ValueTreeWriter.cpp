#include "Corvid/Values/ValueTreeWriter.h"

#include <vector>

#include "Engine/Archive/LabelText.h"

namespace Corvid {

void ValueTreeWriter::WriteColor(Label label, const Color& value) {
    const float numbers[] = {value.red, value.green, value.blue, value.alpha};
    m_Tree.AddFloats(ValueKind::Color, LabelText(label), numbers);
}

void ValueTreeWriter::WriteIntRect(Label label, const IntRect& value) {
    const std::int32_t numbers[] = {value.x, value.y, value.width, value.height};
    m_Tree.AddInts(ValueKind::Rect, LabelText(label), numbers);
}

void ValueTreeWriter::WriteIntPair(Label label, const IntPair& value) {
    WriteIntPair(label, value.first, value.second);
}

void ValueTreeWriter::WriteIntPair(Label label, std::int32_t first, std::int32_t second) {
    const std::int32_t numbers[] = {first, second};
    m_Tree.AddInts(ValueKind::Pair, LabelText(label), numbers);
}

void ValueTreeWriter::WriteVector3(Label label, const Vector3& value) {
    const float numbers[] = {value.x, value.y, value.z};
    m_Tree.AddFloats(ValueKind::Vector3, LabelText(label), numbers);
}

void ValueTreeWriter::WriteVector4(Label label, const Vector4& value) {
    const float numbers[] = {value.x, value.y, value.z, value.w};
    m_Tree.AddFloats(ValueKind::Vector4, LabelText(label), numbers);
}

void ValueTreeWriter::WriteMatrix33(Label label, const Matrix33& value) {
    std::vector<float> numbers;
    for (int i = 0; i < 3; ++i)
        numbers.insert(numbers.end(), {value.GetRow(i).x, value.GetRow(i).y, value.GetRow(i).z});
    m_Tree.AddFloats(ValueKind::Matrix33, LabelText(label), numbers);
}

void ValueTreeWriter::WriteMatrix44(Label label, const Matrix44& value) {
    std::vector<float> numbers;
    for (int i = 0; i < 4; ++i)
        numbers.insert(numbers.end(), {value.GetRow(i).x, value.GetRow(i).y, value.GetRow(i).z, value.GetRow(i).w});
    m_Tree.AddFloats(ValueKind::Matrix44, LabelText(label), numbers);
}

void ValueTreeWriter::WriteString(Label label, const char16_t* value) {
    m_Tree.AddString(LabelText(label), value);
}

void ValueTreeWriter::WriteInt64(Label label, std::int64_t value) {
    m_Tree.AddInt64(LabelText(label), value);
}

void ValueTreeWriter::WriteBool(Label label, bool value) {
    m_Tree.AddBool(LabelText(label), value);
}

void ValueTreeWriter::WriteDouble(Label label, double value) {
    m_Tree.AddDouble(LabelText(label), value);
}

void ValueTreeWriter::WriteFloat(Label label, float value) {
    m_Tree.AddFloat(LabelText(label), value);
}

void ValueTreeWriter::WriteInt(Label label, std::int32_t value) {
    m_Tree.AddInt(LabelText(label), value);
}

void ValueTreeWriter::WriteInt(Label label, std::uint32_t value) {
    m_Tree.AddInt(LabelText(label), static_cast<std::int32_t>(value)); // as every encoding shows it
}

void ValueTreeWriter::WriteObject(const Archivable& object) {
    object.Save(*this);
}

void ValueTreeWriter::WriteLabeledObject(Label label, const Archivable& object) {
    m_Tree.BeginRecord(LabelText(label));
    object.Save(*this);
    m_Tree.EndRecord();
}

void ValueTreeWriter::BeginList(Label, std::span<const Label> elementLabels) {
    const std::vector<LabelText> texts(elementLabels.begin(), elementLabels.end());
    const std::vector<std::string_view> labels(texts.begin(), texts.end());
    m_Tree.BeginList(labels);
}

} // namespace Corvid
