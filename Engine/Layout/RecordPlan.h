#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "Engine/Archive/Archive.h"
#include "Engine/Archive/OwnedLabel.h"
#include "Engine/Layout/ConditionFields.h"
#include "Engine/Layout/Layout.h"

namespace Corvid {

// A value that conditions ask for, as it was when it was last met; not there where its own condition did not hold.
struct ConditionSlot {
    bool m_IsThere = false;
    bool m_Bool = false;
    std::size_t m_Units = 0; // of a word: where it begins
};

// A condition made ready: the values that it may refer to, the nearest first, as slots. Where none of them is there,
// a bool counts as false and a word as none of any.
struct PlannedCondition {
    std::vector<std::uint32_t> m_Slots;
    std::vector<std::u16string> m_Words;
    bool m_IsNegated = false;

    // `units` are all words met so far, each ended by a zero.
    bool Holds(std::span<const ConditionSlot> slots, const std::u16string& units) const;
};

// A layout made ready for loading and saving: labels as archives want them, and what can be known before.
class RecordPlan {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;
    static constexpr int kStringCapacity = 1024; // UTF-16 units, terminator included: no line of a text holds more

    // One for each node of the layout, in the same order.
    struct Step {
        LayoutKind m_Kind = LayoutKind::Int;
        LayoutIndex m_End = 0;
        OwnedLabel m_Label;
        std::uint32_t m_Slot = kNone;  // of a bool or word: where conditions look
        std::uint32_t m_Extra = kNone; // of a count or When: in its own table
        int m_Capacity = 0;            // of a string or word
    };

    struct List {
        ElementSize m_Smallest; // of an element
        std::vector<Label> m_ElementLabels;
    };

    struct When {
        PlannedCondition m_Condition;
        bool m_IsUnknown = false;      // nobody knows when: the labels of a text tell
        Label m_FirstLabel;            // of what is nested
        std::uint32_t m_FirstSlot = 0; // the values in it that conditions ask for
        std::uint32_t m_EndSlot = 0;
    };

    explicit RecordPlan(Layout layout);

    const Layout& GetLayout() const { return m_Layout; }
    const Step& operator[](LayoutIndex index) const { return m_Steps[index]; }
    LayoutIndex GetSize() const { return static_cast<LayoutIndex>(m_Steps.size()); }
    const List& GetList(const Step& step) const { return m_Lists[step.m_Extra]; }
    const When& GetWhen(const Step& step) const { return m_Whens[step.m_Extra]; }
    std::uint32_t GetSlotCount() const { return m_SlotCount; }
    int GetBufferSize() const { return m_BufferSize; } // units that the longest string takes

private:
    PlannedCondition Plan(LayoutIndex when, const LayoutCondition& condition, const ConditionFields& fields) const;
    void AddList(LayoutIndex index);
    void AddWhen(LayoutIndex index, const ConditionFields& fields);

    Layout m_Layout;
    std::vector<Step> m_Steps;
    std::vector<List> m_Lists;
    std::vector<When> m_Whens;
    std::uint32_t m_SlotCount = 0;
    int m_BufferSize = kStringCapacity;
};

} // namespace Corvid
