#include "Corvid/Json/ValueJson.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <new>
#include <utility>
#include <vector>

#include "Engine/Math/Color.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

// Of the library's tree together with its text, measured on meshes: 200.
constexpr std::size_t kMemoryOfValue = 256;

// The library needs memory to destroy a tree, too, and ends the program where there is none. So there has to be enough
// for everything before it begins.
void ThrowUnlessThereIsMemory(std::size_t valueCount) {
    if (valueCount > std::numeric_limits<std::size_t>::max() / kMemoryOfValue)
        throw std::bad_alloc();
    ::operator delete(::operator new(valueCount* kMemoryOfValue));
}

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

template <class Value, class Convert> Json JsonOfAll(std::span<const Value> values, Convert convert) {
    Json array = Json::array();
    for (const Value& value : values)
        array.push_back(convert(value));
    return array;
}

Json JsonOfRows(std::span<const float> values, std::size_t columns) {
    Json rows = Json::array();
    for (std::size_t i = 0; i < values.size(); i += columns)
        rows.push_back(JsonOfAll(values.subspan(i, columns), JsonOfFloat));
    return rows;
}

class JsonMaker {
public:
    explicit JsonMaker(const ValueTree& tree) : m_Tree(tree) {}

    Json Make(ValueIndex first, ValueIndex end) const {
        Json object = Json::object();
        for (ValueIndex i = first; i < end; i = m_Tree[i].m_End) {
            if (m_Tree[i].m_Kind == ValueKind::List)
                AddList(object, i);
            else
                AppendMember(object, std::string(m_Tree.GetLabel(m_Tree[i])), MakeValue(i));
        }
        return object;
    }

private:
    void AddList(Json& object, ValueIndex index) const;
    Json MakeValue(ValueIndex index) const;

    const ValueTree& m_Tree;
};

// An array for each label of the elements.
void JsonMaker::AddList(Json& object, ValueIndex index) const {
    const ValueNode& list = m_Tree[index];
    const auto labels = m_Tree.GetElementLabels(list);
    std::vector<Json> arrays(labels.size(), Json::array());
    std::vector<std::pair<std::string_view, Json>> others;
    for (ValueIndex i = index + 1; i < list.m_End; i = m_Tree[i].m_End) {
        std::size_t place = 0;
        while (place < labels.size() && labels[place] != m_Tree[i].m_Label)
            ++place;
        if (place == labels.size()) {
            others.emplace_back(m_Tree.GetLabel(m_Tree[i]), MakeValue(i));
            continue;
        }
        // A list that stands directly in a list has no object of its own to be named in.
        if (m_Tree[i].m_Kind == ValueKind::List) {
            Json nested = Json::object();
            AddList(nested, i);
            arrays[place].push_back(nested.empty() ? Json::array() : std::move(nested.begin().value()));
        } else {
            arrays[place].push_back(MakeValue(i));
        }
    }
    for (std::size_t place = 0; place < labels.size(); ++place) {
        const bool isNamedByCount = list.m_IsNamedByCount && labels.size() == 1;
        AppendMember(object, std::string(isNamedByCount ? m_Tree.GetLabel(list) : m_Tree.GetLabel(labels[place])),
                     std::move(arrays[place]));
    }
    for (auto& [label, value] : others)
        AppendMember(object, std::string(label), std::move(value));
}

Json JsonMaker::MakeValue(ValueIndex index) const {
    const ValueNode& node = m_Tree[index];
    switch (node.m_Kind) {
    case ValueKind::Bool:
        return m_Tree.GetBool(node);
    case ValueKind::Int:
        return m_Tree.GetInt(node);
    case ValueKind::Int64:
        return m_Tree.GetInt64(node);
    case ValueKind::Float:
        return JsonOfFloat(m_Tree.GetFloat(node));
    case ValueKind::Double:
        return std::isfinite(m_Tree.GetDouble(node)) ? Json(m_Tree.GetDouble(node)) : JsonOfOdd(m_Tree.GetDouble(node));
    case ValueKind::String:
        return ToUtf8(m_Tree.GetString(node));
    case ValueKind::Color:
        return JsonOfColor(m_Tree.GetFloats(node));
    case ValueKind::Vector3:
    case ValueKind::Vector4:
        return JsonOfAll(m_Tree.GetFloats(node), JsonOfFloat);
    case ValueKind::Pair:
    case ValueKind::Rect:
        return JsonOfAll(m_Tree.GetInts(node), [](std::int32_t value) { return Json(value); });
    case ValueKind::Matrix33:
        return JsonOfRows(m_Tree.GetFloats(node), 3);
    case ValueKind::Matrix44:
        return JsonOfRows(m_Tree.GetFloats(node), 4);
    case ValueKind::Record:
        return Make(index + 1, node.m_End);
    case ValueKind::List: // see AddList
        break;
    }
    return nullptr;
}

} // namespace

Json JsonOf(const ValueTree& tree) {
    ThrowUnlessThereIsMemory(tree.GetSize());
    return JsonMaker(tree).Make(0, tree.GetSize());
}

} // namespace Corvid
