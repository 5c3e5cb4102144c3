#include "Engine/Archive/TextFileArchiveQuick.h"

#include <bit>
#include <cmath>

#include "Engine/String/NumberFormat.h"
#include "Engine/String/NumberScan.h"

// The operations that large files are made of. Each takes its value the quick way or hands it on as a whole, by a tail
// call, so that the quick way itself saves no registers and calls nothing. It is open while no checksum is computed.

namespace Corvid {

// Reading ------------------------------------------------------------------------------------------------------------

namespace {

// Null for every shape but the canonical one, or, where that has no instructions of its own, for none.
inline const char* ScanQuickInt(const char* position, const char* end, std::int32_t& value) {
#if defined(__SSE4_1__)
    return NumberDetail::ScanShortInt(position, end, value);
#else
    const char* const behind = ScanInt(position, end, value);
    return behind != nullptr && behind - position <= kSafeIntDigits ? behind : nullptr;
#endif
}

inline const char* ScanQuickFloat(const char* position, const char* end, float& value) {
#if defined(__SSE4_1__) && defined(__SSE2_MATH__)
    return NumberDetail::ScanCanonicalFloat(position, end, value);
#else
    const char* const behind = ScanFloat(position, end, value);
    return behind != nullptr && !std::isinf(value) ? behind : nullptr;
#endif
}

} // namespace

void TextFileArchive::ReadInt(Label label, std::int32_t& value) {
    std::int32_t number;
    const char* text = FindQuick(label);
    if (text == nullptr || *text != ' ')
        return ReadIntGenerally(label, value);
    text = ScanQuickInt(text + 1, GetInput().GetEnd(), number);
    if (text == nullptr || !TakeQuick(text))
        return ReadIntGenerally(label, value);
    value = number;
}

void TextFileArchive::ReadFloat(Label label, float& value) {
    float number;
    const char* text = FindQuick(label);
    if (text == nullptr || *text != ' ')
        return ReadFloatGenerally(label, value);
    text = ScanQuickFloat(text + 1, GetInput().GetEnd(), number);
    if (text == nullptr || !TakeQuick(text))
        return ReadFloatGenerally(label, value);
    value = number;
}

void TextFileArchive::ReadVector3(Label label, Vector3& value) {
    Vector3 numbers;
    const char* const end = GetInput().GetEnd();
    const char* text = FindQuick(label);
    if (text == nullptr || std::memcmp(text, " [ ", 3) != 0)
        return ReadVector3Generally(label, value);
    text = ScanQuickFloat(text + 3, end, numbers.x);
    if (text == nullptr || *text != ' ')
        return ReadVector3Generally(label, value);
    text = ScanQuickFloat(text + 1, end, numbers.y);
    if (text == nullptr || *text != ' ')
        return ReadVector3Generally(label, value);
    text = ScanQuickFloat(text + 1, end, numbers.z);
    if (text == nullptr || std::memcmp(text, " ]", 2) != 0 || !TakeQuick(text + 2))
        return ReadVector3Generally(label, value);
    value = numbers;
}

// Of colours only the zero that every vertex of a mesh carries.
void TextFileArchive::ReadColor(Label label, Color& value) {
    const char* const text = FindQuick(label);
    if (text == nullptr || std::memcmp(text, " 0", 2) != 0 || !TakeQuick(text + 2))
        return ReadColorGenerally(label, value);
    value = Color{};
}

inline bool TextFileArchive::TakeLabelLine(Label label) {
    const char* const text = FindQuick(label);
    return (text != nullptr && TakeQuick(text)) || TakeLabelLineGenerally(label);
}

void TextFileArchive::ReadLabeledObject(Label label, Archivable& object, void* context) {
    if (!TakeLabelLine(label))
        return;
    SetTabDepth(m_TabDepth + 1);
    object.Load(*this, context);
    SetTabDepth(m_TabDepth - 1);
}

void TextFileArchive::ReadLabeledObject(Label label, Archivable& object) {
    if (!TakeLabelLine(label))
        return;
    SetTabDepth(m_TabDepth + 1);
    object.Load(*this);
    SetTabDepth(m_TabDepth - 1);
}

// Writing ------------------------------------------------------------------------------------------------------------

namespace {

constexpr std::uint32_t kQuickInts = 1'000'000;

bool IsQuickFloat(float value) {
    return std::bit_cast<std::uint32_t>(value) << 1 < std::bit_cast<std::uint32_t>(1000.0f) << 1;
}

} // namespace

void TextFileArchive::WriteInt(Label label, std::int32_t value) {
    if (!IsQuick(label) || static_cast<std::uint32_t>(value) >= kQuickInts) [[unlikely]]
        return WriteIntOfAnySize(label, value);
    EndLine(FormatInt(BeginQuickLine(label), value));
}

void TextFileArchive::WriteFloat(Label label, float value) {
    if (!AreFloatsQuick(label) || !IsQuickFloat(value)) [[unlikely]]
        return WriteFloatInAnyForm(label, value);
    EndLine(FormatFloat(BeginQuickLine(label), value));
}

void TextFileArchive::WriteVector3(Label label, const Vector3& value) {
    if (!AreFloatsQuick(label) || !IsQuickFloat(value.x) || !IsQuickFloat(value.y) || !IsQuickFloat(value.z))
        [[unlikely]]
        return WriteVector3InAnyForm(label, value);
    char* out = TextLineShape::Append(BeginQuickLine(label), "[ ", 2);
    out = FormatFloat(out, value.x);
    *out++ = ' ';
    out = FormatFloat(out, value.y);
    *out++ = ' ';
    out = FormatFloat(out, value.z);
    EndLine(TextLineShape::Append(out, " ]", 2));
}

void TextFileArchive::WriteColor(Label label, const Color& value) {
    if (!IsQuick(label) || value != Color{}) [[unlikely]]
        return WriteColorOfAnyValue(label, value);
    char* const out = BeginQuickLine(label);
    *out = '0';
    EndLine(out + 1);
}

void TextFileArchive::WriteLabeledObject(Label label, const Archivable& object) {
    EndLine((IsQuick(label) ? BeginQuickLine(label) : BeginLine(label)) - 1);
    ++m_TabDepth;
    if (m_TabDepth > TextLineShape::kTabBlock) [[unlikely]]
        UpdateQuickWriting();
    object.Save(*this);
    if (m_TabDepth <= 0) [[unlikely]]
        CheckTabDepth();
    --m_TabDepth;
    if (!m_IsQuick) [[unlikely]]
        UpdateQuickWriting();
}

} // namespace Corvid
