#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Engine/Layout/Infer/BinaryFit.h"

namespace Corvid {

inline constexpr std::uint64_t kMostStepsOfSearch = 1'000'000; // values read
inline constexpr int kUndecidedChoice = -1;

using FileSet = std::uint64_t; // a bit a file

// A condition or a list that the reading is within.
struct FitFrame {
    LayoutIndex m_Node = 0;
    FileSet m_Outside = 0; // files that were read before it
    std::int32_t m_Element = 0;
    std::vector<std::int32_t> m_Counts; // by file
};

struct FitState {
    LayoutIndex m_Node = 0;
    FileSet m_Active = 0;
    FileSet m_Dropped = 0; // files with a word that nobody knows: they cannot be followed any further
    int m_Departures = 0;
    int m_Unlike = 0; // values that are like none in the text samples
    std::vector<std::size_t> m_Offsets;
    std::vector<FitFrame> m_Frames;
    std::vector<std::int8_t> m_Choices;                // by node
    std::vector<std::vector<std::int32_t>> m_Deciders; // by decider, by file: the value that conditions ask for
};

enum class FitOutcome { Found, NotFound, OutOfSteps };

// Reads binary samples side by side by one assignment of choices after the other, until one comes out even.
class FitSearch {
public:
    static constexpr int kUnlikeOfDeparture = 2;               // as unlikely as a choice that is not usual
    static constexpr int kMostUnlike = 8 * kUnlikeOfDeparture; // that count: other files may be other files

    FitSearch(const FitQuestion& question, std::span<const std::string_view> files);

    bool IsTooLarge() const;

    // A way to read all files at such a cost at the most, in departures, and with some nodes read as they are told to.
    struct Told {
        LayoutIndex m_Node;
        int m_Choice;
    };
    FitOutcome Find(int departures, std::span<const Told> told);

    const FitState& GetFound() const { return m_Found; }
    bool IsOpen(LayoutIndex node) const;
    std::vector<int> ChoicesAt(LayoutIndex node) const;

    // Reads once more by the choices that were found and notes what the files hold.
    void Note(FitAnswer& answer);

private:
    FitState StateAtBegin() const;
    int UsualChoice(LayoutIndex node) const;
    static int CostOf(const FitState& state) {
        return kUnlikeOfDeparture * state.m_Departures + std::min(state.m_Unlike, kMostUnlike);
    }
    bool Run(FitState& state);
    bool Leave(FitState& state);
    bool ReadValue(FitState& state, LayoutKind kind);
    bool ReadCount(FitState& state);
    bool IsCountPossible(LayoutIndex node, std::int32_t number, std::size_t left) const;
    bool Holds(const LayoutCondition& condition, std::int32_t value) const;
    void EnterWhen(FitState& state, int choice);
    bool IsOver(const FitState& state) const;
    bool Branch(const FitState& state);
    std::uint64_t HashOf(const FitState& state) const;
    std::int32_t WordIndex(LayoutIndex node, std::u16string_view word) const;
    const std::vector<std::u16string>& WordsOf(LayoutIndex decider) const {
        const LayoutNode& node = m_Layout[decider];
        return node.m_Kind == LayoutKind::Word ? node.m_Words : m_Words[static_cast<std::size_t>(m_DeciderOf[decider])];
    }

    const FitQuestion& m_Question;
    const Layout& m_Layout;
    std::span<const std::string_view> m_Files;
    std::vector<std::int32_t> m_DeciderOf;            // by node; -1: no condition asks
    std::vector<std::vector<std::u16string>> m_Words; // by decider, of a string: those that conditions ask for
    std::size_t m_DecisionCount = 0;
    std::size_t m_DeciderCount = 0;

    int m_MostCost = 0;
    std::uint64_t m_Steps = 0;
    std::uint64_t m_MostSteps = kMostStepsOfSearch;
    std::unordered_map<std::uint64_t, int> m_Failed; // cost that was left and did not suffice
    FitState m_Found;
    FitAnswer* m_Notes = nullptr;
};

} // namespace Corvid
