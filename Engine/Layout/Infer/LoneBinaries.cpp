#include "Engine/Layout/Infer/LoneBinaries.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>

#include "Engine/Layout/Infer/BinaryFit.h"
#include "Engine/Layout/Infer/DraftFit.h"

namespace Corvid {

namespace {

constexpr std::size_t kManyMore = 4; // times as many files that fit as files that do not

using BinaryFiles = std::vector<const BinarySample*>;

class Reader {
public:
    Reader(RecordDraft& draft, const LayoutMaker& maker, LoneBinaries& result)
        : m_Draft(draft), m_Maker(maker), m_Result(result) {}

    void Read(BinaryFiles files);

private:
    FitAnswer::Verdict ReadSideBySide(std::span<const BinarySample* const> files, bool isTakenOver);
    BinaryFiles TakeUnfit(BinaryFiles& files);

    RecordDraft& m_Draft;
    const LayoutMaker& m_Maker;
    LoneBinaries& m_Result;
    std::uint64_t m_StepsLeft = kMostStepsOfType;
};

// Whether there is a way to read these files; if there is, what it shows is taken over if wanted.
FitAnswer::Verdict Reader::ReadSideBySide(std::span<const BinarySample* const> files, bool isTakenOver) {
    std::vector<std::string_view> values;
    for (const BinarySample* file : files)
        values.push_back(file->m_Values);
    const DraftLayout made = m_Maker.Make(m_Draft, true);
    const FitAnswer answer = FitBinaries(AskAbout(made, m_StepsLeft), values);
    const bool isBelieved = !answer.m_SeenBools.empty(); // not when it departs too far from what is usual
    if (answer.m_Verdict == FitAnswer::Verdict::Fits && isTakenOver && isBelieved) {
        TakeOver(answer, made);
        m_Result.m_MayAssume = false;
    }
    return answer.m_Verdict;
}

// Takes out the files that nothing fits even one by one.
BinaryFiles Reader::TakeUnfit(BinaryFiles& files) {
    BinaryFiles unfit;
    BinaryFiles fitting;
    for (const BinarySample* file : files) {
        const bool fits = ReadSideBySide({&file, 1}, false) != FitAnswer::Verdict::FitsNot;
        (fits ? fitting : unfit).push_back(file);
    }
    files = std::move(fitting);
    return unfit;
}

// Where too much is open, each half for itself. Files that nothing fits would hide what the others show, and cast doubt
// on the layout: the others settle anything only if they are many more.
void Reader::Read(BinaryFiles files) {
    FitAnswer::Verdict verdict = ReadSideBySide(files, true);
    if (verdict == FitAnswer::Verdict::FitsNot) {
        const BinaryFiles unfit = TakeUnfit(files);
        m_Result.m_Unfit.insert(m_Result.m_Unfit.end(), unfit.begin(), unfit.end());
        if (unfit.empty()) {
            m_Result.m_MayAssume = false; // each by itself can be read, but not by one layout
            return;
        }
        if (files.empty())
            return;
        verdict = ReadSideBySide(files, files.size() >= kManyMore * unfit.size());
        if (verdict == FitAnswer::Verdict::Fits)
            m_Result.m_MayAssume = false;
    }
    if (verdict != FitAnswer::Verdict::Undecided || files.size() < 2)
        return;
    const auto middle = files.begin() + static_cast<std::ptrdiff_t>(files.size() / 2);
    Read({files.begin(), middle});
    Read({middle, files.end()});
}

} // namespace

LoneBinaries ReadLoneBinaries(std::vector<const BinarySample*> files, RecordDraft& draft, const LayoutMaker& maker) {
    // Small ones first.
    std::stable_sort(files.begin(), files.end(), [](const BinarySample* left, const BinarySample* right) {
        return left->m_Values.size() < right->m_Values.size();
    });
    LoneBinaries result;
    Reader reader(draft, maker, result);
    for (std::size_t first = 0; first < files.size(); first += kMostFiles) {
        const auto begin = files.begin() + static_cast<std::ptrdiff_t>(first);
        reader.Read({begin, begin + static_cast<std::ptrdiff_t>(std::min(kMostFiles, files.size() - first))});
    }
    return result;
}

} // namespace Corvid
