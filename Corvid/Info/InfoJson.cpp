#include "Corvid/Info/InfoText.h"

#include <cmath>

#include <nlohmann/json.hpp>

#include "Corvid/Values/ValueText.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

using Json = nlohmann::ordered_json;

std::string LineOf(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

// By way of its shortest text, so that a float shows its own decimals; strings where JSON has no number.
Json JsonOf(float value) {
    std::string text;
    AppendFloatText(text, value);
    return std::isfinite(value) ? Json::parse(text) : Json(text);
}

Json JsonOf(const Vector3& value) {
    return Json::array({JsonOf(value.x), JsonOf(value.y), JsonOf(value.z)});
}

Json JsonOf(const MeshBounds& bounds) {
    Json json;
    json["radius"] = JsonOf(bounds.m_Radius);
    json["min"] = JsonOf(bounds.m_Min);
    json["max"] = JsonOf(bounds.m_Max);
    if (bounds.m_Actual) {
        json["actualRadius"] = JsonOf(bounds.m_Actual->m_Radius);
        json["actualMin"] = JsonOf(bounds.m_Actual->m_Min);
        json["actualMax"] = JsonOf(bounds.m_Actual->m_Max);
    }
    return json;
}

} // namespace

void AppendInfoJson(std::string& text, std::string_view path, const FileInfo& info) {
    Json json;
    json["file"] = path;
    if (info.m_Kind)
        json["kind"] = WordOf(*info.m_Kind);
    if (info.m_Encoding)
        json["encoding"] = *info.m_Encoding == ArchiveFormat::Text ? "text" : "binary";
    json["bytes"] = info.m_Bytes;
    if (!info.m_EntityType.empty())
        json["entityType"] = info.m_EntityType;
    if (!info.m_Layout.empty())
        json["layout"] = info.m_Layout;
    if (info.m_Kind) {
        json["counts"] = Json::object();
        for (const auto& [label, count] : info.m_Counts)
            json["counts"][label] = count;
    }
    if (info.m_Mesh)
        json["bounds"] = JsonOf(info.m_Mesh->m_Bounds);
    if (info.m_Kind) {
        json["references"] = Json::array();
        for (const Reference& reference : info.m_References)
            json["references"].push_back({{"field", reference.m_Field}, {"name", ToUtf8(reference.m_Name)}});
    }
    if (info.m_Mesh) {
        json["unusedMaterials"] = info.m_Mesh->m_UnusedMaterials;
        json["repeatedVertices"] = info.m_Mesh->m_RepeatedVertices;
    }
    text += LineOf(json);
}

void AppendTotalsJson(std::string& text, const InfoTotals& totals) {
    Json summary;
    summary["files"] = totals.GetAll().m_Files;
    summary["bytes"] = totals.GetAll().m_Bytes;
    summary["kinds"] = Json::object();
    for (const auto& [kind, total] : totals.m_Kinds)
        summary["kinds"][kind] = total.m_Files;
    Json json;
    json["summary"] = std::move(summary);
    text += LineOf(json);
}

} // namespace Corvid
