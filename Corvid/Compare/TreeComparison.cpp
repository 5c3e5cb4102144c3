#include "Corvid/Compare/TreeComparison.h"

#include <string>
#include <vector>

#include "Corvid/Compare/ComparedList.h"
#include "Corvid/Compare/ElementPairing.h"
#include "Corvid/Compare/ListStyle.h"
#include "Corvid/Compare/ListSummary.h"
#include "Corvid/Compare/SequenceAlignment.h"
#include "Corvid/Compare/ValueComparison.h"

namespace Corvid {

namespace {

// Paths name elements by their place in the file that they are in; of what both files have, in the one after.
class TreeComparison {
public:
    TreeComparison(const ValueTree& before, const ValueTree& after, const CompareOptions& options, DifferenceSink& sink)
        : m_Values(before, after, options), m_Sink(sink) {}

    // Fields that follow each other, of a record or of the whole file, whose paths begin with `prefix`.
    void CompareFields(ValueSpan before, ValueSpan after, const std::string& prefix) {
        if (TryInLockstep(before, after, prefix))
            return;
        const std::vector<ValueIndex> beforeFields = FieldsOf(m_Values.GetBefore(), before);
        const std::vector<ValueIndex> afterFields = FieldsOf(m_Values.GetAfter(), after);
        std::size_t a = 0;
        std::size_t b = 0;
        const auto tellUpTo = [&](std::size_t beforeEnd, std::size_t afterEnd) {
            for (; a < beforeEnd; ++a)
                TellOneSided(Change::Removed, beforeFields[a], prefix + BeforeLabel(beforeFields[a]));
            for (; b < afterEnd; ++b)
                TellOneSided(Change::Added, afterFields[b], prefix + AfterLabel(afterFields[b]));
        };
        for (const AlignedPair pair : AlignSequences(LabelsOf(beforeFields, true), LabelsOf(afterFields, false))) {
            tellUpTo(pair.m_Before, pair.m_After);
            CompareNodes(beforeFields[a], afterFields[b], prefix, prefix + AfterLabel(afterFields[b]), {});
            ++a;
            ++b;
        }
        tellUpTo(beforeFields.size(), afterFields.size());
    }

private:
    const ValueNode& Before(ValueIndex index) const { return m_Values.GetBefore()[index]; }
    const ValueNode& After(ValueIndex index) const { return m_Values.GetAfter()[index]; }
    std::string BeforeLabel(ValueIndex index) const {
        return std::string(m_Values.GetBefore().GetLabel(Before(index)));
    }
    std::string AfterLabel(ValueIndex index) const { return std::string(m_Values.GetAfter().GetLabel(After(index))); }

    // Almost always both records have the same fields.
    bool TryInLockstep(ValueSpan before, ValueSpan after, const std::string& prefix) {
        ValueIndex a = before.m_Begin;
        ValueIndex b = after.m_Begin;
        for (; a < before.m_End && b < after.m_End; a = Before(a).m_End, b = After(b).m_End) {
            if (!m_Values.HaveSameLabel(a, b))
                return false;
        }
        if (a < before.m_End || b < after.m_End)
            return false;
        for (a = before.m_Begin, b = after.m_Begin; a < before.m_End; a = Before(a).m_End, b = After(b).m_End)
            CompareNodes(a, b, prefix, prefix + AfterLabel(b), {});
        return true;
    }

    static std::vector<ValueIndex> FieldsOf(const ValueTree& tree, ValueSpan span) {
        std::vector<ValueIndex> fields;
        for (ValueIndex i = span.m_Begin; i < span.m_End; i = tree[i].m_End)
            fields.push_back(i);
        return fields;
    }

    std::vector<std::uint64_t> LabelsOf(const std::vector<ValueIndex>& fields, bool areBefore) const {
        std::vector<std::uint64_t> labels;
        for (const ValueIndex field : fields)
            labels.push_back(areBefore ? m_Values.GetBeforeLabel(field) : m_Values.GetAfterLabel(field));
        return labels;
    }

    // Two values under one label, at `path`. `indices` are those of the element that they are, if they are one: "[3]";
    // elements of a list within a list begin their path with `prefix`.
    void CompareNodes(ValueIndex before, ValueIndex after, const std::string& prefix, const std::string& path,
                      const std::string& indices) {
        if (m_Sink.IsDone())
            return;
        const ValueNode& a = Before(before);
        const ValueNode& b = After(after);
        if (a.m_Kind == ValueKind::List && b.m_Kind == ValueKind::List)
            CompareLists(before, after, prefix, indices);
        else if (a.m_Kind == ValueKind::Record && b.m_Kind == ValueKind::Record)
            CompareFields({before + 1, a.m_End}, {after + 1, b.m_End}, path + '.');
        else if (!m_Values.AreSameValues(before, after))
            TellChanged(before, after, path);
    }

    void CompareLists(ValueIndex before, ValueIndex after, const std::string& prefix, const std::string& indices) {
        const ListStyle style = ListStyleOf(prefix + AfterLabel(after));
        if (style == ListStyle::Derived && !m_Values.GetOptions().m_IsWithDerived)
            return;
        const ComparedList list = {{m_Values.GetBefore(), before, prefix, indices},
                                   {m_Values.GetAfter(), after, prefix, indices}};
        const auto& beforeElements = list.m_Before.GetElements();
        const auto& afterElements = list.m_After.GetElements();
        if (style == ListStyle::Paired)
            CompareElements(list, PairElements(m_Values, beforeElements, afterElements));
        else if (m_Values.GetOptions().m_IsFull)
            CompareElements(list, PairPlaces(m_Values, beforeElements, afterElements));
        else
            SummariseList(m_Values, list, m_Sink);
    }

    // In the order of the elements after, those that were removed where they stood.
    void CompareElements(const ComparedList& list, const ElementPairing& pairing) {
        const auto beforeSize = static_cast<std::uint32_t>(pairing.m_AfterOf.size());
        const auto afterSize = static_cast<std::uint32_t>(pairing.m_BeforeOf.size());
        std::uint32_t a = 0;
        std::uint32_t b = 0;
        while ((a < beforeSize || b < afterSize) && !m_Sink.IsDone()) {
            if (a < beforeSize && pairing.m_AfterOf[a] == kNoElement) {
                TellElement(Change::Removed, list.m_Before, a++);
            } else if (a < beforeSize && pairing.m_IsMoved[pairing.m_AfterOf[a]]) {
                ++a; // told where it went
            } else if (pairing.m_BeforeOf[b] == kNoElement) {
                TellElement(Change::Added, list.m_After, b++);
            } else if (pairing.m_IsMoved[b]) {
                TellMoved(list.m_Before.GetElementPath(pairing.m_BeforeOf[b]), list.m_After.GetElementPath(b));
                CompareElement(list, pairing.m_BeforeOf[b], b);
                ++b;
            } else {
                CompareElement(list, a++, b++);
            }
        }
    }

    void CompareElement(const ComparedList& list, std::uint32_t before, std::uint32_t after) {
        const ValueSpan a = list.m_Before.GetElements()[before];
        const ValueSpan b = list.m_After.GetElements()[after];
        if (m_Values.AreSame(a, b))
            return;
        ValueIndex j = b.m_Begin;
        for (ValueIndex i = a.m_Begin; i < a.m_End; i = Before(i).m_End) {
            if (j < b.m_End && m_Values.HaveSameLabel(i, j)) {
                CompareNodes(i, j, list.m_After.GetPrefix(), list.m_After.GetValuePath(after, j),
                             list.m_After.GetIndices(after, j));
                j = After(j).m_End;
            } else {
                TellOneSided(Change::Removed, i, list.m_Before.GetValuePath(before, i));
            }
        }
        for (; j < b.m_End; j = After(j).m_End)
            TellOneSided(Change::Added, j, list.m_After.GetValuePath(after, j));
    }

    void TellChanged(ValueIndex before, ValueIndex after, const std::string& path) {
        Difference difference;
        difference.m_Field = path;
        difference.m_From = {&m_Values.GetBefore(), before};
        difference.m_To = {&m_Values.GetAfter(), after};
        m_Sink.Take(difference);
    }

    void TellMoved(const std::string& from, const std::string& to) {
        Difference difference;
        difference.m_Change = Change::Moved;
        difference.m_Field = from;
        difference.m_MovedTo = to;
        m_Sink.Take(difference);
    }

    void TellElement(Change change, const ListSide& side, std::uint32_t place) {
        const ValueTree& tree = change == Change::Added ? m_Values.GetAfter() : m_Values.GetBefore();
        const ValueSpan element = side.GetElements()[place];
        TellOneSided(change, MainValueOf(tree, element), side.GetElementPath(place), NameOf(tree, element));
    }

    void TellOneSided(Change change, ValueIndex node, const std::string& path, std::u16string_view name = {}) {
        Difference difference;
        difference.m_Change = change;
        difference.m_Field = path;
        difference.m_Name = name;
        if (change == Change::Added)
            difference.m_To = {&m_Values.GetAfter(), node};
        else
            difference.m_From = {&m_Values.GetBefore(), node};
        m_Sink.Take(difference);
    }

    ValueComparison m_Values;
    DifferenceSink& m_Sink;
};

} // namespace

void CompareTrees(const ValueTree& before, const ValueTree& after, const CompareOptions& options,
                  DifferenceSink& sink) {
    TreeComparison(before, after, options, sink).CompareFields({0, before.GetSize()}, {0, after.GetSize()}, {});
}

} // namespace Corvid
