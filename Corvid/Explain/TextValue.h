#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "Corvid/Diagnostics/Diagnostic.h"
#include "Corvid/Values/ValueTree.h"
#include "Engine/Layout/Conditions.h"
#include "Engine/Layout/Layout.h"

namespace Corvid {

// What is wrong with a value text, and where.
struct TextFault {
    DiagnosticCode m_Code = DiagnosticCode::BadValue;
    std::size_t m_Position = 0; // the first wrong byte of the line
    std::string m_Message;
    bool m_IsBehindValue = false; // which itself has been read
};

// One value of a text archive, read whole: nothing but white space may stand in front of it, between its parts or
// behind it. Floats may be followed by their exact bits.
struct TextValue {
    ValueKind m_Kind = ValueKind::Int;
    bool m_Bool = false;
    std::int64_t m_Integer = 0; // Int, Int64
    double m_Double = 0.0;
    float m_Floats[16] = {}; // Float, Color, vectors, matrices row by row
    std::int32_t m_Ints[4] = {};
    std::u16string m_String;

    void AddTo(ValueTree& tree, std::string_view label) const;
    void KeepFor(Conditions& conditions, LayoutIndex field) const; // if any condition asks for the field
};

// Reads the value of a field from `start` of the line on. Not for records and matrices. The line has kScanPadding
// readable bytes behind it. True, or false and the fault; a string that is too long is cut and a fault all the same.
bool ReadTextValue(const LayoutNode& node, std::string_view line, std::size_t start, TextValue& value,
                   TextFault& fault);

// A row of a matrix: `count` floats in brackets.
bool ReadTextRow(std::string_view line, std::size_t start, int count, float* numbers, TextFault& fault);

// Nothing may stand there: the rest of a label line.
bool ReadTextEnd(std::string_view line, std::size_t start, TextFault& fault);

bool IsWordOf(const std::u16string& word, const LayoutNode& node);
std::string ExplainUnknownWord(const std::u16string& word, const LayoutNode& node);

// A stretch of a file for a message: a few characters, well-formed and printable.
std::string Excerpt(std::string_view text);

} // namespace Corvid
