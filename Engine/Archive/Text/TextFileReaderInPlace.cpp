#include <cmath>

#include "Engine/Archive/LabelText.h"
#include "Engine/Archive/Text/TextFileReader.h"

// The way "in place".

namespace Corvid {

const char* TextFileReader::FindInPlace(Label label) {
    if (m_CurrentLineUnread || !m_Lines.IsInPlaceOpen())
        return nullptr;
    const char* const position = LabelText::Match(label, SkipBlanks(m_Lines.GetPosition()));
    if (position == nullptr || (*position != ' ' && *position != '\t'))
        return nullptr;
    return SkipBlanks(position);
}

bool TextFileReader::TakeInPlace(const char* valueEnd) {
    if (!m_Lines.TakeInPlace(valueEnd))
        return false;
    ++m_LinesTakenInWindow;
    m_CurrentLineUnread = false;
    return true;
}

bool TextFileReader::TakeLabelLineInPlace(Label label) {
    if (!m_CurrentLineUnread && m_Lines.IsInPlaceOpen()) {
        const char* const position = LabelText::Match(label, SkipBlanks(m_Lines.GetPosition()));
        if (position != nullptr && TakeInPlace(position))
            return true;
    }
    return TakeLabelLineByLine(label);
}

void TextFileReader::ReadIntInPlace(Label label, std::int32_t& value) {
    std::int32_t number;
    const char* const text = FindInPlace(label);
    const char* const end = text != nullptr ? ScanInt(text, m_Lines.GetWindowEnd(), number) : nullptr;
    if (end == nullptr || end - text > kSafeIntDigits || !TakeInPlace(end))
        return ReadIntByLine(label, value);
    value = number;
    AddToChecksum(&number, 1);
}

void TextFileReader::ReadFloatInPlace(Label label, float& value) {
    float number;
    const char* const text = FindInPlace(label);
    const char* const end = text != nullptr ? ScanFloat(text, m_Lines.GetWindowEnd(), number) : nullptr;
    if (end == nullptr || std::isinf(number) || !TakeInPlace(end))
        return ReadFloatByLine(label, value);
    value = number;
    AddToChecksum(&number, 1);
}

void TextFileReader::ReadVector3InPlace(Label label, Vector3& value) {
    float numbers[3];
    const char* const text = FindInPlace(label);
    if (text == nullptr || *text != '[')
        return ReadVector3ByLine(label, value);
    const char* end = text + 1;
    for (float& number : numbers) {
        end = ScanFloat(SkipBlanks(end), m_Lines.GetWindowEnd(), number);
        if (end == nullptr || std::isinf(number))
            return ReadVector3ByLine(label, value);
    }
    end = SkipBlanks(end);
    if (*end != ']' || !TakeInPlace(end + 1))
        return ReadVector3ByLine(label, value);
    value = {numbers[0], numbers[1], numbers[2]};
    AddToChecksum(numbers, 3);
}

void TextFileReader::ReadColorInPlace(Label label, Color& value) {
    std::uint32_t packed;
    const char* const text = FindInPlace(label);
    const char* const end = text != nullptr ? ScanHex(text, m_Lines.GetWindowEnd(), packed) : nullptr;
    if (end == nullptr || end - text > kSafeHexDigits || *text == '-' || !TakeInPlace(end))
        return ReadColorByLine(label, value);
    TakeColor(packed, value);
}

} // namespace Corvid
