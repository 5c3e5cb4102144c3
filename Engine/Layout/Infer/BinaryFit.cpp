#include "Engine/Layout/Infer/BinaryFit.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "Engine/Layout/Infer/FitSearch.h"
#include "Engine/Layout/Infer/IntegerWidths.h"

namespace Corvid {

namespace {

constexpr int kMostDepartures = 16;

// One file alone can be read in many ways: the fewer there are, the fewer departures are believed, and the more costly
// rivals must have been ruled out.
constexpr int MostDepartures(std::size_t files) {
    return files == 1 ? 1 : files == 2 ? 3 : files == 3 ? 6 : kMostDepartures;
}
constexpr int RivalMargin(std::size_t files) {
    return files == 1 ? 3 : 2;
}

// Numbers side by side that are open between them alone.
void SettleWidths(FitSearch& search, const FitQuestion& question, int departures, FitAnswer& answer) {
    const KindSet widths{LayoutKind::Int, LayoutKind::Int64};
    const auto isOpen = [&](LayoutIndex node) {
        const FitAnswer::Choice& choice = answer.m_Choices[node];
        return search.IsOpen(node) && choice.m_Choice != kUndecidedChoice && !choice.m_IsSettled &&
               (question.m_Kinds[node] & widths) == widths;
    };
    for (const std::vector<LayoutIndex>& run : FindIntegerRuns(question.m_Layout, isOpen)) {
        const auto isAnythingElse = [&](LayoutIndex node) {
            for (const int choice : search.ChoicesAt(node)) {
                const FitSearch::Told told[] = {{node, choice}};
                if (!widths.Has(static_cast<LayoutKind>(choice)) &&
                    search.Find(departures, told) != FitOutcome::NotFound)
                    return true;
            }
            return false;
        };
        if (std::any_of(run.begin(), run.end(), isAnythingElse))
            continue;
        const auto compared = CompareWidths(run.size(), [&](std::span<const LayoutKind> kinds) -> std::optional<bool> {
            std::vector<FitSearch::Told> told;
            for (std::size_t i = 0; i < run.size(); ++i)
                told.push_back({run[i], static_cast<int>(kinds[i])});
            const FitOutcome outcome = search.Find(departures, told);
            return outcome == FitOutcome::OutOfSteps ? std::nullopt : std::optional(outcome == FitOutcome::Found);
        });
        if (!compared.has_value())
            continue;
        // All readings give the same bytes for such numbers, and only for such.
        bool isAlike = true;
        for (std::size_t i = 0; i < run.size(); ++i) {
            const std::vector<std::int32_t>& seen = answer.m_SeenNumbers[run[i]];
            const std::int32_t largest = i == compared->m_FirstOpen ? std::numeric_limits<std::int32_t>::max() - 1 : 0;
            const bool isSeenSo = seen.empty() || (seen.front() >= 0 && seen.back() <= largest);
            const NumberRange& range = question.m_Ranges[run[i]];
            isAlike = isAlike && (!compared->m_IsOpen[i] || (isSeenSo && !range.m_HasNegative &&
                                                             range.m_Largest <= static_cast<double>(largest)));
        }
        for (std::size_t i = 0; i < run.size() && isAlike; ++i)
            answer.m_Choices[run[i]] = {static_cast<int>(compared->m_Kinds[i]), !compared->m_IsOpen[i],
                                        compared->m_IsOpen[i]};
    }
}

} // namespace

FitAnswer FitBinaries(const FitQuestion& question, std::span<const std::string_view> files) {
    FitAnswer answer;
    const Layout& layout = question.m_Layout;
    answer.m_Choices.resize(layout.GetSize());
    FitSearch search(question, files);
    if (files.empty() || files.size() > kMostFiles || search.IsTooLarge())
        return answer;

    int departures = 0;
    FitOutcome outcome = FitOutcome::NotFound;
    for (; departures <= kMostDepartures + FitSearch::kMostUnlike / FitSearch::kUnlikeOfDeparture; ++departures) {
        outcome = search.Find(departures, {});
        if (outcome != FitOutcome::NotFound)
            break;
    }
    if (outcome == FitOutcome::NotFound)
        answer.m_Verdict = FitAnswer::Verdict::FitsNot;
    if (outcome != FitOutcome::Found)
        return answer;
    answer.m_Verdict = FitAnswer::Verdict::Fits;
    if (search.GetFound().m_Departures > MostDepartures(files.size()))
        return answer;
    const FitState best = search.GetFound();
    search.Note(answer);

    // A choice is settled if no other reads the samples at a cost that is hardly higher.
    for (LayoutIndex node = 0; node < layout.GetSize(); ++node)
        answer.m_Choices[node] = {best.m_Choices[node], best.m_Choices[node] != kUndecidedChoice};
    for (LayoutIndex node = 0; node < layout.GetSize(); ++node) {
        if (best.m_Choices[node] == kUndecidedChoice || !search.IsOpen(node))
            continue;
        for (const int choice : search.ChoicesAt(node)) {
            if (choice == best.m_Choices[node] || !answer.m_Choices[node].m_IsSettled)
                continue;
            const FitSearch::Told told[] = {{node, choice}};
            const FitOutcome other = search.Find(departures + RivalMargin(files.size()), told);
            if (other == FitOutcome::NotFound)
                continue;
            answer.m_Choices[node].m_IsSettled = false;
            if (other == FitOutcome::OutOfSteps)
                continue;
            for (LayoutIndex differing = 0; differing < layout.GetSize(); ++differing) {
                if (search.GetFound().m_Choices[differing] != best.m_Choices[differing])
                    answer.m_Choices[differing].m_IsSettled = false;
            }
        }
    }
    SettleWidths(search, question, departures + RivalMargin(files.size()), answer);
    answer.m_IsCertain =
        std::all_of(answer.m_Choices.begin(), answer.m_Choices.end(), [](const FitAnswer::Choice& choice) {
            return choice.m_IsSettled || choice.m_IsOfWidth || choice.m_Choice == kUndecidedChoice;
        });
    return answer;
}

} // namespace Corvid
