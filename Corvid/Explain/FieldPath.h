#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Corvid/Explain/RecordLabels.h"
#include "Engine/Layout/Layout.h"

namespace Corvid {

// The element of a list that is being read; lists stand in each other where an element is no record.
struct ElementPlace {
    LayoutIndex m_List = kNoLayoutIndex;
    std::uint32_t m_Index = 0;
    std::optional<std::int32_t> m_Count; // what the file says, if it does
    bool m_IsNamedByCount = false;
    std::string m_OuterIndices; // "[2]" for an element of the third element of another list

    std::string GetIndices() const { return m_OuterIndices + '[' + std::to_string(m_Index) + ']'; }
};

// The path of the record that is being read, as it is printed.
class FieldPath {
public:
    // Of a field of the record, or of the element where one is given.
    std::string Of(const Layout& layout, const LayoutNode& node, const ElementPlace* element) const {
        return m_Record + NameOf(layout, node, element);
    }
    // Of something in the record that is no field of it.
    std::string OfLabel(std::string_view label) const { return m_Record + std::string(label); }
    // The same in a record around, the length of whose path Enter() gave.
    std::string OfLabel(std::string_view label, std::size_t length) const {
        return m_Record.substr(0, length) + std::string(label);
    }
    std::string OfRecord() const { return m_Record.empty() ? m_Record : m_Record.substr(0, m_Record.size() - 1); }

    // Into a nested record; gives what Leave() wants back.
    std::size_t Enter(const Layout& layout, const LayoutNode& node, const ElementPlace* element) {
        const std::size_t length = m_Record.size();
        m_Record += NameOf(layout, node, element) + '.';
        return length;
    }
    void Leave(std::size_t length) { m_Record.resize(length); }

private:
    static std::string NameOf(const Layout& layout, const LayoutNode& node, const ElementPlace* element) {
        if (element == nullptr)
            return node.m_Label;
        const std::string& label = element->m_IsNamedByCount ? layout[element->m_List].m_Label : node.m_Label;
        return label + element->GetIndices();
    }

    std::string m_Record; // with a dot at its end, unless empty
};

} // namespace Corvid
