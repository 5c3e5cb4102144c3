#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>

#include "Corvid/Explain/TextValue.h"
#include "Engine/Layout/Layout.h"

namespace Corvid {

// The values that conditions of a layout depend on, as they stand while a file is read.
class Conditions {
public:
    explicit Conditions(const Layout& layout) {
        for (const LayoutNode& node : layout.GetNodes()) {
            if (node.m_Kind == LayoutKind::When && node.m_Condition.m_Field != kNoLayoutIndex)
                m_Values[node.m_Condition.m_Field]; // not known yet
        }
    }

    void Set(LayoutIndex field, const TextValue& value) {
        if (const auto found = m_Values.find(field); found != m_Values.end())
            found->second =
                value.m_Kind == ValueKind::Bool ? std::u16string(value.m_Bool ? u"TRUE" : u"") : value.m_String;
    }
    void SetUnknown(LayoutIndex field) {
        if (const auto found = m_Values.find(field); found != m_Values.end())
            found->second.reset();
    }

    // Nothing where the value is not known.
    std::optional<bool> Holds(const LayoutCondition& condition) const {
        const auto found = m_Values.find(condition.m_Field);
        if (found == m_Values.end() || !found->second)
            return std::nullopt;
        bool holds = !found->second->empty(); // of a bool
        if (!condition.m_Words.empty())
            holds = std::find(condition.m_Words.begin(), condition.m_Words.end(), *found->second) !=
                    condition.m_Words.end();
        return holds != condition.m_IsNegated;
    }

private:
    std::unordered_map<LayoutIndex, std::optional<std::u16string>> m_Values; // of a bool: a text where it is true
};

} // namespace Corvid
