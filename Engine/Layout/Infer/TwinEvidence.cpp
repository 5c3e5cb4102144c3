#include "Engine/Layout/Infer/TwinEvidence.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "Engine/Layout/Infer/IntegerWidths.h"

namespace Corvid {

namespace {

constexpr int kMostRounds = 4; // of narrowing kinds by one another
constexpr KindSet kWidths{LayoutKind::Int, LayoutKind::Int64};

// False where no kind is left to a field; then nothing is narrowed.
bool Narrow(const std::vector<std::pair<DraftField*, KindSet>>& kinds) {
    for (const auto& [field, possible] : kinds) {
        if (field->m_Shape == DraftShape::Value && (field->m_Kinds & possible).IsEmpty())
            return false;
    }
    for (const auto& [field, possible] : kinds) {
        if (field->m_Shape == DraftShape::Value)
            field->m_Kinds &= possible;
    }
    return true;
}

// Whether four more bytes of the field, or four fewer, make no difference to such numbers as the texts have.
bool IsWidthIdle(const DraftField& field, bool isFirstOpen) {
    return !field.m_HasNegative && (isFirstOpen || field.m_Largest == 0.0);
}

} // namespace

TwinEvidence::TwinEvidence(RecordDraft& draft, std::span<const SampleTree* const> trees,
                           std::span<const BinarySample> binaries)
    : m_Values(ListValues(draft, trees)) {
    const std::vector<bool> areDistinct = FindDistinctTexts(m_Values);
    std::vector<std::size_t> texts;
    for (std::size_t text = 0; text < m_Values.size(); ++text) {
        if (areDistinct[text])
            texts.push_back(text);
    }
    for (const BinarySample& binary : binaries)
        m_Twins.push_back({&binary, texts});
}

// False where it is a twin of none, or of one that contradicts what others show. Of several texts that go with the same
// bytes one is the twin at the most, so all that they say stays possible.
bool TwinEvidence::NarrowBy(Twin& twin) const {
    std::map<DraftField*, std::pair<KindSet, std::size_t>> possible; // by how many texts
    std::erase_if(twin.m_Texts, [&](std::size_t text) {
        const auto kinds = FitTwin(m_Values[text], twin.m_Binary->m_Values);
        for (const auto& [field, ofField] : kinds) {
            possible[field].first |= ofField;
            ++possible[field].second;
        }
        return kinds.empty() && !(m_Values[text].empty() && twin.m_Binary->m_Values.empty());
    });
    std::vector<std::pair<DraftField*, KindSet>> kinds;
    for (const auto& [field, ofField] : possible) {
        if (ofField.second == twin.m_Texts.size())
            kinds.emplace_back(field, ofField.first);
    }
    return !twin.m_Texts.empty() && Narrow(kinds);
}

void TwinEvidence::NarrowKinds() {
    for (int round = 0; round < kMostRounds; ++round) {
        std::erase_if(m_Twins, [&](Twin& twin) {
            const bool isTwin = NarrowBy(twin);
            if (!isTwin)
                m_Others.push_back(twin.m_Binary);
            return !isTwin;
        });
    }
}

// Whether every twin still has the content of a text, by the kinds that the fields have now.
bool TwinEvidence::DoAllFit() const {
    return std::all_of(m_Twins.begin(), m_Twins.end(), [&](const Twin& twin) {
        return std::any_of(twin.m_Texts.begin(), twin.m_Texts.end(),
                           [&](std::size_t text) { return !FitTwin(m_Values[text], twin.m_Binary->m_Values).empty(); });
    });
}

void TwinEvidence::SettleWidthsOf(std::span<DraftField* const> run) const {
    const auto compared = CompareWidths(run.size(), [&](std::span<const LayoutKind> kinds) {
        for (std::size_t i = 0; i < run.size(); ++i)
            run[i]->m_Kinds = {kinds[i]};
        return std::optional(DoAllFit());
    });
    for (DraftField* field : run)
        field->m_Kinds = kWidths;
    if (!compared.has_value())
        return;
    for (std::size_t i = 0; i < run.size(); ++i) {
        if (compared->m_IsOpen[i] && !IsWidthIdle(*run[i], i == compared->m_FirstOpen))
            return;
    }
    for (std::size_t i = 0; i < run.size(); ++i) {
        run[i]->m_IsWidthOpen = compared->m_IsOpen[i];
        run[i]->m_Usual = compared->m_Kinds[i];
        if (!compared->m_IsOpen[i])
            run[i]->m_Kinds = {compared->m_Kinds[i]};
    }
}

void TwinEvidence::SettleWidths(const DraftLayout& made) {
    const auto isOpen = [&](LayoutIndex node) {
        const DraftField* const field = made.m_Fields[node];
        return field != nullptr && !field->m_IsBuiltIn && field->m_Shape == DraftShape::Value &&
               field->m_Kinds == kWidths;
    };
    for (const std::vector<LayoutIndex>& run : FindIntegerRuns(made.m_Layout, isOpen)) {
        std::vector<DraftField*> fields;
        for (const LayoutIndex node : run)
            fields.push_back(made.m_Fields[node]);
        SettleWidthsOf(fields);
    }
}

} // namespace Corvid
