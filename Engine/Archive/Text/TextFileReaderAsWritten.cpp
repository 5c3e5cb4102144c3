#include <cmath>
#include <cstring>

#include "Engine/Archive/LabelText.h"
#include "Engine/Archive/Text/TextFileReader.h"
#include "Engine/String/NumberScan.h"

// The way "as written". Each operation takes its value or hands it on as a whole, by a tail call, so that this way
// itself saves no registers and calls nothing. What is left per line is about what the bytes demand: a mask for the
// tabs, a word or two for the label, the number, and one 16-bit word for the line end.

namespace Corvid {

namespace {

// Null for every shape but the canonical one, or, where that has no instructions of its own, for none.
inline const char* ScanWrittenInt(const char* position, const char* end, std::int32_t& value) {
#if defined(__SSE4_1__)
    return NumberDetail::ScanShortInt(position, end, value);
#else
    const char* const behind = ScanInt(position, end, value);
    return behind != nullptr && behind - position <= kSafeIntDigits ? behind : nullptr;
#endif
}

inline const char* ScanWrittenFloat(const char* position, const char* end, float& value) {
#if defined(__SSE4_1__) && defined(__SSE2_MATH__)
    return NumberDetail::ScanCanonicalFloat(position, end, value);
#else
    const char* const behind = ScanFloat(position, end, value);
    return behind != nullptr && !std::isinf(value) ? behind : nullptr;
#endif
}

} // namespace

// Around a nested object.
inline void TextFileReader::SetTabDepth(int depth) {
    constexpr std::uint64_t kTabs = 0x0909090909090909;
    m_TabDepth = depth;
    if (depth <= static_cast<int>(sizeof kTabs)) [[likely]] {
        m_ExpectedTabMask = depth == 0 ? 0 : ~std::uint64_t{0} >> (64 - 8 * depth);
        m_ExpectedTabs = kTabs & m_ExpectedTabMask;
    } else {
        m_ExpectedTabMask = 0;
        m_ExpectedTabs = 1; // equals nothing that the mask lets through
    }
}

inline const char* TextFileReader::FindAsWritten(Label label) const {
    const InputStream& input = GetInput();
    if (!m_IsAsWrittenOpen || !LabelText::IsShort(label) || !input.HasLookahead()) [[unlikely]]
        return nullptr;
    const char* position = input.GetPosition();
    std::uint64_t tabs;
    std::memcpy(&tabs, position, sizeof tabs);
    if ((tabs & m_ExpectedTabMask) != m_ExpectedTabs) [[unlikely]]
        return nullptr;
    position += m_TabDepth;
    return LabelText::MatchShort(label, position);
}

inline bool TextFileReader::TakeAsWritten(const char* valueEnd) {
    if (std::memcmp(valueEnd, "\r\n", 2) != 0) [[unlikely]]
        return false;
    GetInput().SetPosition(valueEnd + 2);
    ++m_LinesTakenInWindow;
    m_CurrentLineUnread = false;
    return true;
}

void TextFileReader::ReadInt(Label label, std::int32_t& value) {
    std::int32_t number;
    const char* text = FindAsWritten(label);
    if (text == nullptr || *text != ' ')
        return ReadIntInPlace(label, value);
    text = ScanWrittenInt(text + 1, GetInput().GetEnd(), number);
    if (text == nullptr || !TakeAsWritten(text))
        return ReadIntInPlace(label, value);
    value = number;
}

void TextFileReader::ReadFloat(Label label, float& value) {
    float number;
    const char* text = FindAsWritten(label);
    if (text == nullptr || *text != ' ')
        return ReadFloatInPlace(label, value);
    text = ScanWrittenFloat(text + 1, GetInput().GetEnd(), number);
    if (text == nullptr || !TakeAsWritten(text))
        return ReadFloatInPlace(label, value);
    value = number;
}

void TextFileReader::ReadVector3(Label label, Vector3& value) {
    Vector3 numbers;
    const char* const end = GetInput().GetEnd();
    const char* text = FindAsWritten(label);
    if (text == nullptr || std::memcmp(text, " [ ", 3) != 0)
        return ReadVector3InPlace(label, value);
    text = ScanWrittenFloat(text + 3, end, numbers.x);
    if (text == nullptr || *text != ' ')
        return ReadVector3InPlace(label, value);
    text = ScanWrittenFloat(text + 1, end, numbers.y);
    if (text == nullptr || *text != ' ')
        return ReadVector3InPlace(label, value);
    text = ScanWrittenFloat(text + 1, end, numbers.z);
    if (text == nullptr || std::memcmp(text, " ]", 2) != 0 || !TakeAsWritten(text + 2))
        return ReadVector3InPlace(label, value);
    value = numbers;
}

// Of colours only the zero that every vertex of a mesh carries.
void TextFileReader::ReadColor(Label label, Color& value) {
    const char* const text = FindAsWritten(label);
    if (text == nullptr || std::memcmp(text, " 0", 2) != 0 || !TakeAsWritten(text + 2))
        return ReadColorInPlace(label, value);
    value = Color{};
}

// The line of a label that stands alone.
inline bool TextFileReader::TakeLabelLine(Label label) {
    const char* const text = FindAsWritten(label);
    return (text != nullptr && TakeAsWritten(text)) || TakeLabelLineInPlace(label);
}

void TextFileReader::ReadLabeledObject(Label label, Archivable& object, void* context) {
    if (!TakeLabelLine(label))
        return;
    SetTabDepth(m_TabDepth + 1);
    object.Load(*this, context);
    SetTabDepth(m_TabDepth - 1);
}

void TextFileReader::ReadLabeledObject(Label label, Archivable& object) {
    if (!TakeLabelLine(label))
        return;
    SetTabDepth(m_TabDepth + 1);
    object.Load(*this);
    SetTabDepth(m_TabDepth - 1);
}

} // namespace Corvid
