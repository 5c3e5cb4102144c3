#include "Engine/Archive/Text/TextFileArchiveFast.h"

#include <bit>
#include <cstdint>

#include "Engine/String/NumberFormat.h"

// The operations that large files are made of. Each writes its value without a loop or hands it on as a whole, by a
// tail call, so that it saves no registers on the way.

namespace Corvid {

namespace {

constexpr std::uint32_t kFastInts = 1'000'000;

bool IsFastFloat(float value) {
    return std::bit_cast<std::uint32_t>(value) << 1 < std::bit_cast<std::uint32_t>(1000.0f) << 1;
}

} // namespace

void TextFileArchive::WriteInt(Label label, std::int32_t value) {
    if (!IsFast(label) || static_cast<std::uint32_t>(value) >= kFastInts) [[unlikely]]
        return WriteAnyInt(label, value);
    EndLine(FormatInt(BeginFastLine(label), value));
}

void TextFileArchive::WriteFloat(Label label, float value) {
    if (!AreFloatsFast(label) || !IsFastFloat(value)) [[unlikely]]
        return WriteAnyFloat(label, value);
    EndLine(FormatFloat(BeginFastLine(label), value));
}

void TextFileArchive::WriteVector3(Label label, const Vector3& value) {
    if (!AreFloatsFast(label) || !IsFastFloat(value.x) || !IsFastFloat(value.y) || !IsFastFloat(value.z)) [[unlikely]]
        return WriteAnyVector3(label, value);
    char* out = TextLineShape::Append(BeginFastLine(label), "[ ", 2);
    out = FormatFloat(out, value.x);
    *out++ = ' ';
    out = FormatFloat(out, value.y);
    *out++ = ' ';
    out = FormatFloat(out, value.z);
    EndLine(TextLineShape::Append(out, " ]", 2));
}

void TextFileArchive::WriteColor(Label label, const Color& value) {
    if (!IsFast(label) || value != Color{}) [[unlikely]]
        return WriteAnyColor(label, value);
    char* const out = BeginFastLine(label);
    *out = '0';
    EndLine(out + 1);
}

void TextFileArchive::WriteLabeledObject(Label label, const Archivable& object) {
    EndLine(BeginLine(label) - 1); // without the blank
    ++m_TabDepth;
    if (m_TabDepth > TextLineShape::kTabBlock) [[unlikely]]
        UpdateFast();
    object.Save(*this);
    Check(m_TabDepth > 0, "m_TabDepth > 0");
    --m_TabDepth;
    if (!m_HasFewTabs) [[unlikely]]
        UpdateFast();
}

} // namespace Corvid
