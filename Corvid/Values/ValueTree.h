#pragma once

#include <concepts>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Corvid/Values/LargeBlockAllocator.h"

namespace Corvid {

enum class ValueKind : std::uint8_t {
    Bool,
    Int,
    Int64,
    Float,
    Double,
    String, // and words
    Color,
    Vector3,
    Vector4,
    Pair,
    Rect,
    Matrix33,
    Matrix44,
    Record, // its fields are nested in it
    List,   // a count; its elements are nested in it, each of one or several values under the labels of the list
};

using ValueIndex = std::uint32_t;

struct ValueNode {
    ValueKind m_Kind : 7 = ValueKind::Int;
    // Of a list: its elements are told apart by its own label, since another list of the record has elements of the
    // same label.
    bool m_IsNamedByCount : 1 = false;
    std::uint32_t m_Label : 24 = 0; // see ValueTree::GetLabel
    ValueIndex m_End = 0;           // behind the last node that is nested in this one
    std::uint64_t m_Bits = 0;       // a number's bits, a list's count, or the place of a larger value
};

// The values of an object as they stand in a file, in archive order: one flat list of nodes, each followed by what is
// nested in it.
class ValueTree {
public:
    ValueIndex GetSize() const { return static_cast<ValueIndex>(m_Nodes.size()); }
    const ValueNode& operator[](ValueIndex index) const { return m_Nodes[index]; }

    std::string_view GetLabel(const ValueNode& node) const { return m_Labels[node.m_Label]; }

    bool GetBool(const ValueNode& node) const { return node.m_Bits != 0; }
    std::int32_t GetInt(const ValueNode& node) const { return static_cast<std::int32_t>(node.m_Bits); } // and counts
    std::int64_t GetInt64(const ValueNode& node) const { return static_cast<std::int64_t>(node.m_Bits); }
    float GetFloat(const ValueNode& node) const;
    double GetDouble(const ValueNode& node) const;
    std::u16string_view GetString(const ValueNode& node) const;         // no NUL; may hold lone surrogates
    std::span<const float> GetFloats(const ValueNode& node) const;      // Color, vectors, matrices row by row
    std::span<const std::int32_t> GetInts(const ValueNode& node) const; // Pair, Rect

    // The labels of a list's elements, those of an empty list too.
    std::span<const std::uint32_t> GetElementLabels(const ValueNode& list) const;
    std::string_view GetLabel(std::uint32_t label) const { return m_Labels[label]; }
    std::uint32_t GetLabelCount() const { return static_cast<std::uint32_t>(m_Labels.size()); }

    // Room for so many nodes, when that is known beforehand.
    void Reserve(std::size_t nodes) { m_Nodes.reserve(nodes); }

    // Building, front to back
    // -------------------------------------------------------------------------------------------

    // A label by its text or, for those who look up texts themselves, by its number.
    class TreeLabel {
    public:
        template <std::convertible_to<std::string_view> Text> TreeLabel(const Text& text) : m_Text(text) {}
        explicit TreeLabel(std::uint32_t number) : m_Number(number) {}

    private:
        friend class ValueTree;
        std::string_view m_Text; // empty: it has its number
        std::uint32_t m_Number = 0;
    };

    std::uint32_t LabelNumber(std::string_view label);
    // The label that follows most often: elements carry the labels of the last one.
    std::uint32_t GuessNextLabel() const { return m_NextLabel; }

    void AddBool(TreeLabel label, bool value) { Add(ValueKind::Bool, label, value ? 1 : 0); }
    void AddInt(TreeLabel label, std::int32_t value) { Add(ValueKind::Int, label, static_cast<std::uint32_t>(value)); }
    void AddInt64(TreeLabel label, std::int64_t value) {
        Add(ValueKind::Int64, label, static_cast<std::uint64_t>(value));
    }
    void AddFloat(TreeLabel label, float value);
    void AddDouble(TreeLabel label, double value);
    void AddString(TreeLabel label, std::u16string_view value);
    void AddFloats(ValueKind kind, TreeLabel label, std::span<const float> values);
    void AddInts(ValueKind kind, TreeLabel label, std::span<const std::int32_t> values);

    void BeginRecord(TreeLabel label) { Begin(Add(ValueKind::Record, label, 0)); }
    void EndRecord();
    // The count was added last, as an integer, and becomes a list.
    void BeginList(std::span<const std::string_view> elementLabels);
    void EndList() { End(); }
    // For a list whose count is known only at its end.
    void SetCount(ValueIndex list, std::int32_t count);

    // Closes what is still open. The nodes of the file itself are told apart like those of a record.
    void Finish();

private:
    struct LabelHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view label) const { return std::hash<std::string_view>()(label); }
    };

    ValueIndex Add(ValueKind kind, TreeLabel label, std::uint64_t bits);
    void Begin(ValueIndex node) { m_Open.push_back(node); }
    void End();
    void NameLists(ValueIndex first, ValueIndex end);
    std::uint32_t FindLabel(std::string_view label);

    std::vector<ValueNode, LargeBlockAllocator<ValueNode>> m_Nodes;
    std::vector<std::string> m_Labels;
    std::unordered_map<std::string, std::uint32_t, LabelHash, std::equal_to<>> m_LabelIndices;
    std::uint32_t m_NextLabel = 0;
    ValueIndex m_LastList = 0; // that was begun
    std::vector<float, LargeBlockAllocator<float>> m_Floats;
    std::vector<std::int32_t> m_Ints;
    std::u16string m_Units;                     // of strings, each ended by a zero
    std::vector<std::uint32_t> m_ElementLabels; // per list: how many, then the labels
    std::vector<ValueIndex> m_Open;
};

} // namespace Corvid
