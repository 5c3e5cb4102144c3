#include "Corvid/Info/InfoText.h"

#include <algorithm>

#include "Corvid/Values/ValueText.h"
#include "Engine/Archive/LabelText.h"
#include "Engine/Render/Mesh/MeshData.h"

namespace Corvid {

namespace {

constexpr std::size_t kMostOfAList = 20; // so that a file stays on a screen

class Rows {
public:
    explicit Rows(std::string& text) : m_Text(text) {}

    void Add(std::string_view name, std::string_view value) {
        constexpr std::size_t kWidth = 14;
        m_Text.append("  ").append(name).append(name.size() < kWidth ? kWidth - name.size() : 1, ' ');
        m_Text.append(value).append("\n");
    }

private:
    std::string& m_Text;
};

std::string SpaceText(float radius, const Vector3& least, const Vector3& most) {
    std::string text = "radius ";
    AppendFloatText(text, radius);
    text += ", from ";
    AppendChannels(text, std::vector<float>{least.x, least.y, least.z});
    text += " to ";
    AppendChannels(text, std::vector<float>{most.x, most.y, most.z});
    return text;
}

// Of lists that are computed anyway, nobody needs to know the length.
bool IsDerived(std::string_view count) {
    return std::ranges::any_of(kCachedIndexCountLabels,
                               [count](Label label) { return std::string_view(LabelText(label)) == count; });
}

void AddMeshRows(Rows& rows, const FileInfo::MeshFacts& mesh) {
    const MeshBounds& bounds = mesh.m_Bounds;
    rows.Add("bounds", SpaceText(bounds.m_Radius, bounds.m_Min, bounds.m_Max));
    if (bounds.m_Actual)
        rows.Add("actual", SpaceText(bounds.m_Actual->m_Radius, bounds.m_Actual->m_Min, bounds.m_Actual->m_Max));
    rows.Add("repeated", std::to_string(mesh.m_RepeatedVertices) + " vertices equal an earlier one");
    std::string unused;
    for (std::size_t i = 0; i < std::min(mesh.m_UnusedMaterials.size(), kMostOfAList); ++i)
        unused += (i > 0 ? ", " : "") + std::to_string(mesh.m_UnusedMaterials[i]);
    if (mesh.m_UnusedMaterials.size() > kMostOfAList)
        unused += " and " + std::to_string(mesh.m_UnusedMaterials.size() - kMostOfAList) + " more";
    rows.Add("unused", unused.empty() ? "no material" : "materials " + unused);
}

void AddReferenceRows(Rows& rows, const std::vector<Reference>& references) {
    for (std::size_t i = 0; i < std::min(references.size(), kMostOfAList); ++i) {
        std::string text;
        AppendQuoted(text, references[i].m_Name);
        text.append(" (").append(NounOf(references[i].m_Asset)).append(", ").append(references[i].m_Field).append(")");
        rows.Add(i == 0 ? "names" : "", text);
    }
    if (references.size() > kMostOfAList)
        rows.Add("", "... and " + std::to_string(references.size() - kMostOfAList) + " more");
}

void AddTotalRow(std::string& text, const std::string& kind, const InfoTotals::Total& total) {
    const auto padded = [](const std::string& cell, std::size_t width) {
        return std::string(cell.size() < width ? width - cell.size() : 0, ' ') + cell;
    };
    text += kind + std::string(kind.size() < 10 ? 10 - kind.size() : 0, ' ');
    text += padded(std::to_string(total.m_Files), 10) + padded(std::to_string(total.m_Bytes), 16) + "\n";
}

} // namespace

void InfoTotals::Add(const FileInfo& info) {
    Total& total = m_Kinds[info.m_Kind ? std::string(WordOf(*info.m_Kind)) : "unknown"];
    ++total.m_Files;
    total.m_Bytes += info.m_Bytes;
}

InfoTotals::Total InfoTotals::GetAll() const {
    Total all;
    for (const auto& [kind, total] : m_Kinds) {
        all.m_Files += total.m_Files;
        all.m_Bytes += total.m_Bytes;
    }
    return all;
}

void AppendInfoText(std::string& text, std::string_view printedPath, const FileInfo& info) {
    text.append(printedPath).append("\n");
    Rows rows(text);
    rows.Add("kind", info.m_Kind ? WordOf(*info.m_Kind) : "unknown");
    if (info.m_Encoding)
        rows.Add("encoding", *info.m_Encoding == ArchiveFormat::Text ? "text" : "binary");
    rows.Add("size", std::to_string(info.m_Bytes) + " bytes");
    if (!info.m_EntityType.empty())
        rows.Add("entity type", info.m_EntityType);
    if (!info.m_Layout.empty())
        rows.Add("layout", info.m_Layout);
    for (const auto& [label, count] : info.m_Counts) {
        if (!IsDerived(label))
            rows.Add(label, std::to_string(count));
    }
    if (info.m_Mesh)
        AddMeshRows(rows, *info.m_Mesh);
    AddReferenceRows(rows, info.m_References);
}

void AppendTotalsText(std::string& text, const InfoTotals& totals) {
    text += "\nkind           files           bytes\n";
    for (const auto& [kind, total] : totals.m_Kinds)
        AddTotalRow(text, kind, total);
    AddTotalRow(text, "all", totals.GetAll());
}

} // namespace Corvid
