#include "Corvid/Compare/DifferenceJson.h"

#include <charconv>
#include <cmath>

#include <nlohmann/json.hpp>

#include "Corvid/Values/ValueText.h"
#include "Engine/Math/Color.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

using Json = nlohmann::ordered_json;

std::string LineOf(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

// By way of its text, so that a float shows the decimals that are its own and not those of a double.
Json NumberOf(const std::string& text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number))
        return text;
    return number;
}

Json JsonOf(float value) {
    std::string text;
    AppendFloatText(text, value);
    return NumberOf(text);
}

Json JsonOf(double value) {
    std::string text;
    AppendDoubleText(text, value);
    return NumberOf(text);
}

Json JsonOf(std::span<const float> values) {
    Json array = Json::array();
    for (const float value : values)
        array.push_back(JsonOf(value));
    return array;
}

Json RowsOf(std::span<const float> values, std::size_t width) {
    Json array = Json::array();
    for (std::size_t i = 0; i < values.size(); i += width)
        array.push_back(JsonOf(values.subspan(i, width)));
    return array;
}

Json JsonOf(const ValueTree& tree, const ValueNode& node) {
    switch (node.m_Kind) {
    case ValueKind::Bool:
        return tree.GetBool(node);
    case ValueKind::Int:
    case ValueKind::List:
        return tree.GetInt(node);
    case ValueKind::Int64:
        return tree.GetInt64(node);
    case ValueKind::Float:
        return JsonOf(tree.GetFloat(node));
    case ValueKind::Double:
        return JsonOf(tree.GetDouble(node));
    case ValueKind::String:
        return ToUtf8(tree.GetString(node));
    case ValueKind::Color: {
        std::string text;
        AppendColorText(text, tree.GetFloats(node));
        return text;
    }
    case ValueKind::Vector3:
    case ValueKind::Vector4:
        return JsonOf(tree.GetFloats(node));
    case ValueKind::Matrix33:
        return RowsOf(tree.GetFloats(node), 3);
    case ValueKind::Matrix44:
        return RowsOf(tree.GetFloats(node), 4);
    case ValueKind::Pair:
    case ValueKind::Rect:
        return Json(std::vector<std::int32_t>(tree.GetInts(node).begin(), tree.GetInts(node).end()));
    case ValueKind::Record:
        break;
    }
    return nullptr;
}

// A color whose 8 bits do not show the difference by its channels.
void AddChange(Json& json, const ComparedValue& from, const ComparedValue& to) {
    const ValueNode& before = (*from.m_Tree)[from.m_Node];
    const ValueNode& after = (*to.m_Tree)[to.m_Node];
    json["from"] = JsonOf(*from.m_Tree, before);
    json["to"] = JsonOf(*to.m_Tree, after);
    if (before.m_Kind == ValueKind::Color && after.m_Kind == ValueKind::Color && json["from"] == json["to"]) {
        json["from"] = JsonOf(from.m_Tree->GetFloats(before));
        json["to"] = JsonOf(to.m_Tree->GetFloats(after));
    }
}

void AddSummary(Json& json, const ListSummary& summary) {
    json["count"] = summary.m_Count;
    json["of"] = summary.m_Of;
    const ListSummary::Largest* largest = nullptr;
    for (const ListSummary::Largest& each : summary.m_Largest) {
        if (largest == nullptr || !(each.m_Distance <= largest->m_Distance))
            largest = &each;
    }
    if (largest == nullptr) {
        json["at"] = summary.m_FirstElement;
        return;
    }
    if (largest->m_IsInteger)
        json["largest"] = static_cast<std::int64_t>(largest->m_Distance);
    else
        json["largest"] = JsonOf(static_cast<float>(largest->m_Distance));
    json["at"] = largest->m_Label.empty() ? largest->m_Element : largest->m_Element + '.' + largest->m_Label;
}

} // namespace

void AppendDifferenceJson(std::string& text, std::string_view file, const Difference& difference) {
    Json json;
    json["file"] = file;
    json["change"] = WordOf(difference.m_Change);
    json["field"] = difference.m_Field;
    if (difference.m_Summary != nullptr) {
        AddSummary(json, *difference.m_Summary);
    } else if (difference.m_Change == Change::Moved) {
        json["from"] = difference.m_Field;
        json["to"] = difference.m_MovedTo;
    } else if (difference.m_Change == Change::Changed) {
        AddChange(json, difference.m_From, difference.m_To);
    } else {
        const bool isAdded = difference.m_Change == Change::Added;
        const ComparedValue& value = isAdded ? difference.m_To : difference.m_From;
        Json shown = difference.m_Name.empty() ? JsonOf(*value.m_Tree, (*value.m_Tree)[value.m_Node])
                                               : Json(ToUtf8(difference.m_Name));
        if (!shown.is_null())
            json[isAdded ? "to" : "from"] = std::move(shown);
    }
    text += LineOf(json);
}

void AppendFileChangeJson(std::string& text, std::string_view file, Change change, std::string_view from) {
    Json json;
    json["file"] = file;
    json["change"] = WordOf(change);
    if (change == Change::Moved) {
        json["from"] = from;
        json["to"] = file;
    }
    text += LineOf(json);
}

} // namespace Corvid
