#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string_view>
#include <vector>

#include "Engine/Layout/Infer/SampleConflict.h"
#include "Engine/Layout/Infer/SampleTree.h"
#include "Engine/Layout/Layout.h"

namespace Corvid {

// A layout that somebody knows before samples are looked at, and what the samples are in its eyes. Fields that it does
// not have may stand anywhere between its own.
class KnownLayout {
public:
    explicit KnownLayout(const Layout& layout) : m_Layout(layout) {}

    // Finds the fields of the layout in all text samples. Doubts that a sample removes by its lines alone are removed:
    // a count that counts nothing, an integer that counts. A conflict where a sample contradicts what is not in doubt.
    std::optional<SampleConflict> Read(std::span<const SampleTree* const> trees);

    const Layout& GetLayout() const { return m_Layout; }

    // The field that stands in a line; kNoLayoutIndex: one that the layout does not have.
    LayoutIndex FieldAt(std::uint32_t sample, std::uint32_t line) const { return m_Readings[sample].m_Fields[line]; }

    // Of a count of the layout that has elements: the line behind each of them. Null: no such count.
    const std::vector<std::uint32_t>* ElementsAt(std::uint32_t sample, std::uint32_t line) const;

    // The fields of a record, or of one element, in the order of the layout: `first` and `end` are what is nested.
    std::vector<LayoutIndex> FieldsIn(LayoutIndex first, LayoutIndex end) const;

private:
    class Reader;
    struct Reading {
        std::vector<LayoutIndex> m_Fields; // by line
        std::map<std::uint32_t, std::vector<std::uint32_t>> m_Elements;
    };
    using Labels = std::set<std::string_view>;

    std::optional<SampleConflict> ReadOne(const SampleTree& tree, std::uint32_t sample);
    bool Settle(const SampleTree& tree, std::uint32_t sample);
    const Labels& LabelsOf(LayoutIndex first, LayoutIndex end);

    Layout m_Layout;
    std::vector<Reading> m_Readings; // by sample
    std::map<LayoutIndex, Labels> m_Labels;
};

} // namespace Corvid
