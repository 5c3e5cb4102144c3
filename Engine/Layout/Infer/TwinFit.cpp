#include "Engine/Layout/Infer/TwinFit.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>

namespace Corvid {

namespace {

constexpr std::size_t kMostOffsets = 256; // that one value may begin at
constexpr double kBitsOfText = 2.0;       // of surprise, for each bit that tells one text out of all

constexpr LayoutKind kKinds[] = {LayoutKind::Bool,    LayoutKind::Int,    LayoutKind::Int64, LayoutKind::Float,
                                 LayoutKind::Double,  LayoutKind::String, LayoutKind::Color, LayoutKind::Vector3,
                                 LayoutKind::Vector4, LayoutKind::Pair,   LayoutKind::Rect,  LayoutKind::Matrix33,
                                 LayoutKind::Matrix44};

std::size_t Match(LayoutKind kind, const SampleValue& value, std::string_view bytes) {
    if (kind != LayoutKind::Matrix33 && kind != LayoutKind::Matrix44)
        return MatchBytes(kind, value.m_Value, bytes);
    const LayoutKind row = kind == LayoutKind::Matrix33 ? LayoutKind::Vector3 : LayoutKind::Vector4;
    std::size_t taken = 0;
    for (const std::string_view line : value.m_Rows) {
        const std::size_t size = MatchBytes(row, line, bytes.substr(taken));
        if (size == 0)
            return 0;
        taken += size;
    }
    return taken;
}

// Where in the bytes one value may begin and end.
struct Step {
    std::size_t m_Begin;
    std::size_t m_End;
    LayoutKind m_Kind;
};

void ListValuesOf(RecordDraft& record, std::span<const SampleTree* const> trees,
                  std::vector<std::map<std::uint32_t, SampleValue>>& found) {
    for (DraftField& field : record.m_Fields) {
        for (std::size_t i = 0; i < field.m_Tokens.size(); ++i) {
            if (field.m_Tokens[i] == kNone || field.m_Shape == DraftShape::Record)
                continue;
            const DraftInstance& instance = record.m_Instances[i];
            const SampleTree& tree = *trees[instance.m_Sample];
            const std::uint32_t line = instance.m_Tokens[field.m_Tokens[i]].m_Line;
            SampleValue value{&field, tree[line].m_Value, {}};
            for (std::uint32_t row = line + 1; row < tree[line].m_End; ++row)
                value.m_Rows.push_back(tree[row].m_Value);
            found[instance.m_Sample].emplace(line, std::move(value));
        }
        if (field.m_Inner != nullptr)
            ListValuesOf(*field.m_Inner, trees, found);
    }
}

} // namespace

std::vector<std::vector<SampleValue>> ListValues(RecordDraft& draft, std::span<const SampleTree* const> trees) {
    std::vector<std::map<std::uint32_t, SampleValue>> found(trees.size()); // by line
    ListValuesOf(draft, trees, found);
    std::vector<std::vector<SampleValue>> values(trees.size());
    for (std::size_t sample = 0; sample < trees.size(); ++sample) {
        values[sample].reserve(found[sample].size());
        for (auto& [line, value] : found[sample])
            values[sample].push_back(std::move(value));
    }
    return values;
}

std::vector<bool> FindDistinctTexts(std::span<const std::vector<SampleValue>> values) {
    std::map<const DraftField*, std::map<std::string_view, std::size_t>> counts;
    std::map<const DraftField*, std::size_t> totals;
    for (const auto& text : values) {
        for (const SampleValue& value : text) {
            ++counts[value.m_Field][value.m_Value];
            ++totals[value.m_Field];
        }
    }
    const double needed = kBitsOfText * std::log2(static_cast<double>(values.size()));
    std::vector<bool> areDistinct;
    for (const auto& text : values) {
        double bits = 0.0;
        for (const SampleValue& value : text)
            bits += std::log2(static_cast<double>(totals[value.m_Field]) /
                              static_cast<double>(counts[value.m_Field][value.m_Value]));
        areDistinct.push_back(bits >= needed);
    }
    return areDistinct;
}

std::vector<std::pair<DraftField*, KindSet>> FitTwin(std::span<const SampleValue> values, std::string_view bytes) {
    // All ways to read the bytes as these values go forward together; those that do not come out even are taken back.
    std::vector<std::vector<Step>> steps;
    steps.reserve(values.size());
    std::vector<std::size_t> offsets{0};
    std::map<DraftField*, KindSet> kinds;
    for (const SampleValue& value : values) {
        std::vector<Step>& step = steps.emplace_back();
        std::vector<std::size_t> next;
        const KindSet allowed =
            value.m_Field->m_Shape == DraftShape::List ? KindSet{LayoutKind::Int} : value.m_Field->m_Kinds;
        for (const std::size_t offset : offsets) {
            for (const LayoutKind kind : kKinds) {
                const std::size_t size = allowed.Has(kind) ? Match(kind, value, bytes.substr(offset)) : 0;
                if (size == 0)
                    continue;
                step.push_back({offset, offset + size, kind});
                next.push_back(offset + size);
            }
        }
        std::sort(next.begin(), next.end());
        next.erase(std::unique(next.begin(), next.end()), next.end());
        if (next.empty() || next.size() > kMostOffsets)
            return {};
        offsets = std::move(next);
        kinds[value.m_Field] = allowed;
    }

    std::vector<std::size_t> ends{bytes.size()};
    for (std::size_t i = values.size(); i-- > 0;) {
        std::vector<std::size_t> begins;
        KindSet possible;
        for (const Step& step : steps[i]) {
            if (std::binary_search(ends.begin(), ends.end(), step.m_End) && kinds[values[i].m_Field].Has(step.m_Kind)) {
                possible |= {step.m_Kind};
                begins.push_back(step.m_Begin);
            }
        }
        if (begins.empty())
            return {};
        kinds[values[i].m_Field] &= possible; // all values of a field have one kind
        std::sort(begins.begin(), begins.end());
        begins.erase(std::unique(begins.begin(), begins.end()), begins.end());
        ends = std::move(begins);
    }
    return {kinds.begin(), kinds.end()};
}

} // namespace Corvid
