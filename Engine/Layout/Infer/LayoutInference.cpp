#include "Engine/Layout/Infer/LayoutInference.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>

#include "Engine/Layout/Infer/BinaryFit.h"
#include "Engine/Layout/Infer/ConditionFinder.h"
#include "Engine/Layout/Infer/DraftBuilder.h"
#include "Engine/Layout/Infer/DraftLayout.h"
#include "Engine/Layout/Infer/IntegerWidths.h"
#include "Engine/Layout/Infer/KnownLayout.h"
#include "Engine/Layout/Infer/MarkAdvice.h"
#include "Engine/Layout/Infer/TwinFit.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

constexpr std::string_view kTypeLabel = "entityType";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr int kMostRounds = 4;       // of narrowing kinds by one another
constexpr std::size_t kManyMore = 4; // times as many files that fit as files that do not

struct TextSample {
    const Sample* m_Sample;
    std::unique_ptr<SampleTree> m_Tree;
};

struct BinarySample {
    const Sample* m_Sample;
    std::string_view m_Values; // behind the word of the type
};

struct SamplesOfType {
    std::vector<TextSample> m_Texts;
    std::vector<BinarySample> m_Binaries;
};

// Makes the layout of one type, step by step.
class TypeInference {
public:
    TypeInference(const SamplesOfType& samples, const LayoutBlocks& blocks, const LayoutToContinue* known,
                  bool areTwinsBelieved, InferredType& result)
        : m_Samples(samples), m_Blocks(blocks), m_AreTwinsBelieved(areTwinsBelieved), m_Result(result) {
        if (known != nullptr) {
            m_Known.emplace(known->m_Layout);
            m_KnownName = known->m_Name;
            m_HasBytes = !known->m_Layout.IsAssumed();
        }
        for (const TextSample& text : samples.m_Texts)
            m_Trees.push_back(text.m_Tree.get());
    }

    void Run();

    // Binary samples that no layout reads.
    std::size_t GetUnfitCount() const { return m_UnfitCount; }

private:
    void Report(const SampleConflict& conflict);
    const KnownLayout* GetKnown() const { return m_Known.has_value() ? &*m_Known : nullptr; }
    DraftLayout Make(bool isAssumed) {
        return MakeLayout(*m_Draft, m_Result.m_TypeWord, m_Blocks, isAssumed,
                          m_Known.has_value() ? &m_Known->GetLayout() : nullptr);
    }
    std::optional<SampleConflict> ReadTexts();
    struct Twins;
    bool NarrowByTwins(Twins& twins, const std::vector<std::vector<SampleValue>>& values);
    void CompareWidthsInTwins(const std::vector<Twins>& all, const std::vector<std::vector<SampleValue>>& values);
    void FitTwins();
    bool Narrow(const std::vector<std::pair<DraftField*, KindSet>>& kinds);
    void FitOthers();
    void FitGroup(std::vector<const BinarySample*> files);
    FitAnswer::Verdict FitSideBySide(std::span<const BinarySample* const> files, bool isTakenOver);
    void Apply(const DraftLayout& made, const FitAnswer& answer);

    const SamplesOfType& m_Samples;
    const LayoutBlocks& m_Blocks;
    bool m_AreTwinsBelieved;
    InferredType& m_Result;
    std::optional<KnownLayout> m_Known;
    std::string m_KnownName;
    std::vector<const SampleTree*> m_Trees;
    std::unique_ptr<RecordDraft> m_Draft = std::make_unique<RecordDraft>();
    std::vector<const BinarySample*> m_Others; // binary samples without a twin
    std::size_t m_UnfitCount = 0;
    bool m_HasBytes = false;
    std::uint64_t m_StepsLeft = kMostStepsOfType;
};

void TypeInference::Report(const SampleConflict& conflict) {
    const auto placeOf = [this](const SamplePlace& place) {
        return InferenceProblem::Place{m_Samples.m_Texts[place.m_Sample].m_Sample->m_Name,
                                       (*m_Trees[place.m_Sample])[place.m_Line].m_Line};
    };
    InferenceProblem& problem = m_Result.m_Problems.emplace_back();
    problem.m_Message = conflict.m_Message;
    problem.m_Place = placeOf(conflict.m_First);
    if (conflict.m_LayoutLine > 0)
        problem.m_Other = {m_KnownName, conflict.m_LayoutLine};
    const bool isOne =
        conflict.m_First.m_Sample == conflict.m_Second.m_Sample && conflict.m_First.m_Line == conflict.m_Second.m_Line;
    if (!isOne && conflict.m_LayoutLine == 0)
        problem.m_Other = placeOf(conflict.m_Second);
}

// False where no kind is left to a field.
bool TypeInference::Narrow(const std::vector<std::pair<DraftField*, KindSet>>& kinds) {
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

// A binary sample and the text samples that it may be a twin of.
struct TypeInference::Twins {
    const BinarySample* m_Binary;
    std::vector<std::size_t> m_Texts;
};

// False where it is a twin of none, or of one that contradicts what others show. Of several texts that go with the same
// bytes one is the twin at the most, so all that they say stays possible.
bool TypeInference::NarrowByTwins(Twins& twins, const std::vector<std::vector<SampleValue>>& values) {
    std::map<DraftField*, std::pair<KindSet, std::size_t>> possible; // by how many texts
    std::erase_if(twins.m_Texts, [&](std::size_t text) {
        const auto kinds = FitTwin(values[text], twins.m_Binary->m_Values);
        for (const auto& [field, ofField] : kinds) {
            possible[field].first |= ofField;
            ++possible[field].second;
        }
        return kinds.empty() && !(values[text].empty() && twins.m_Binary->m_Values.empty());
    });
    std::vector<std::pair<DraftField*, KindSet>> kinds;
    for (const auto& [field, ofField] : possible) {
        if (ofField.second == twins.m_Texts.size())
            kinds.emplace_back(field, ofField.first);
    }
    return !twins.m_Texts.empty() && Narrow(kinds);
}

// Integers side by side that only differ in which of them takes 8 bytes.
void TypeInference::CompareWidthsInTwins(const std::vector<Twins>& all,
                                         const std::vector<std::vector<SampleValue>>& values) {
    const KindSet widths{LayoutKind::Int, LayoutKind::Int64};
    const DraftLayout made = Make(true);
    const auto isOpen = [&](LayoutIndex node) {
        const DraftField* const field = made.m_Fields[node];
        return field != nullptr && !field->m_IsBuiltIn && field->m_Shape == DraftShape::Value &&
               field->m_Kinds == widths;
    };
    for (const std::vector<LayoutIndex>& run : FindIntegerRuns(made.m_Layout, isOpen)) {
        const auto readBy = [&](std::size_t i, KindSet kinds) { made.m_Fields[run[i]]->m_Kinds = kinds; };
        const auto goesWithAText = [&](const Twins& twins) {
            return std::any_of(twins.m_Texts.begin(), twins.m_Texts.end(), [&](std::size_t text) {
                return !FitTwin(values[text], twins.m_Binary->m_Values).empty();
            });
        };
        const auto compared = CompareWidths(run.size(), [&](std::span<const LayoutKind> kinds) {
            for (std::size_t i = 0; i < run.size(); ++i)
                readBy(i, {kinds[i]});
            return std::optional(std::all_of(all.begin(), all.end(), goesWithAText));
        });
        bool isAlike = compared.has_value();
        for (std::size_t i = 0; i < run.size(); ++i) {
            readBy(i, widths);
            const DraftField& field = *made.m_Fields[run[i]];
            isAlike = isAlike && (!compared->m_IsOpen[i] ||
                                  (!field.m_HasNegative && (i == compared->m_FirstOpen || field.m_Largest == 0.0)));
        }
        for (std::size_t i = 0; i < run.size() && isAlike; ++i) {
            DraftField& field = *made.m_Fields[run[i]];
            field.m_IsWidthOpen = compared->m_IsOpen[i];
            field.m_Usual = compared->m_Kinds[i];
            if (!compared->m_IsOpen[i])
                readBy(i, {compared->m_Kinds[i]});
        }
    }
}

void TypeInference::FitTwins() {
    const std::vector<std::vector<SampleValue>> values = ListValues(*m_Draft, m_Trees);
    const std::vector<bool> areDistinct = FindDistinctTexts(values);
    std::vector<Twins> all;
    for (const BinarySample& binary : m_Samples.m_Binaries) {
        Twins& twins = all.emplace_back(Twins{&binary, {}});
        for (std::size_t text = 0; text < values.size() && m_AreTwinsBelieved; ++text) {
            if (areDistinct[text])
                twins.m_Texts.push_back(text);
        }
    }
    for (int round = 0; round < kMostRounds; ++round) {
        std::erase_if(all, [&](Twins& twins) {
            const bool isTwin = NarrowByTwins(twins, values);
            if (!isTwin)
                m_Others.push_back(twins.m_Binary);
            return !isTwin;
        });
    }
    m_Result.m_TwinCount = static_cast<int>(all.size());
    CompareWidthsInTwins(all, values);
    m_HasBytes = m_HasBytes || !all.empty();
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
bool CanNumbersTell(const DraftLayout& made, LayoutIndex node) {
    const DraftField& field = *made.m_Fields[node];
    const Layout& layout = made.m_Layout;
    const LayoutIndex end = layout[node].m_End;
    if (field.m_Shape == DraftShape::List) {
        std::size_t size = 0;
        for (LayoutIndex inner = node + 1; inner < end; inner = layout[inner].m_End)
            size += LeastSizeOf(layout, inner);
        return size > 0;
    }
    if (field.m_Numbers == std::vector<std::int32_t>{0}) // nobody knows what its elements would be
        return false;
    const bool mayCountOne = field.m_Numbers == std::vector<std::int32_t>{1} && end < layout.GetSize();
    return !mayCountOne || LeastSizeOf(layout, end) > 0;
}

// What looks like eight bytes of a number that was always 0 or 1 may be a count with an element of zeros.
bool MayCountInstead(const DraftField& field, const std::vector<std::int32_t>& numbers) {
    return field.m_Numbers.size() == 1 && (field.m_Numbers[0] == 0 || field.m_Numbers[0] == 1) &&
           numbers != field.m_Numbers && !numbers.empty();
}

void TypeInference::Apply(const DraftLayout& made, const FitAnswer& answer) {
    for (LayoutIndex node = 0; node < made.m_Layout.GetSize(); ++node) {
        const FitAnswer::Choice choice = answer.m_Choices[node];
        for (DraftWhen* when : made.m_Whens[node]) {
            if (choice.m_IsSettled && !when->m_Alternatives.empty()) {
                if (choice.m_Choice > 0)
                    when->m_Condition = when->m_Alternatives[static_cast<std::size_t>(choice.m_Choice - 1)];
                when->m_Alternatives.clear();
            }
            for (const std::size_t side : {0u, 1u}) {
                if (answer.m_IsCertain)
                    when->m_Samples[side] += answer.m_Sides[side][node];
            }
        }
        DraftField* const field = made.m_Fields[node];
        if (field == nullptr || field->m_IsBuiltIn)
            continue;
        const LayoutKind kind = static_cast<LayoutKind>(choice.m_Choice);
        if (kind == LayoutKind::Int64 && MayCountInstead(*field, answer.m_SeenNumbers[node]))
            continue;
        if (choice.m_IsOfWidth && field->m_Shape == DraftShape::Value) {
            field->m_Kinds = {LayoutKind::Int, LayoutKind::Int64};
            field->m_Usual = kind;
            field->m_IsWidthOpen = true;
        }
        if (choice.m_IsSettled && field->m_Shape == DraftShape::Value && field->m_Kinds.Has(kind))
            field->m_Kinds = {kind};
        if (!answer.m_IsCertain)
            continue;
        field->m_WasSeen[0] = field->m_WasSeen[0] || (answer.m_SeenBools[node] & 1) != 0;
        field->m_WasSeen[1] = field->m_WasSeen[1] || (answer.m_SeenBools[node] & 2) != 0;
        if (!CanNumbersTell(made, node))
            continue;
        std::vector<std::int32_t> numbers;
        std::set_union(field->m_Numbers.begin(), field->m_Numbers.end(), answer.m_SeenNumbers[node].begin(),
                       answer.m_SeenNumbers[node].end(), std::back_inserter(numbers));
        field->m_Numbers = std::move(numbers);
        if (field->m_Shape == DraftShape::List && !field->m_Numbers.empty() && field->m_Numbers.back() >= 2)
            field->m_IsUnproven = false;
    }
}

// Whether there is a way to read these files; if there is, what it shows is taken over if wanted.
FitAnswer::Verdict TypeInference::FitSideBySide(std::span<const BinarySample* const> files, bool isTakenOver) {
    const DraftLayout made = Make(true);
    FitQuestion question{made.m_Layout, {}, {}, m_StepsLeft};
    for (LayoutIndex node = 0; node < made.m_Layout.GetSize(); ++node) {
        const DraftField* const field = made.m_Fields[node];
        KindSet& kinds = question.m_Kinds.emplace_back();
        NumberRange& range = question.m_Ranges.emplace_back();
        if (field == nullptr || field->m_Shape != DraftShape::Value)
            continue;
        range = {
            field->m_Largest, field->m_PresentCount, field->m_HasNegative, {}, field->m_Decimals.GetDecimalPlaces()};
        if (field->AreNumbersFew())
            range.m_Numbers = field->m_Numbers;
        if (!field->m_IsBuiltIn && !field->m_IsWord)
            kinds = field->m_Kinds & kNumberKinds;
    }
    std::vector<std::string_view> values;
    for (const BinarySample* file : files)
        values.push_back(file->m_Values);
    const FitAnswer answer = FitBinaries(question, values);
    if (answer.m_Verdict == FitAnswer::Verdict::Fits && isTakenOver && !answer.m_SeenBools.empty()) {
        Apply(made, answer);
        m_HasBytes = true;
    }
    return answer.m_Verdict;
}

// Files that are read side by side; where too much is open, each half for itself. Those that nothing fits cast doubt on
// the layout: the others settle anything only if they are many more.
void TypeInference::FitGroup(std::vector<const BinarySample*> files) {
    FitAnswer::Verdict verdict = FitSideBySide(files, true);
    if (verdict == FitAnswer::Verdict::FitsNot) {
        // One that nothing fits would hide what the others show.
        const std::size_t before = files.size();
        std::erase_if(files, [this](const BinarySample* file) {
            const bool fits = FitSideBySide({&file, 1}, false) != FitAnswer::Verdict::FitsNot;
            if (!fits)
                m_Result.m_Problems.push_back({"no layout that goes with the text samples reads this file whole",
                                               {file->m_Sample->m_Name, 0},
                                               {}});
            return !fits;
        });
        const std::size_t unfit = before - files.size();
        m_UnfitCount += unfit;
        m_HasBytes = m_HasBytes || unfit == 0; // each by itself could be read, so nothing may be taken for granted
        if (files.empty() || unfit == 0)
            return;
        verdict = FitSideBySide(files, files.size() >= kManyMore * unfit);
        m_HasBytes = m_HasBytes || verdict == FitAnswer::Verdict::Fits;
    }
    if (verdict != FitAnswer::Verdict::Undecided || files.size() < 2)
        return;
    const auto middle = files.begin() + static_cast<std::ptrdiff_t>(files.size() / 2);
    FitGroup({files.begin(), middle});
    FitGroup({middle, files.end()});
}

// Binary samples without a twin, so many at a time as can be read side by side, small ones first.
void TypeInference::FitOthers() {
    std::stable_sort(m_Others.begin(), m_Others.end(), [](const BinarySample* left, const BinarySample* right) {
        return left->m_Values.size() < right->m_Values.size();
    });
    for (std::size_t first = 0; first < m_Others.size(); first += kMostFiles) {
        const std::size_t end = std::min(first + kMostFiles, m_Others.size());
        FitGroup({m_Others.begin() + static_cast<std::ptrdiff_t>(first),
                  m_Others.begin() + static_cast<std::ptrdiff_t>(end)});
    }
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

void TypeInference::Run() {
    m_Result.m_TextCount = static_cast<int>(m_Samples.m_Texts.size());
    m_Result.m_BinaryCount = static_cast<int>(m_Samples.m_Binaries.size());
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
        Report(*conflict);
        return;
    }
    FindBlocks(*m_Draft, m_Blocks);
    FitTwins();
    SettleDecimals(*m_Draft);
    FitOthers();
    const DraftLayout made = Make(!m_HasBytes);
    m_Result.m_Layout = made.m_Layout;
    m_Result.m_Marks = DescribeMarks(made);
    m_Result.m_HasLayout = true;
}

// What looks like a twin may be an accident, of zeros above all. It is when the other binary samples say otherwise.
InferredType InferType(const SamplesOfType& samples, const LayoutBlocks& blocks, const LayoutToContinue* known,
                       const InferredType& begun) {
    InferredType result = begun;
    TypeInference inference(samples, blocks, known, true, result);
    inference.Run();
    if (inference.GetUnfitCount() == 0 || result.m_TwinCount == 0)
        return result;
    InferredType other = begun;
    TypeInference withoutTwins(samples, blocks, known, false, other);
    withoutTwins.Run();
    return withoutTwins.GetUnfitCount() < inference.GetUnfitCount() ? other : result;
}

// The word of the type, where a sample begins as one of an entity does.
std::optional<std::string> TypeOfText(const SampleTree& tree) {
    const SampleLine& line = tree[1];
    if (line.m_Label != kTypeLabel || !KindsOfValue(line.m_Value).Has(LayoutKind::String))
        return std::nullopt;
    return std::string(line.m_Value.substr(1, line.m_Value.size() - 2));
}

std::optional<std::string> TypeOfBinary(std::string_view& bytes) {
    bytes.remove_prefix(std::min(bytes.size(), kBinaryHeader.size()));
    const std::optional<std::size_t> size = SizeOfPlausible(LayoutKind::String, bytes, {});
    if (!size.has_value())
        return std::nullopt;
    std::string word = ToUtf8(TakeString(bytes));
    bytes.remove_prefix(*size);
    return word;
}

} // namespace

Inference InferLayouts(std::span<const Sample> samples, const LayoutBlocks& blocks, const LayoutToContinue* known) {
    Inference inference;
    // In an order of their own, each content once: what is concluded must not hang on how they were given.
    std::vector<const Sample*> sorted;
    for (const Sample& sample : samples)
        sorted.push_back(&sample);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Sample* left, const Sample* right) { return left->m_Bytes < right->m_Bytes; });
    sorted.erase(std::unique(sorted.begin(), sorted.end(),
                             [](const Sample* left, const Sample* right) { return left->m_Bytes == right->m_Bytes; }),
                 sorted.end());

    std::map<std::string, SamplesOfType> types;
    for (const Sample* sample : sorted) {
        if (IsBinarySample(*sample)) {
            std::string_view bytes = sample->m_Bytes;
            if (const auto word = TypeOfBinary(bytes))
                types[*word].m_Binaries.push_back({sample, bytes});
            else
                inference.m_Problems.push_back({"no entity definition", {sample->m_Name, 0}, {}});
            continue;
        }
        std::string_view text = sample->m_Bytes;
        if (text.starts_with(kUtf8Mark))
            text.remove_prefix(kUtf8Mark.size());
        auto tree = std::make_unique<SampleTree>();
        if (!tree->Parse(text)) {
            inference.m_Problems.push_back({tree->GetFault(), {sample->m_Name, tree->GetFaultLine()}, {}});
            continue;
        }
        if (const auto word = TypeOfText(*tree))
            types[*word].m_Texts.push_back({sample, std::move(tree)});
        else
            inference.m_Problems.push_back({"no entity definition", {sample->m_Name, (*tree)[1].m_Line}, {}});
    }
    for (const auto& [word, ofType] : types) {
        InferredType result;
        result.m_TypeWord = word;
        result.m_AnySample = ofType.m_Texts.empty() ? ofType.m_Binaries.front().m_Sample->m_Name
                                                    : ofType.m_Texts.front().m_Sample->m_Name;
        const bool isKnown = known != nullptr && known->m_Layout.GetName() == word;
        inference.m_Types.push_back(InferType(ofType, blocks, isKnown ? known : nullptr, result));
    }
    return inference;
}

} // namespace Corvid
