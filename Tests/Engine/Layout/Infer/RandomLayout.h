#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "Engine/Layout/Layout.h"

namespace Corvid {

// A type that nobody has described: its true layout, and files of it with random values in both encodings.
class RandomLayout {
public:
    explicit RandomLayout(std::uint32_t seed);

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
    };

    int Draw(int least, int most);
    bool Chance(int percent) { return Draw(1, 100) <= percent; }
    std::string NewLabel();
    void AddFields(int depth, int count);
    void AddValue();
    void AddList(int depth);
    bool AddWhen(int depth);

    struct Writing;
    void Write(Writing& writing, LayoutIndex first, LayoutIndex end);
    void WriteValue(Writing& writing, LayoutIndex node);

    std::mt19937 m_Random;
    int m_LabelCount = 0;
    std::vector<Habit> m_Habits; // by node
    LayoutBuilder m_Builder;
    std::vector<std::vector<std::pair<LayoutIndex, LayoutKind>>> m_Deciders; // bools and words in sight, by scope
    Layout m_Truth;
};

} // namespace Corvid
