#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Engine/Layout/Infer/DecimalEvidence.h"
#include "Engine/Layout/Infer/SampleTree.h"
#include "Engine/Layout/Infer/ValueKinds.h"
#include "Engine/Layout/Layout.h"

namespace Corvid {

inline constexpr std::uint32_t kNone = 0xFFFFFFFF;

// One line of a record in one sample; of a count the lines of its elements, too.
struct SampleToken {
    std::uint32_t m_Line = 0; // in the sample's tree
    bool m_IsCount = false;
    std::vector<std::vector<SampleToken>> m_Elements; // of a count
};

// One record, or one element of a count, as it stands in one sample.
struct DraftInstance {
    std::uint32_t m_Sample = 0;
    std::uint32_t m_Parent = 0; // the instance of the record around it
    std::vector<SampleToken> m_Tokens;
};

class RecordDraft;
struct DraftField;

// One condition on an earlier field, of the record `m_Record` that is this one or around it.
struct DraftCondition {
    RecordDraft* m_Record = nullptr;
    std::uint32_t m_Field = 0;
    std::vector<std::u16string> m_Words;
    bool m_IsNegated = false;

    friend bool operator==(const DraftCondition&, const DraftCondition&) = default;
};

// A condition with its doubt. Without a record: nobody knows when.
struct DraftWhen {
    DraftCondition m_Condition;
    bool m_IsKnown = false;     // the layout that was given says so, and no sample says no
    bool m_IsUncertain = false; // whatever samples stand on its sides: nothing shows the order, or two explain it
    std::uint32_t m_Samples[2] = {0, 0}; // without the field, and with it; up to a few
    std::vector<DraftCondition> m_Alternatives;
    std::uint32_t m_Presence = 0; // where nobody knows when: a number for these instances of the record

    bool IsUnknown() const { return m_Condition.m_Record == nullptr; }
    bool IsThin() const { return m_Samples[0] < 2 || m_Samples[1] < 2; }
    bool IsDoubtful() const {
        return !m_IsKnown && (IsUnknown() || m_IsUncertain || IsThin() || !m_Alternatives.empty());
    }
    friend bool operator==(const DraftWhen&, const DraftWhen&) = default;
};

inline constexpr std::size_t kMostNumbers = 16; // that are remembered of an integer; one more tells that there are more

enum class DraftShape { Value, Record, List };

struct DraftField {
    std::string m_Label;
    DraftShape m_Shape = DraftShape::Value;
    std::vector<std::uint32_t> m_Tokens; // by instance of the record: which of its tokens this is; kNone: absent
    std::uint32_t m_PresentCount = 0;

    LayoutIndex m_Known = kNoLayoutIndex; // in the layout that was given
    KindSet m_Kinds;                      // that all values allow
    std::optional<LayoutKind> m_Usual;    // the one to take while several are possible; none: the one that is usual
    std::vector<std::u16string> m_Words;  // all values, sorted, where they are few words of an enumeration
    std::vector<std::int32_t> m_Numbers;  // all values, sorted, where they are few
    bool m_IsWord = false;                // a condition needs to know its words
    bool m_IsBuiltIn = false;             // of a block that is built in: certain
    bool m_IsUnproven = false;            // of a list: no sample has two elements
    bool m_WasSeen[2] = {false, false};   // of a bool
    double m_Largest = 0.0;               // magnitude, of numbers
    bool m_HasNegative = false;           // of numbers
    bool m_IsWidthOpen = false;           // it or a number beside it takes 8 bytes, and nothing else is open
    DecimalEvidence m_Decimals;
    std::vector<DraftWhen> m_Whens;       // outermost first
    std::unique_ptr<RecordDraft> m_Inner; // fields of the record, or of one element

    LayoutIndex m_Node = kNoLayoutIndex; // in the layout that was made last

    // Text speaks for a double, as far as it can.
    bool IsLikelyDouble() const {
        return m_Decimals.IsNoFloat() && m_Kinds.Has(LayoutKind::Float) && m_Kinds.Has(LayoutKind::Double);
    }
    bool AreNumbersFew() const { return m_Numbers.size() <= kMostNumbers; }
    bool IsOptional() const { return m_PresentCount < m_Tokens.size(); }
};

// The fields of a record, or of one element of a list, in order, over all its instances in all samples.
class RecordDraft {
public:
    std::vector<DraftInstance> m_Instances;
    std::vector<DraftField> m_Fields;
    RecordDraft* m_Outer = nullptr;
    std::uint32_t m_OuterField = 0; // of the record around it
    LayoutIndex m_KnownFirst = 0;   // what the layout that was given has nested in it
    LayoutIndex m_KnownEnd = 0;
};

} // namespace Corvid
