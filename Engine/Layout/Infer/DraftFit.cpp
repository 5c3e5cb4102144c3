#include "Engine/Layout/Infer/DraftFit.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "Engine/Layout/Infer/PlausibleValue.h"

namespace Corvid {

namespace {

bool IsAlways(const DraftField& field, std::int32_t number) {
    return field.m_Numbers.size() == 1 && field.m_Numbers[0] == number;
}

NumberRange RangeOf(const DraftField& field) {
    NumberRange range{
        field.m_Largest, field.m_PresentCount, field.m_HasNegative, {}, field.m_Decimals.GetDecimalPlaces()};
    if (field.AreNumbersFew())
        range.m_Numbers = field.m_Numbers;
    return range;
}

// Bytes that the field takes at least in binary, with what is nested in it.
std::size_t LeastSizeOf(const Layout& layout, LayoutIndex field) {
    std::size_t size = LeastBytesOf(layout[field].m_Kind);
    const bool isAlwaysThere = layout[field].m_Kind == LayoutKind::Record || layout[field].m_Kind == LayoutKind::Use;
    for (LayoutIndex inner = field + 1; isAlwaysThere && inner < layout[field].m_End; inner = layout[inner].m_End)
        size += LeastSizeOf(layout, inner);
    return size;
}

// Whether numbers that a binary file has in the field tell if it counts. They do not while elements may take no bytes.
bool CanNumbersTell(const DraftField& field, const Layout& layout, LayoutIndex node) {
    const LayoutIndex end = layout[node].m_End;
    if (field.m_Shape == DraftShape::List) {
        std::size_t size = 0;
        for (LayoutIndex inner = node + 1; inner < end; inner = layout[inner].m_End)
            size += LeastSizeOf(layout, inner);
        return size > 0;
    }
    if (IsAlways(field, 0)) // nobody knows what its elements would be
        return false;
    const bool mayCountOne = IsAlways(field, 1) && end < layout.GetSize();
    return !mayCountOne || LeastSizeOf(layout, end) > 0;
}

// What looks like eight bytes of a number that was always 0 or 1 may be a count with an element of zeros.
bool MayCountInstead(const DraftField& field, const std::vector<std::int32_t>& numbers) {
    return (IsAlways(field, 0) || IsAlways(field, 1)) && numbers != field.m_Numbers && !numbers.empty();
}

void TakeOverCondition(const FitAnswer& answer, LayoutIndex node, DraftWhen& when) {
    const FitAnswer::Choice choice = answer.m_Choices[node];
    if (choice.m_IsSettled && !when.m_Alternatives.empty()) {
        if (choice.m_Choice > 0)
            when.m_Condition = when.m_Alternatives[static_cast<std::size_t>(choice.m_Choice - 1)];
        when.m_Alternatives.clear();
    }
    for (const std::size_t side : {0u, 1u}) {
        if (answer.m_IsCertain)
            when.m_Samples[side] += answer.m_Sides[side][node];
    }
}

void TakeOverKind(const FitAnswer::Choice& choice, DraftField& field) {
    if (field.m_Shape != DraftShape::Value)
        return;
    const auto kind = static_cast<LayoutKind>(choice.m_Choice);
    if (choice.m_IsOfWidth) {
        field.m_Kinds = {LayoutKind::Int, LayoutKind::Int64};
        field.m_Usual = kind;
        field.m_IsWidthOpen = true;
    }
    if (choice.m_IsSettled && field.m_Kinds.Has(kind))
        field.m_Kinds = {kind};
}

void TakeOverNumbers(const std::vector<std::int32_t>& seen, DraftField& field) {
    std::vector<std::int32_t> numbers;
    std::set_union(field.m_Numbers.begin(), field.m_Numbers.end(), seen.begin(), seen.end(),
                   std::back_inserter(numbers));
    field.m_Numbers = std::move(numbers);
    if (field.m_Shape == DraftShape::List && !field.m_Numbers.empty() && field.m_Numbers.back() >= 2)
        field.m_IsUnproven = false;
}

} // namespace

FitQuestion AskAbout(const DraftLayout& made, std::uint64_t& stepsLeft) {
    FitQuestion question{made.m_Layout, {}, {}, stepsLeft};
    for (const DraftField* field : made.m_Fields) {
        KindSet& kinds = question.m_Kinds.emplace_back();
        NumberRange& range = question.m_Ranges.emplace_back();
        if (field == nullptr || field->m_Shape != DraftShape::Value)
            continue;
        range = RangeOf(*field);
        if (!field->m_IsBuiltIn && !field->m_IsWord)
            kinds = field->m_Kinds & kNumberKinds;
    }
    return question;
}

void TakeOver(const FitAnswer& answer, const DraftLayout& made) {
    for (LayoutIndex node = 0; node < made.m_Layout.GetSize(); ++node) {
        for (DraftWhen* when : made.m_Whens[node])
            TakeOverCondition(answer, node, *when);
        DraftField* const field = made.m_Fields[node];
        if (field == nullptr || field->m_IsBuiltIn)
            continue;
        const FitAnswer::Choice& choice = answer.m_Choices[node];
        if (choice.m_Choice == static_cast<int>(LayoutKind::Int64) &&
            MayCountInstead(*field, answer.m_SeenNumbers[node]))
            continue;
        TakeOverKind(choice, *field);
        if (!answer.m_IsCertain)
            continue;
        field->m_WasSeen[0] = field->m_WasSeen[0] || (answer.m_SeenBools[node] & 1) != 0;
        field->m_WasSeen[1] = field->m_WasSeen[1] || (answer.m_SeenBools[node] & 2) != 0;
        if (CanNumbersTell(*field, made.m_Layout, node))
            TakeOverNumbers(answer.m_SeenNumbers[node], *field);
    }
}

} // namespace Corvid
