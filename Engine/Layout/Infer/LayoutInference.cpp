#include "Engine/Layout/Infer/LayoutInference.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "Engine/Layout/Infer/BlockRuns.h"
#include "Engine/Layout/Infer/ConditionFinder.h"
#include "Engine/Layout/Infer/DraftBuilder.h"
#include "Engine/Layout/Infer/DraftLayout.h"
#include "Engine/Layout/Infer/KnownLayout.h"
#include "Engine/Layout/Infer/LoneBinaries.h"
#include "Engine/Layout/Infer/MarkAdvice.h"
#include "Engine/Layout/Infer/SamplesOfType.h"
#include "Engine/Layout/Infer/TwinEvidence.h"

namespace Corvid {

namespace {

// Makes the layout of one type, step by step.
class TypeInference {
public:
    TypeInference(const SamplesOfType& samples, const LayoutBlocks& blocks, const LayoutToContinue* known,
                  InferredType& result)
        : m_Samples(samples), m_Blocks(blocks), m_Result(result) {
        if (known != nullptr) {
            m_Known.emplace(known->m_Layout);
            m_KnownName = known->m_Name;
            m_MayAssume = known->m_Layout.IsAssumed();
        }
        for (const TextSample& text : samples.m_Texts)
            m_Trees.push_back(text.m_Tree.get());
    }

    void Run(bool areTwinsBelieved);

    // Binary samples that no layout reads.
    std::size_t GetUnfitCount() const { return m_UnfitCount; }

private:
    const KnownLayout* GetKnown() const { return m_Known.has_value() ? &*m_Known : nullptr; }
    const Layout* GetKnownLayout() const { return m_Known.has_value() ? &m_Known->GetLayout() : nullptr; }
    InferenceProblem Describe(const SampleConflict& conflict) const;
    std::optional<SampleConflict> ReadTexts();
    std::vector<const BinarySample*> ReadTwins(const LayoutMaker& maker);
    void ReadBinaries(const LayoutMaker& maker, bool areTwinsBelieved);

    const SamplesOfType& m_Samples;
    const LayoutBlocks& m_Blocks;
    InferredType& m_Result;
    std::optional<KnownLayout> m_Known;
    std::string m_KnownName;
    std::vector<const SampleTree*> m_Trees;
    std::unique_ptr<RecordDraft> m_Draft = std::make_unique<RecordDraft>();
    std::size_t m_UnfitCount = 0;
    bool m_MayAssume = true; // usual kinds of decimals and digits, as no bytes have told of any
};

InferenceProblem TypeInference::Describe(const SampleConflict& conflict) const {
    const auto placeOf = [this](const SamplePlace& place) {
        return InferenceProblem::Place{m_Samples.m_Texts[place.m_Sample].m_Sample->m_Name,
                                       (*m_Trees[place.m_Sample])[place.m_Line].m_Line};
    };
    InferenceProblem problem{conflict.m_Message, placeOf(conflict.m_First), {}};
    const bool isOnePlace =
        conflict.m_First.m_Sample == conflict.m_Second.m_Sample && conflict.m_First.m_Line == conflict.m_Second.m_Line;
    if (conflict.m_LayoutLine > 0)
        problem.m_Other = {m_KnownName, conflict.m_LayoutLine};
    else if (conflict.m_LayoutLine == 0 && !isOnePlace)
        problem.m_Other = placeOf(conflict.m_Second);
    return problem;
}

// Fields of which nobody knows when they are there.
std::size_t CountUnknown(const RecordDraft& record) {
    std::size_t count = 0;
    for (const DraftField& field : record.m_Fields) {
        const auto isUnknown = [](const DraftWhen& when) { return when.IsUnknown(); };
        count += std::any_of(field.m_Whens.begin(), field.m_Whens.end(), isUnknown) ? 1u : 0u;
        count += field.m_Inner != nullptr ? CountUnknown(*field.m_Inner) : 0;
    }
    return count;
}

// Cautiously first; boldly where that explains more.
std::optional<SampleConflict> TypeInference::ReadTexts() {
    auto conflict = BuildDraft(m_Trees, GetKnown(), true, *m_Draft);
    if (!conflict.has_value())
        FindConditions(*m_Draft, m_Trees, GetKnown());
    const std::size_t unknown = CountUnknown(*m_Draft);
    if (!conflict.has_value() && unknown == 0)
        return std::nullopt;
    auto bold = std::make_unique<RecordDraft>();
    if (BuildDraft(m_Trees, GetKnown(), false, *bold).has_value())
        return conflict;
    FindConditions(*bold, m_Trees, GetKnown());
    if (conflict.has_value() || CountUnknown(*bold) < unknown)
        m_Draft = std::move(bold);
    return std::nullopt;
}

// Returns the binary samples that have no twin.
std::vector<const BinarySample*> TypeInference::ReadTwins(const LayoutMaker& maker) {
    TwinEvidence twins(*m_Draft, m_Trees, m_Samples.m_Binaries);
    twins.NarrowKinds();
    twins.SettleWidths(maker.Make(*m_Draft, true));
    m_Result.m_TwinCount = static_cast<int>(twins.GetTwinCount());
    m_MayAssume = m_MayAssume && twins.GetTwinCount() == 0;
    return twins.GetOthers();
}

void TypeInference::ReadBinaries(const LayoutMaker& maker, bool areTwinsBelieved) {
    std::vector<const BinarySample*> lone;
    if (areTwinsBelieved) {
        lone = ReadTwins(maker);
    } else {
        for (const BinarySample& binary : m_Samples.m_Binaries)
            lone.push_back(&binary);
    }
    SettleDecimals(*m_Draft);
    const LoneBinaries read = ReadLoneBinaries(std::move(lone), *m_Draft, maker);
    m_MayAssume = m_MayAssume && read.m_MayAssume;
    m_UnfitCount = read.m_Unfit.size();
    for (const BinarySample* file : read.m_Unfit)
        m_Result.m_Problems.push_back(
            {"no layout that goes with the text samples reads this file whole", {file->m_Sample->m_Name, 0}, {}});
}

void TypeInference::Run(bool areTwinsBelieved) {
    if (m_Samples.m_Texts.empty() && !m_Known.has_value()) {
        m_Result.m_Problems.push_back({"binary samples alone tell no labels; add a text sample of this type",
                                       {m_Samples.m_Binaries.front().m_Sample->m_Name, 0},
                                       {}});
        return;
    }
    std::optional<SampleConflict> conflict;
    if (m_Known.has_value())
        conflict = m_Known->Read(m_Trees);
    if (!conflict.has_value())
        conflict = ReadTexts();
    if (conflict.has_value()) {
        m_Result.m_Problems.push_back(Describe(*conflict));
        return;
    }
    FindBlocks(*m_Draft, m_Blocks);
    const LayoutMaker maker(m_Result.m_TypeWord, m_Blocks, GetKnownLayout());
    ReadBinaries(maker, areTwinsBelieved);
    const DraftLayout made = maker.Make(*m_Draft, m_MayAssume);
    m_Result.m_Layout = made.m_Layout;
    m_Result.m_Marks = DescribeMarks(made);
    m_Result.m_HasLayout = true;
}

// What looks like a twin may be an accident, of zeros above all. It is when the other binary samples say otherwise.
InferredType InferType(const SamplesOfType& samples, const LayoutBlocks& blocks, const LayoutToContinue* known,
                       const InferredType& begun) {
    InferredType result = begun;
    TypeInference inference(samples, blocks, known, result);
    inference.Run(true);
    if (inference.GetUnfitCount() == 0 || result.m_TwinCount == 0)
        return result;
    InferredType other = begun;
    TypeInference withoutTwins(samples, blocks, known, other);
    withoutTwins.Run(false);
    return withoutTwins.GetUnfitCount() < inference.GetUnfitCount() ? other : result;
}

} // namespace

Inference InferLayouts(std::span<const Sample> samples, const LayoutBlocks& blocks, const LayoutToContinue* known) {
    Inference inference;
    for (const auto& [word, ofType] : SortByType(samples, inference.m_Problems)) {
        InferredType begun;
        begun.m_TypeWord = word;
        begun.m_AnySample = ofType.m_Texts.empty() ? ofType.m_Binaries.front().m_Sample->m_Name
                                                   : ofType.m_Texts.front().m_Sample->m_Name;
        begun.m_TextCount = static_cast<int>(ofType.m_Texts.size());
        begun.m_BinaryCount = static_cast<int>(ofType.m_Binaries.size());
        const bool isKnown = known != nullptr && known->m_Layout.GetName() == word;
        inference.m_Types.push_back(InferType(ofType, blocks, isKnown ? known : nullptr, begun));
    }
    return inference;
}

} // namespace Corvid
