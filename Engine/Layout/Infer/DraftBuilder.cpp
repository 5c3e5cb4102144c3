#include "Engine/Layout/Infer/DraftBuilder.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "Engine/Layout/Infer/FieldOrder.h"
#include "Engine/Layout/Infer/ListFolding.h"

namespace Corvid {

namespace {

constexpr std::size_t kMostFields = 10'000; // of a layout
constexpr std::size_t kMostWords = 64;      // of an enumeration

template <class Value> void Remember(std::vector<Value>& values, const Value& value, std::size_t most) {
    const auto place = std::lower_bound(values.begin(), values.end(), value);
    if ((place == values.end() || *place != value) && values.size() <= most)
        values.insert(place, value);
}

class Builder {
public:
    Builder(std::span<const SampleTree* const> trees, const KnownLayout* known, bool isCautious)
        : m_Trees(trees), m_Known(known), m_IsCautious(isCautious) {}

    std::optional<SampleConflict> Build(RecordDraft& record);

private:
    // What a field is in one sample.
    struct Reading {
        DraftShape m_Shape;
        KindSet m_Kinds;
    };

    void TakeKnown(DraftField& field) const;
    KindSet KindsOfRows(const SampleTree& tree, std::uint32_t line) const;
    std::optional<SampleConflict> ReadField(RecordDraft& record, std::uint32_t index);
    Reading ReadToken(const DraftInstance& instance, const SampleToken& token) const;
    void ReconcileCounts(DraftField& field, std::string_view value, Reading& reading) const;
    std::optional<SampleConflict> EnterField(RecordDraft& record, std::uint32_t index);

    std::span<const SampleTree* const> m_Trees;
    const KnownLayout* m_Known;
    bool m_IsCautious;
    std::size_t m_FieldCount = 0;
};

// Of the lines below a label without a value: rows make it a matrix.
KindSet Builder::KindsOfRows(const SampleTree& tree, std::uint32_t line) const {
    std::uint32_t rows = 0;
    KindSet kinds{LayoutKind::Vector3, LayoutKind::Vector4};
    for (std::uint32_t row = line + 1; row < tree[line].m_End; row = tree[row].m_End, ++rows) {
        if (!tree[row].m_Label.empty())
            return {};
        kinds &= KindsOfValue(tree[row].m_Value);
    }
    if (rows == 3 && kinds.Has(LayoutKind::Vector3))
        return {LayoutKind::Matrix33};
    return rows == 4 && kinds.Has(LayoutKind::Vector4) ? KindSet{LayoutKind::Matrix44} : KindSet{};
}

// What the values of a field are like.
void Gather(DraftField& field, std::string_view value) {
    if (field.m_Shape == DraftShape::Record)
        return;
    if (const auto number = ReadIntText(value))
        Remember(field.m_Numbers, *number, kMostNumbers);
    if (field.m_Shape == DraftShape::List)
        return;
    if (field.m_Kinds.Has(LayoutKind::Bool))
        field.m_WasSeen[value == "TRUE" ? 1 : 0] = true;
    if (field.m_Kinds.Has(LayoutKind::String))
        Remember(field.m_Words, ReadStringText(value), kMostWords);
    if ((field.m_Kinds & kNumberKinds).IsEmpty())
        return;
    field.m_Decimals.Add(value);
    field.m_HasNegative = field.m_HasNegative || value.starts_with('-');
    field.m_Largest = std::max(field.m_Largest, std::abs(std::strtod(std::string(value).c_str(), nullptr)));
}

// The kinds that a field of a known layout leaves open.
KindSet KindsOfKnown(const LayoutNode& node, bool isAssumed) {
    const LayoutKind kind = node.m_Kind == LayoutKind::Word ? LayoutKind::String : node.m_Kind;
    const bool isDecimal = kind == LayoutKind::Float || kind == LayoutKind::Double;
    if (node.m_IsDoubtful && isDecimal)
        return {LayoutKind::Float, LayoutKind::Double};
    if (node.m_IsDoubtful && node.m_Doubt.m_IsOfWidth)
        return {LayoutKind::Int, LayoutKind::Int64};
    if (node.m_IsDoubtful && kNumberKinds.Has(kind))
        return {LayoutKind::Int, LayoutKind::Int64, LayoutKind::Color};
    if (isAssumed && isDecimal)
        return {LayoutKind::Float, LayoutKind::Double};
    if (isAssumed && (kind == LayoutKind::Int || kind == LayoutKind::Int64))
        return {LayoutKind::Int, LayoutKind::Int64};
    return {kind == LayoutKind::Count ? LayoutKind::Int : kind};
}

// Starts a field of a known layout with what is known of it.
void Builder::TakeKnown(DraftField& field) const {
    const Layout& layout = m_Known->GetLayout();
    const LayoutNode& node = layout[field.m_Known];
    const bool isEmptyCount = node.m_Kind == LayoutKind::Count && node.m_End == field.m_Known + 1;
    if (node.m_Kind == LayoutKind::Record)
        field.m_Shape = DraftShape::Record;
    else if (node.m_Kind == LayoutKind::Count && !(isEmptyCount && node.m_IsDoubtful))
        field.m_Shape = DraftShape::List;
    field.m_Kinds = field.m_Shape == DraftShape::Record ? KindSet{LayoutKind::Record}
                    : field.m_Shape == DraftShape::List ? KindSet{LayoutKind::Count}
                                                        : KindsOfKnown(node, layout.IsAssumed());
    if (field.m_Shape == DraftShape::Value && node.m_Kind != LayoutKind::Count)
        field.m_Usual = node.m_Kind;
    field.m_IsWidthOpen = node.m_Doubt.m_IsOfWidth;
    field.m_IsWord = node.m_Kind == LayoutKind::Word;
    field.m_Words = node.m_Words;
    std::sort(field.m_Words.begin(), field.m_Words.end());
    field.m_Numbers = node.m_Doubt.m_SeenNumbers;
    std::sort(field.m_Numbers.begin(), field.m_Numbers.end());
    if (node.m_Kind == LayoutKind::Bool) {
        for (const bool value : {false, true}) {
            const auto& seen = node.m_Doubt.m_SeenBools;
            field.m_WasSeen[value ? 1 : 0] =
                !node.m_IsDoubtful || std::find(seen.begin(), seen.end(), value) != seen.end();
        }
    }
}

// As far as the lines alone tell.
Builder::Reading Builder::ReadToken(const DraftInstance& instance, const SampleToken& token) const {
    if (token.m_IsCount)
        return {DraftShape::List, {LayoutKind::Count}};
    const SampleTree& tree = *m_Trees[instance.m_Sample];
    const std::string_view value = tree[token.m_Line].m_Value;
    if (!value.empty())
        return {DraftShape::Value, KindsOfValue(value)};
    const KindSet matrix = KindsOfRows(tree, token.m_Line);
    if (matrix.IsEmpty())
        return {DraftShape::Record, {LayoutKind::Record}};
    return {DraftShape::Value, matrix};
}

// The layout and the samples may differ in whether a count counts anything.
void Builder::ReconcileCounts(DraftField& field, std::string_view value, Reading& reading) const {
    if (reading.m_Shape == DraftShape::Value && field.m_Shape == DraftShape::List && value == "0")
        reading = {DraftShape::List, {LayoutKind::Count}}; // of which nobody has seen an element
    if (reading.m_Shape == DraftShape::List && field.m_Shape == DraftShape::Value &&
        m_Known->GetLayout()[field.m_Known].m_Kind == LayoutKind::Count) {
        field.m_Shape = DraftShape::List;
        field.m_Kinds = {LayoutKind::Count};
    }
}

std::optional<SampleConflict> Builder::ReadField(RecordDraft& record, std::uint32_t index) {
    DraftField& field = record.m_Fields[index];
    const bool isKnown = field.m_Known != kNoLayoutIndex;
    if (isKnown)
        TakeKnown(field);
    bool isFirst = !isKnown;
    SamplePlace firstPlace;
    for (std::uint32_t i = 0; i < record.m_Instances.size(); ++i) {
        if (field.m_Tokens[i] == kNone)
            continue;
        const DraftInstance& instance = record.m_Instances[i];
        const SampleToken& token = instance.m_Tokens[field.m_Tokens[i]];
        const SampleLine& line = (*m_Trees[instance.m_Sample])[token.m_Line];
        const SamplePlace place{instance.m_Sample, token.m_Line};
        Reading reading = ReadToken(instance, token);
        if (isKnown)
            ReconcileCounts(field, line.m_Value, reading);
        if (reading.m_Kinds.IsEmpty())
            return SampleConflict{"'" + field.m_Label + "' has no value of any kind", place, place, 0};
        if (isFirst) {
            field.m_Shape = reading.m_Shape;
            field.m_Kinds = reading.m_Kinds;
            firstPlace = place;
            isFirst = false;
        }
        field.m_Kinds &= reading.m_Kinds;
        const bool agrees = field.m_Shape == reading.m_Shape && !field.m_Kinds.IsEmpty();
        if (!agrees && isKnown)
            return SampleConflict{"'" + field.m_Label + "' has a value of another kind than in the layout", place,
                                  place, m_Known->GetLayout()[field.m_Known].m_Line};
        if (!agrees)
            return SampleConflict{"'" + field.m_Label + "' has a value of another kind here than there", place,
                                  firstPlace, 0};
        Gather(field, line.m_Value);
    }
    return std::nullopt;
}

// Gathers the records, or the elements, that stand under one field.
std::optional<SampleConflict> Builder::EnterField(RecordDraft& record, std::uint32_t index) {
    DraftField& field = record.m_Fields[index];
    field.m_Inner = std::make_unique<RecordDraft>();
    RecordDraft& inner = *field.m_Inner;
    inner.m_Outer = &record;
    inner.m_OuterField = index;
    if (field.m_Known != kNoLayoutIndex) {
        inner.m_KnownFirst = field.m_Known + 1;
        inner.m_KnownEnd = m_Known->GetLayout()[field.m_Known].m_End;
    }
    for (std::uint32_t i = 0; i < record.m_Instances.size(); ++i) {
        if (field.m_Tokens[i] == kNone)
            continue;
        DraftInstance& instance = record.m_Instances[i];
        SampleToken& token = instance.m_Tokens[field.m_Tokens[i]];
        const SampleTree& tree = *m_Trees[instance.m_Sample];
        if (field.m_Shape == DraftShape::Record) {
            DraftInstance& added = inner.m_Instances.emplace_back();
            added.m_Sample = instance.m_Sample;
            added.m_Parent = i;
            for (std::uint32_t line = token.m_Line + 1; line < tree[token.m_Line].m_End; line = tree[line].m_End) {
                if (tree[line].m_Label.empty())
                    return SampleConflict{"a row in brackets, but no matrix of three or four rows",
                                          {instance.m_Sample, line},
                                          {instance.m_Sample, line},
                                          0};
                added.m_Tokens.push_back({line, false, {}});
            }
            continue;
        }
        for (std::vector<SampleToken>& element : token.m_Elements) {
            DraftInstance& added = inner.m_Instances.emplace_back();
            added.m_Sample = instance.m_Sample;
            added.m_Parent = i;
            added.m_Tokens = std::move(element);
        }
    }
    return Build(inner);
}

std::optional<SampleConflict> Builder::Build(RecordDraft& record) {
    if (m_Known != nullptr)
        FoldKnownLists(record.m_Instances, *m_Known);
    FoldLists(record.m_Instances, m_Trees, m_Known, m_IsCautious);
    if (auto conflict = OrderFields(record, m_Trees, m_Known))
        return conflict;
    m_FieldCount += record.m_Fields.size();
    if (m_FieldCount > kMostFields)
        return SampleConflict{"the samples have more fields than a layout can hold", {}, {}, 0};
    for (std::uint32_t index = 0; index < record.m_Fields.size(); ++index) {
        DraftField& field = record.m_Fields[index];
        if (auto conflict = ReadField(record, index))
            return conflict;
        if (field.m_Shape == DraftShape::List) {
            const bool isProven = field.m_Known != kNoLayoutIndex && !m_Known->GetLayout()[field.m_Known].m_IsDoubtful;
            field.m_IsUnproven = !isProven && (field.m_Numbers.empty() || field.m_Numbers.back() < 2);
        }
        if (field.m_Shape != DraftShape::Value) {
            if (auto conflict = EnterField(record, index))
                return conflict;
        }
    }
    return std::nullopt;
}

// Digits that are as many as a colour has, time and again.
bool AreLikeColors(const std::vector<std::int32_t>& numbers) {
    constexpr std::int32_t kLeastOfEightDigits = 10'000'000;
    const auto likeColors = std::count_if(numbers.begin(), numbers.end(),
                                          [](std::int32_t number) { return number >= kLeastOfEightDigits; });
    return likeColors >= 2 && 2 * likeColors >= static_cast<std::ptrdiff_t>(numbers.size());
}

// Digits alone are no decimals: writers give these a point.
void DropUnlikelyKinds(RecordDraft& record) {
    for (DraftField& field : record.m_Fields) {
        if (field.IsLikelyDouble())
            field.m_Usual = LayoutKind::Double;
        if (!field.m_Usual.has_value() && field.m_Kinds.Has(LayoutKind::Color) && AreLikeColors(field.m_Numbers))
            field.m_Usual = LayoutKind::Color;
        if (field.m_Known == kNoLayoutIndex && field.m_Kinds.Has(LayoutKind::Int64)) {
            field.m_Kinds.Remove(LayoutKind::Float);
            field.m_Kinds.Remove(LayoutKind::Double);
        }
        if (field.m_Inner != nullptr)
            DropUnlikelyKinds(*field.m_Inner);
    }
}

} // namespace

std::optional<SampleConflict> BuildDraft(std::span<const SampleTree* const> trees, const KnownLayout* known,
                                         bool isCautious, RecordDraft& draft) {
    draft.m_KnownEnd = known != nullptr ? known->GetLayout().GetSize() : 0;
    for (std::uint32_t sample = 0; sample < trees.size(); ++sample) {
        DraftInstance& instance = draft.m_Instances.emplace_back();
        instance.m_Sample = sample;
        const SampleTree& tree = *trees[sample];
        for (std::uint32_t line = tree[1].m_End; line < tree.GetSize(); line = tree[line].m_End) {
            if (tree[line].m_Label.empty())
                return SampleConflict{
                    "a row in brackets, but no matrix of three or four rows", {sample, line}, {sample, line}, 0};
            instance.m_Tokens.push_back({line, false, {}});
        }
    }
    if (auto conflict = Builder(trees, known, isCautious).Build(draft))
        return conflict;
    DropUnlikelyKinds(draft);
    return std::nullopt;
}

void SettleDecimals(RecordDraft& draft) {
    for (DraftField& field : draft.m_Fields) {
        if (field.m_Decimals.IsFloat() && field.m_Kinds.Has(LayoutKind::Float))
            field.m_Kinds = {LayoutKind::Float};
        if (field.m_Inner != nullptr)
            SettleDecimals(*field.m_Inner);
    }
}

} // namespace Corvid
