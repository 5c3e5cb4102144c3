#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "Engine/Archive/FieldFacts.h"

namespace Corvid {

// What stands at one place of a layout. The values, up to Matrix44, are those of FieldKind in the same order.
enum class LayoutKind : std::uint8_t {
    Bool,
    Int,
    Int64,
    Float,
    Double,
    String,
    Word,
    Color,
    Vector3,
    Vector4,
    Pair,
    Rect,
    Matrix33,
    Matrix44,
    Count,  // an integer; the nodes nested in it are one element
    Record, // a label line; the nodes nested in it are its fields
    Use,    // a block that is built in: its fields, without a label line
    When,   // the nodes nested in it are there only under a condition
};

constexpr bool IsValueKind(LayoutKind kind) {
    return kind <= LayoutKind::Matrix44;
}

// Bytes that a field of the kind takes by itself in binary; of a string those of its length alone.
std::size_t LeastBytesOf(LayoutKind kind);

using LayoutIndex = std::uint32_t;
inline constexpr LayoutIndex kNoLayoutIndex = std::numeric_limits<LayoutIndex>::max();

// On an earlier value of this record or of one around it.
struct LayoutCondition {
    LayoutIndex m_Field = kNoLayoutIndex;
    std::vector<std::u16string> m_Words; // the value is one of these; none: it is a bool, and true
    bool m_IsNegated = false;

    friend bool operator==(const LayoutCondition&, const LayoutCondition&) = default;
};

// What is not proven of a node, with the facts that limit the doubt.
struct LayoutDoubt {
    std::vector<std::int32_t> m_SeenNumbers;     // of a count, or of an integer whose width is open
    bool m_IsOfWidth = false;                    // of an int or int64: one of these two
    std::vector<bool> m_SeenBools;               // of a bool
    std::vector<LayoutCondition> m_Alternatives; // of a condition
};

struct LayoutNode {
    LayoutKind m_Kind = LayoutKind::Int;
    bool m_IsDoubtful = false;
    LayoutIndex m_End = 0; // behind the last node that is nested in this one
    LayoutIndex m_Parent = kNoLayoutIndex;
    std::string m_Label;                 // of a value, count or record: 1 to 127 printable ASCII characters
    std::string m_Name;                  // of a record: its definition's, if it has one; of a block
    std::vector<std::u16string> m_Words; // of a word
    LayoutCondition m_Condition;         // of a When; without a field: nobody knows when
    LayoutDoubt m_Doubt;

    // Known of fields that are built in; archives of described records do without.
    bool m_IsInvalidAWord = false; // "Invalid" stands for the value -1
    bool m_IsReserved = false;     // in the format, but not kept
    int m_Capacity = 0;            // string: UTF-16 units, terminator included; count: elements; 0: unbounded
    int m_SlotCount = 0;           // of a count: the only number that is right; 0: any
    AssetKind m_Asset = AssetKind::None;
    ValueRange m_Range;

    int m_Line = 0; // in its layout file, from 1; 0: not from a file
    int m_Column = 0;
};

// The fields of a file or record, in archive order, as data. Immutable once built: a flat list of nodes, each followed
// by what is nested in it. Named records and blocks stand expanded wherever they are used.
class Layout {
public:
    Layout() = default;
    Layout(std::string name, std::vector<LayoutNode> nodes, bool isAssumed = false)
        : m_Name(std::move(name)), m_Nodes(std::move(nodes)), m_IsAssumed(isAssumed) {}

    const std::string& GetName() const { return m_Name; } // the type word, or the class of a built-in record
    std::span<const LayoutNode> GetNodes() const { return m_Nodes; }
    const LayoutNode& operator[](LayoutIndex index) const { return m_Nodes[index]; }
    LayoutIndex GetSize() const { return static_cast<LayoutIndex>(m_Nodes.size()); }

    // No binary file has yet shown that decimals are floats and digits 32-bit integers.
    bool IsAssumed() const { return m_IsAssumed; }

private:
    std::string m_Name;
    std::vector<LayoutNode> m_Nodes;
    bool m_IsAssumed = false;
};

// Puts a layout together from front to back.
class LayoutBuilder {
public:
    // Appends a node within the innermost open one. Returns its index; the reference that GetNode() gives holds until
    // the next Add().
    LayoutIndex Add(LayoutKind kind, std::string_view label);
    LayoutNode& GetNode(LayoutIndex index) { return m_Nodes[index]; }
    const LayoutNode& GetNode(LayoutIndex index) const { return m_Nodes[index]; }
    LayoutIndex GetSize() const { return static_cast<LayoutIndex>(m_Nodes.size()); }

    // Appends whole nodes of a layout whose conditions refer to each other only: those of a layout, or what is nested
    // in one of its records or blocks. `first` is the index of the first of them there.
    void AddAll(std::span<const LayoutNode> nodes, LayoutIndex first = 0);

    // What is added from now on is nested in the last node that was added, until End().
    void Begin() { m_Open.push_back(static_cast<LayoutIndex>(m_Nodes.size() - 1)); }
    void End();

    // The nearest earlier value or count under `label` of this record or of one around it; kNoLayoutIndex: none.
    LayoutIndex FindEarlier(std::string_view label) const;

    Layout Finish(std::string name, bool isAssumed = false);

private:
    void Show(LayoutIndex index);
    void HideBehind(LayoutIndex index);

    std::vector<LayoutNode> m_Nodes;
    std::vector<LayoutIndex> m_Open;
    // The values and counts that a condition can refer to at this place, in order, and the same by label.
    std::vector<LayoutIndex> m_InSight;
    std::unordered_map<std::string, std::vector<LayoutIndex>> m_InSightByLabel;
};

} // namespace Corvid
