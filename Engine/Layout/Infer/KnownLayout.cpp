#include "Engine/Layout/Infer/KnownLayout.h"

#include <algorithm>
#include <string>
#include <utility>

#include "Engine/Layout/Conditions.h"
#include "Engine/Layout/Infer/ValueKinds.h"

namespace Corvid {

namespace {

constexpr std::size_t kMostTries = 16;      // of other readings, when a sample contradicts
constexpr int kMostSettled = 256;           // doubts, as each asks for all samples once more
constexpr LayoutIndex kMostLabels = 4;      // of an element that an integer turns out to count
constexpr std::int32_t kMostEmpty = 65'536; // elements without a line

// The count is a plain integer: its elements stand behind it once.
Layout WithoutCount(const Layout& layout, LayoutIndex count) {
    std::vector<LayoutNode> nodes(layout.GetNodes().begin(), layout.GetNodes().end());
    for (LayoutIndex inner = count + 1; inner < nodes[count].m_End; ++inner) {
        if (nodes[inner].m_Parent == count)
            nodes[inner].m_Parent = nodes[count].m_Parent;
    }
    nodes[count].m_Kind = LayoutKind::Int;
    nodes[count].m_IsDoubtful = false;
    nodes[count].m_Doubt = {};
    nodes[count].m_End = count + 1;
    return Layout(layout.GetName(), std::move(nodes), layout.IsAssumed());
}

// The integer counts so many of the fields that stand behind it. Nothing where it cannot.
std::optional<Layout> WithCount(const Layout& layout, LayoutIndex number, LayoutIndex labelCount) {
    std::vector<LayoutNode> nodes(layout.GetNodes().begin(), layout.GetNodes().end());
    const LayoutIndex parent = nodes[number].m_Parent;
    const LayoutIndex parentEnd = parent == kNoLayoutIndex ? layout.GetSize() : nodes[parent].m_End;
    LayoutIndex end = number + 1;
    for (LayoutIndex i = 0; i < labelCount; ++i) {
        if (end >= parentEnd)
            return std::nullopt;
        nodes[end].m_Parent = number;
        end = nodes[end].m_End;
    }
    // What decides further down cannot stand in an element.
    const auto isInside = [number, end](const LayoutCondition& condition) {
        return condition.m_Field != kNoLayoutIndex && condition.m_Field > number && condition.m_Field < end;
    };
    for (LayoutIndex behind = end; behind < nodes.size(); ++behind) {
        const auto& others = nodes[behind].m_Doubt.m_Alternatives;
        if (isInside(nodes[behind].m_Condition) || std::any_of(others.begin(), others.end(), isInside))
            return std::nullopt;
    }
    nodes[number].m_Kind = LayoutKind::Count;
    nodes[number].m_Doubt = {};
    nodes[number].m_End = end;
    return Layout(layout.GetName(), std::move(nodes), layout.IsAssumed());
}

} // namespace

// Walks over one sample and the layout side by side.
class KnownLayout::Reader {
public:
    Reader(KnownLayout& known, const SampleTree& tree, std::uint32_t sample)
        : m_Known(known),
          m_Layout(known.m_Layout),
          m_Tree(tree),
          m_Sample(sample),
          m_Reading(known.m_Readings[sample]),
          m_Conditions(known.m_Layout) {
        m_Reading.m_Fields.assign(tree.GetSize(), kNoLayoutIndex);
        m_Reading.m_Elements.clear();
    }

    std::optional<SampleConflict> Run() {
        if (ReadRecord(m_Tree[1].m_End, m_Tree.GetSize(), 0, m_Layout.GetSize()))
            return std::nullopt;
        return m_Conflict;
    }

private:
    // Lines of one record, the next one first.
    struct Place {
        std::uint32_t m_Line;
        std::uint32_t m_End;
        const Labels& m_Labels; // that the layout has in the record
        bool IsAtEnd() const { return m_Line >= m_End; }
    };

    bool Fail(LayoutIndex node, std::uint32_t line, std::string message) {
        m_Conflict = SampleConflict{std::move(message), {m_Sample, line}, {m_Sample, line}, m_Layout[node].m_Line};
        return false;
    }

    std::string_view LabelAt(const Place& place) const { return m_Tree[place.m_Line].m_Label; }

    void SkipNew(Place& place) const {
        while (!place.IsAtEnd() && !place.m_Labels.contains(LabelAt(place)))
            place.m_Line = m_Tree[place.m_Line].m_End;
    }

    bool ReadRecord(std::uint32_t line, std::uint32_t lineEnd, LayoutIndex first, LayoutIndex end) {
        Place place{line, lineEnd, m_Known.LabelsOf(first, end)};
        if (!ReadFields(first, end, place))
            return false;
        SkipNew(place);
        if (place.IsAtEnd())
            return true;
        LayoutIndex node = first;
        while (m_Layout[node].m_Label != LabelAt(place))
            ++node;
        return Fail(node, place.m_Line, "'" + m_Layout[node].m_Label + "' stands here, where the layout has none");
    }

    bool ReadFields(LayoutIndex first, LayoutIndex end, Place& place) {
        for (LayoutIndex node = first; node < end; node = m_Layout[node].m_End) {
            const LayoutKind kind = m_Layout[node].m_Kind;
            const bool isRead = kind == LayoutKind::Use    ? ReadFields(node + 1, m_Layout[node].m_End, place)
                                : kind == LayoutKind::When ? ReadWhen(node, place)
                                                           : ReadField(node, place);
            if (!isRead)
                return false;
        }
        return true;
    }

    bool ReadWhen(LayoutIndex when, Place& place) {
        const LayoutNode& node = m_Layout[when];
        std::optional<bool> isThere;
        if (!node.m_IsDoubtful)
            isThere = m_Conditions.Holds(when);
        if (!isThere.has_value()) {
            SkipNew(place);
            isThere = !place.IsAtEnd() && CanBegin(when + 1, node.m_End, LabelAt(place));
        }
        if (*isThere)
            return ReadFields(when + 1, node.m_End, place);
        m_Conditions.Skip(when);
        return true;
    }

    // Whether the label can be the first of these fields.
    bool CanBegin(LayoutIndex first, LayoutIndex end, std::string_view label) const {
        for (LayoutIndex node = first; node < end; node = m_Layout[node].m_End) {
            const LayoutKind kind = m_Layout[node].m_Kind;
            if (kind != LayoutKind::When && kind != LayoutKind::Use)
                return m_Layout[node].m_Label == label;
            if (CanBegin(node + 1, m_Layout[node].m_End, label))
                return true;
        }
        return false;
    }

    bool ReadField(LayoutIndex index, Place& place) {
        const LayoutNode& node = m_Layout[index];
        SkipNew(place);
        if (place.IsAtEnd())
            return Fail(index, place.m_Line - 1, "'" + node.m_Label + "' is missing behind this line");
        if (LabelAt(place) != node.m_Label)
            return Fail(index, place.m_Line,
                        "'" + std::string(LabelAt(place)) + "' stands where '" + node.m_Label + "' is due");
        const std::uint32_t line = place.m_Line;
        const std::string_view value = m_Tree[line].m_Value;
        m_Reading.m_Fields[line] = index;
        place.m_Line = m_Tree[line].m_End;
        if (node.m_Kind == LayoutKind::Bool)
            m_Conditions.Set(index, value == "TRUE");
        else if (KindsOfValue(value).Has(LayoutKind::String))
            m_Conditions.Set(index, ReadStringText(value));
        if (node.m_Kind == LayoutKind::Record && !value.empty())
            return Fail(index, line, "'" + node.m_Label + "' has a value, and is a record in the layout");
        if (node.m_Kind == LayoutKind::Record)
            return ReadRecord(line + 1, m_Tree[line].m_End, index + 1, node.m_End);
        if (node.m_Kind == LayoutKind::Count && node.m_End > index + 1)
            return ReadElements(index, line, place);
        return true;
    }

    // New lines behind an element belong to it if another one follows; behind the last, if they are those of the
    // others.
    bool ReadElements(LayoutIndex index, std::uint32_t line, Place& place) {
        const LayoutNode& node = m_Layout[index];
        const std::optional<std::int32_t> count = ReadIntText(m_Tree[line].m_Value);
        if (!count.has_value() || *count < 0)
            return Fail(index, line, "'" + node.m_Label + "' is no number of elements");
        std::vector<std::uint32_t> ends;
        std::vector<std::string_view> newLabels;
        for (std::int32_t i = 0; i < *count; ++i) {
            const std::uint32_t start = place.m_Line;
            if (!ReadFields(index + 1, node.m_End, place))
                return false;
            if (place.m_Line == start && i >= kMostEmpty)
                return Fail(index, line, "'" + node.m_Label + "' counts more than stands behind it");
            const std::uint32_t known = place.m_Line;
            if (i + 1 < *count) {
                SkipNew(place);
                newLabels.clear();
                for (std::uint32_t added = known; added < place.m_Line; added = m_Tree[added].m_End)
                    newLabels.push_back(m_Tree[added].m_Label);
            } else {
                for (const std::string_view label : newLabels) {
                    if (place.IsAtEnd() || LabelAt(place) != label)
                        break;
                    place.m_Line = m_Tree[place.m_Line].m_End;
                }
            }
            ends.push_back(place.m_Line);
        }
        m_Reading.m_Elements[line] = std::move(ends);
        return true;
    }

    KnownLayout& m_Known;
    const Layout& m_Layout;
    const SampleTree& m_Tree;
    std::uint32_t m_Sample;
    Reading& m_Reading;
    Conditions m_Conditions;
    SampleConflict m_Conflict;
};

const KnownLayout::Labels& KnownLayout::LabelsOf(LayoutIndex first, LayoutIndex end) {
    const auto [entry, isNew] = m_Labels.try_emplace(first);
    if (isNew) {
        for (LayoutIndex node = first; node < end;) {
            if (!m_Layout[node].m_Label.empty())
                entry->second.insert(m_Layout[node].m_Label);
            node = m_Layout[node].m_Kind == LayoutKind::Record ? m_Layout[node].m_End : node + 1;
        }
    }
    return entry->second;
}

std::optional<SampleConflict> KnownLayout::ReadOne(const SampleTree& tree, std::uint32_t sample) {
    return Reader(*this, tree, sample).Run();
}

// Whether one of the doubts, read the other way, makes the layout agree with the sample. It is read so from now on.
bool KnownLayout::Settle(const SampleTree& tree, std::uint32_t sample) {
    std::vector<LayoutIndex> doubtful; // the last that the sample has come to first
    for (const LayoutIndex node : m_Readings[sample].m_Fields) {
        if (node != kNoLayoutIndex && m_Layout[node].m_IsDoubtful &&
            (m_Layout[node].m_Kind == LayoutKind::Count || m_Layout[node].m_Kind == LayoutKind::Int ||
             m_Layout[node].m_Doubt.m_IsOfWidth) &&
            std::find(doubtful.begin(), doubtful.end(), node) == doubtful.end())
            doubtful.insert(doubtful.begin(), node);
    }
    doubtful.resize(std::min(doubtful.size(), kMostTries));
    const Layout before = m_Layout;
    const auto agrees = [&](Layout layout) {
        m_Labels.clear();
        m_Layout = std::move(layout);
        return !ReadOne(tree, sample).has_value();
    };
    for (const LayoutIndex node : doubtful) {
        if (before[node].m_Kind == LayoutKind::Count) {
            if (before[node].m_End > node + 1 && agrees(WithoutCount(before, node)))
                return true;
            continue;
        }
        for (LayoutIndex labels = 1; labels <= kMostLabels; ++labels) {
            std::optional<Layout> counting = WithCount(before, node, labels);
            if (counting.has_value() && agrees(std::move(*counting)))
                return true;
        }
    }
    m_Labels.clear();
    m_Layout = before;
    return false;
}

std::optional<SampleConflict> KnownLayout::Read(std::span<const SampleTree* const> trees) {
    m_Readings.assign(trees.size(), {});
    int settled = 0;
    for (std::uint32_t sample = 0; sample < trees.size(); ++sample) {
        std::optional<SampleConflict> conflict = ReadOne(*trees[sample], sample);
        if (!conflict.has_value())
            continue;
        if (++settled > kMostSettled || !Settle(*trees[sample], sample))
            return conflict;
        sample = static_cast<std::uint32_t>(-1); // all once more
    }
    return std::nullopt;
}

const std::vector<std::uint32_t>* KnownLayout::ElementsAt(std::uint32_t sample, std::uint32_t line) const {
    const auto found = m_Readings[sample].m_Elements.find(line);
    return found != m_Readings[sample].m_Elements.end() ? &found->second : nullptr;
}

std::vector<LayoutIndex> KnownLayout::FieldsIn(LayoutIndex first, LayoutIndex end) const {
    std::vector<LayoutIndex> fields;
    for (LayoutIndex node = first; node < end;) {
        const bool isAround = m_Layout[node].m_Kind == LayoutKind::When || m_Layout[node].m_Kind == LayoutKind::Use;
        if (!isAround)
            fields.push_back(node);
        node = isAround ? node + 1 : m_Layout[node].m_End;
    }
    return fields;
}

} // namespace Corvid
