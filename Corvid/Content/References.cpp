#include "Corvid/Content/References.h"

#include <set>
#include <string_view>
#include <unordered_map>

#include "Corvid/Values/ValuePaths.h"
#include "Engine/Layout/LayoutLister.h"

namespace Corvid {

namespace {

// Paths of fields without the indices of elements: labels of records and of the field, joined by dots.
class AssetFields {
public:
    explicit AssetFields(const Layout& layout) {
        for (LayoutIndex i = 0; i < layout.GetSize(); ++i) {
            if (layout[i].m_Asset == AssetKind::None)
                continue;
            std::string path = layout[i].m_Label;
            for (LayoutIndex parent = layout[i].m_Parent; parent != kNoLayoutIndex; parent = layout[parent].m_Parent) {
                if (layout[parent].m_Kind != LayoutKind::Record)
                    continue;
                path = layout[parent].m_Label + '.' + path;
            }
            for (std::size_t dot = path.find('.'); dot != path.npos; dot = path.find('.', dot + 1))
                m_Records.insert(path.substr(0, dot));
            m_Fields.emplace(std::move(path), layout[i].m_Asset);
        }
    }

    AssetKind GetAsset(const std::string& path) const {
        const auto found = m_Fields.find(path);
        return found == m_Fields.end() ? AssetKind::None : found->second;
    }
    // Whether the record, or whatever stands at the path, is one of them or has one.
    bool Has(const std::string& path) const { return m_Records.contains(path) || m_Fields.contains(path); }

private:
    std::unordered_map<std::string, AssetKind> m_Fields;
    std::set<std::string> m_Records;
};

std::string WithoutIndices(std::string_view path) {
    std::string plain;
    for (bool isIndex = false; const char unit : path) {
        isIndex = isIndex || unit == '[';
        if (!isIndex)
            plain.push_back(unit);
        isIndex = isIndex && unit != ']';
    }
    return plain;
}

bool HasElementsWithAssets(const ValueTree& values, const ValueNode& list, const std::string& path,
                           const AssetFields& fields) {
    const std::string prefix = path.substr(0, path.size() - values.GetLabel(list).size());
    for (const std::uint32_t label : values.GetElementLabels(list)) {
        if (fields.Has(prefix + std::string(values.GetLabel(label))))
            return true;
    }
    return false;
}

} // namespace

std::vector<Reference> FindReferences(const KindObject& object, const ValueTree& values) {
    const AssetFields fields(LayoutOf({}, object));
    std::vector<Reference> references;
    ValuePaths paths(values);
    while (!paths.IsAtEnd()) {
        const ValueNode& node = paths.GetNode();
        if (node.m_Kind == ValueKind::String && !values.GetString(node).empty()) {
            const AssetKind asset = fields.GetAsset(WithoutIndices(paths.GetPath()));
            if (asset != AssetKind::None)
                references.push_back({paths.GetPath(), asset, std::u16string(values.GetString(node))});
        }
        const bool isWorthEntering =
            node.m_Kind == ValueKind::List
                ? HasElementsWithAssets(values, node, WithoutIndices(paths.GetPath()), fields)
                : node.m_Kind != ValueKind::Record || fields.Has(WithoutIndices(paths.GetPath()));
        if (isWorthEntering)
            paths.Next();
        else
            paths.SkipNested();
    }
    return references;
}

std::string_view NounOf(AssetKind asset) {
    constexpr std::string_view kNouns[] = {"", "mesh", "texture", "texture animation", "particle", "definition"};
    return kNouns[static_cast<std::size_t>(asset)];
}

} // namespace Corvid
