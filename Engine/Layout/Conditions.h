#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Engine/Layout/ConditionFields.h"

namespace Corvid {

// The values that conditions of a layout depend on, as they stand while a file is read.
class Conditions {
public:
    explicit Conditions(const Layout& layout) : m_Layout(layout) {
        const ConditionFields fields(layout);
        const auto note = [&](LayoutIndex when, const LayoutCondition& condition) {
            std::vector<LayoutIndex>& candidates = m_Candidates[{when, condition.m_Field}];
            candidates = fields.CandidatesOf(when, condition.m_Field);
            for (const LayoutIndex field : candidates)
                m_Values[field]; // not known yet
        };
        for (LayoutIndex index = 0; index < layout.GetSize(); ++index) {
            if (layout[index].m_Kind != LayoutKind::When)
                continue;
            note(index, layout[index].m_Condition);
            for (const LayoutCondition& condition : layout[index].m_Doubt.m_Alternatives)
                note(index, condition);
        }
    }

    void Set(LayoutIndex field, bool value) { Set(field, std::u16string(value ? u"TRUE" : u"")); }
    void Set(LayoutIndex field, std::u16string word) {
        if (const auto found = m_Values.find(field); found != m_Values.end())
            found->second = {State::Known, std::move(word)};
    }
    void SetUnknown(LayoutIndex field) {
        if (const auto found = m_Values.find(field); found != m_Values.end())
            found->second = {};
    }

    // The condition at the node does not hold: what is nested in it is not there.
    void Skip(LayoutIndex when) {
        const auto end = m_Values.lower_bound(m_Layout[when].m_End);
        for (auto value = m_Values.lower_bound(when); value != end; ++value)
            value->second = {State::Absent, {}};
    }

    // Nothing where the value is not known. Of a value that is not there a bool counts as false, a word as none of any.
    std::optional<bool> Holds(LayoutIndex when) const { return Holds(when, m_Layout[when].m_Condition); }
    std::optional<bool> Holds(LayoutIndex when, const LayoutCondition& condition) const {
        if (condition.m_Field == kNoLayoutIndex)
            return std::nullopt;
        const Value* const value = Find(when, condition);
        if (value == nullptr)
            return condition.m_IsNegated;
        if (value->m_State == State::Unknown)
            return std::nullopt;
        bool holds = !value->m_Text.empty(); // of a bool
        if (!condition.m_Words.empty())
            holds =
                std::find(condition.m_Words.begin(), condition.m_Words.end(), value->m_Text) != condition.m_Words.end();
        return holds != condition.m_IsNegated;
    }

    // Whether a value that the condition asks for is there at all, known or not.
    bool IsAnyThere(LayoutIndex when, const LayoutCondition& condition) const {
        return Find(when, condition) != nullptr;
    }

private:
    enum class State { Unknown, Absent, Known };
    struct Value {
        State m_State = State::Unknown;
        std::u16string m_Text; // of a bool: not empty where it is true
    };

    // The nearest value that is there, or may be; null: there is none.
    const Value* Find(LayoutIndex when, const LayoutCondition& condition) const {
        for (const LayoutIndex field : m_Candidates.at({when, condition.m_Field})) {
            const Value& value = m_Values.at(field);
            if (value.m_State != State::Absent)
                return &value;
        }
        return nullptr;
    }

    const Layout& m_Layout;
    std::map<std::pair<LayoutIndex, LayoutIndex>, std::vector<LayoutIndex>> m_Candidates; // by When and named field
    std::map<LayoutIndex, Value> m_Values;
};

} // namespace Corvid
