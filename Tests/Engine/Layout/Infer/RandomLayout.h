#pragma once

#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "Engine/Layout/Layout.h"

namespace Corvid {

// What random types are like; shares are percentages.
struct RandomStyle {
    const char* m_Name = "plain";
    int m_LeastFields = 4; // of the type itself
    int m_MostFields = 10;
    int m_Depth = 3;        // of what is nested
    int m_RecordShare = 10; // of the fields
    int m_ListShare = 12;
    int m_WhenShare = 16;
    int m_WhenInElementShare = 8;
    int m_FirstInElementShare = 0; // of elements, those that begin with a condition
    int m_NegatedShare = 25;       // of conditions
    int m_MostWords = 5;           // of an enumeration, 7 at the most
    int m_MostElements = 4;
    int m_RoundShare = 0; // of decimals, those that are round
    int m_ZeroDecimalShare = 15;
    int m_ZeroIntShare = 20;    // of integers, those that are always zero
    int m_WideShare = 2;        // of the fields, int64
    int m_DoubleShare = 3;      // of the fields
    int m_DigitsOnlyShare = 30; // of colours
    int m_SkewShare = 0;        // of bools, those that are seldom true
    int m_DriftShare = 0;       // of the fields, those whose numbers are others after so many files
    int m_DriftAfter = 30;
    bool m_HasFewStrings = false;
    bool m_HasSharedLabels = false; // the same labels in different records
};

// A type that nobody has described: its true layout, and files of it with random values in both encodings.
class RandomLayout {
public:
    explicit RandomLayout(std::uint32_t seed, const RandomStyle& style = {});

    struct File {
        std::string m_Text;
        std::string m_Binary;
    };
    File MakeFile();

    const Layout& GetTruth() const { return m_Truth; }

private:
    // How the values of one node are drawn.
    struct Habit {
        int m_Kind = 0; // of integers: 0 any small, 1 always 0, 2 always the same, 3 large, 4 negative, too
        std::int64_t m_Constant = 0;
        int m_ChanceOfTrue = 50;     // percent
        int m_Most = 3;              // elements
        bool m_IsDigitsOnly = false; // of a color
        bool m_Drifts = false;
    };

    int Draw(int least, int most);
    bool Chance(int percent) { return Draw(1, 100) <= percent; }
    std::string NewLabel();
    void AddFields(int depth, int count);
    void AddRecord(int depth);
    void AddValue();
    void AddList(int depth);
    bool AddWhen(int depth);

    struct Writing;
    void Write(Writing& writing, LayoutIndex first, LayoutIndex end);
    void WriteValue(Writing& writing, LayoutIndex node);

    RandomStyle m_Style;
    std::mt19937 m_Random;
    int m_FileCount = 0;
    int m_LabelCount = 0;
    std::vector<Habit> m_Habits; // by node
    LayoutBuilder m_Builder;
    std::vector<std::vector<std::pair<LayoutIndex, LayoutKind>>> m_Deciders; // bools and words in sight, by scope
    std::vector<std::set<std::string>> m_LabelsOfRecord{1};                  // of the open records
    Layout m_Truth;
};

} // namespace Corvid
