#include "Corvid/Json/ValueJson.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>
#include <vector>

#include "Corvid/Json/Json.h"
#include "Corvid/Json/JsonWriter.h"
#include "Engine/Math/Color.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

Json JsonOfOdd(double value) {
    return std::string(std::signbit(value) ? "-" : "") + (std::isnan(value) ? "nan" : "inf");
}

// The double nearest to the shortest decimals of the float: it prints as just these, and reads back as the float.
Json JsonOfFloat(float value) {
    if (!std::isfinite(value))
        return JsonOfOdd(static_cast<double>(value));
    char text[32];
    const char* const end = std::to_chars(text, text + sizeof text, value).ptr;
    double shortest = 0.0;
    std::from_chars(text, end, shortest);
    return static_cast<float>(shortest) == value ? shortest : static_cast<double>(value);
}

Json JsonOfColor(std::span<const float> channels) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    const std::uint32_t packed = PackColor({channels[0], channels[1], channels[2], channels[3]});
    std::string text = "#";
    for (int shift = 28; shift >= 0; shift -= 4)
        text.push_back(kDigits[packed >> shift & 0xF]);
    return text;
}

// The members of an object, or an array's elements, go out as they are met: a large mesh takes many times its size as
// one value of the JSON library.
class ValueJsonWriter {
public:
    ValueJsonWriter(const ValueTree& tree, JsonLook look, ByteSink& sink)
        : m_Tree(tree), m_Labels(tree.GetLabelCount()), m_Out(look == JsonLook::Indented, sink) {}

    void Write() {
        WriteObject(0, m_Tree.GetSize());
        m_Out.Finish();
    }

private:
    void WriteObject(ValueIndex first, ValueIndex end);
    void WriteList(ValueIndex list);
    void WriteElements(ValueIndex list, std::uint32_t label);
    void WriteValue(ValueIndex index);
    void WriteFloats(std::span<const float> values);
    void WriteRows(std::span<const float> values, std::size_t columns);
    void WriteName(std::uint32_t label);

    const ValueTree& m_Tree;
    std::vector<std::string> m_Labels; // as JSON; empty: not met yet
    JsonWriter m_Out;
};

void ValueJsonWriter::WriteObject(ValueIndex first, ValueIndex end) {
    m_Out.BeginObject();
    for (ValueIndex i = first; i < end; i = m_Tree[i].m_End) {
        if (m_Tree[i].m_Kind == ValueKind::List) {
            WriteList(i);
        } else {
            WriteName(m_Tree[i].m_Label);
            WriteValue(i);
        }
    }
    m_Out.EndObject();
}

// An array for each label of the elements, as members of the object that is open.
void ValueJsonWriter::WriteList(ValueIndex list) {
    const ValueNode& node = m_Tree[list];
    const auto labels = m_Tree.GetElementLabels(node);
    for (const std::uint32_t label : labels) {
        WriteName(node.m_IsNamedByCount && labels.size() == 1 ? node.m_Label : label);
        WriteElements(list, label);
    }
    for (ValueIndex i = list + 1; i < node.m_End; i = m_Tree[i].m_End) {
        if (std::find(labels.begin(), labels.end(), m_Tree[i].m_Label) == labels.end()) {
            WriteName(m_Tree[i].m_Label);
            WriteValue(i);
        }
    }
}

void ValueJsonWriter::WriteElements(ValueIndex list, std::uint32_t label) {
    m_Out.BeginArray();
    for (ValueIndex i = list + 1; i < m_Tree[list].m_End; i = m_Tree[i].m_End) {
        if (m_Tree[i].m_Label == label)
            WriteValue(i);
    }
    m_Out.EndArray();
}

void ValueJsonWriter::WriteValue(ValueIndex index) {
    const ValueNode& node = m_Tree[index];
    switch (node.m_Kind) {
    case ValueKind::Bool:
        return m_Out.Add(m_Tree.GetBool(node));
    case ValueKind::Int:
        return m_Out.Add(m_Tree.GetInt(node));
    case ValueKind::Int64:
        return m_Out.Add(m_Tree.GetInt64(node));
    case ValueKind::Float:
        return m_Out.Add(JsonOfFloat(m_Tree.GetFloat(node)));
    case ValueKind::Double:
        return m_Out.Add(std::isfinite(m_Tree.GetDouble(node)) ? Json(m_Tree.GetDouble(node))
                                                               : JsonOfOdd(m_Tree.GetDouble(node)));
    case ValueKind::String:
        return m_Out.Add(ToUtf8(m_Tree.GetString(node)));
    case ValueKind::Color:
        return m_Out.Add(JsonOfColor(m_Tree.GetFloats(node)));
    case ValueKind::Vector3:
    case ValueKind::Vector4:
        return WriteFloats(m_Tree.GetFloats(node));
    case ValueKind::Pair:
    case ValueKind::Rect:
        m_Out.BeginArray();
        for (const std::int32_t value : m_Tree.GetInts(node))
            m_Out.Add(value);
        return m_Out.EndArray();
    case ValueKind::Matrix33:
        return WriteRows(m_Tree.GetFloats(node), 3);
    case ValueKind::Matrix44:
        return WriteRows(m_Tree.GetFloats(node), 4);
    case ValueKind::Record:
        return WriteObject(index + 1, node.m_End);
    case ValueKind::List: { // directly in a list: it has no object of its own to be named in
        const auto labels = m_Tree.GetElementLabels(node);
        if (labels.size() == 1)
            return WriteElements(index, labels[0]);
        m_Out.BeginObject();
        WriteList(index);
        return m_Out.EndObject();
    }
    }
}

void ValueJsonWriter::WriteFloats(std::span<const float> values) {
    m_Out.BeginArray();
    for (const float value : values)
        m_Out.Add(JsonOfFloat(value));
    m_Out.EndArray();
}

void ValueJsonWriter::WriteRows(std::span<const float> values, std::size_t columns) {
    m_Out.BeginArray();
    for (std::size_t i = 0; i < values.size(); i += columns)
        WriteFloats(values.subspan(i, columns));
    m_Out.EndArray();
}

void ValueJsonWriter::WriteName(std::uint32_t label) {
    std::string& name = m_Labels[label];
    if (name.empty())
        name = JsonText(m_Tree.GetLabel(label));
    m_Out.Name(name);
}

} // namespace

void WriteJson(const ValueTree& tree, JsonLook look, ByteSink& sink) {
    ValueJsonWriter(tree, look, sink).Write();
}

std::string JsonOf(const ValueTree& tree, JsonLook look) {
    MemorySink sink;
    WriteJson(tree, look, sink);
    return std::move(sink.m_Bytes);
}

} // namespace Corvid
