#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Corvid {

// One line of a text sample, with the lines that are indented below it.
struct SampleLine {
    std::string_view m_Label; // empty: a row of a matrix
    std::string_view m_Value; // empty: a label alone
    std::uint32_t m_Parent = 0;
    std::uint32_t m_End = 0; // behind the last line that is nested in this one
    int m_Line = 0;          // physical, from 1
};

// A text file as its tabs tell it, without knowing what the labels mean: flat, each line followed by what is nested in
// it. Entry 0 is the file itself. The views are into the text.
class SampleTree {
public:
    static constexpr int kMaxDepth = 32;

    // False when the text is no archive whose tabs make sense; the fault and its line say why, and the tree is empty.
    bool Parse(std::string_view text);

    const SampleLine& operator[](std::uint32_t index) const { return m_Lines[index]; }
    std::uint32_t GetSize() const { return static_cast<std::uint32_t>(m_Lines.size()); }

    const std::string& GetFault() const { return m_Fault; }
    int GetFaultLine() const { return m_FaultLine; }

private:
    bool Fail(int line, std::string_view fault);

    std::vector<SampleLine> m_Lines;
    std::string m_Fault;
    int m_FaultLine = 0;
};

} // namespace Corvid
