#include "Engine/Archive/Text/TextFileArchive.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "Engine/Archive/Text/TextFileArchiveFast.h"
#include "Engine/String/NumberFormatExact.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

using TextLineShape::kLineRoom;

static_assert(kLineRoom > LabelText::kAccessibleBytes + 4 * (kMaxFloatText + kMaxIntText + 8) + kFormatSlack);
static_assert(kLineRoom > LabelText::kAccessibleBytes + kMaxDoubleText + kMaxInt64Text + 16 + kFormatSlack);

char* Append(char* out, std::string_view text) {
    return TextLineShape::Append(out, text.data(), text.size());
}

char* AppendTabs(char* out, int depth) {
    depth = std::min(depth, TextLineShape::kMostTabs);
    std::memset(out, '\t', static_cast<std::size_t>(depth));
    return out + depth;
}

// "[ 1 , 2 , 3 ]"
char* AppendInts(char* out, const std::int32_t* values, int count) {
    out = Append(out, "[ ");
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            out = Append(out, " , ");
        out = FormatInt(out, values[i]);
    }
    return Append(out, " ]");
}

} // namespace

TextFileArchive::TextFileArchive(std::unique_ptr<File> file, FloatForm floatForm)
    : TextFileReader(std::move(file), floatForm == FloatForm::Bits ? BitsRule::Required : BitsRule::Ignored),
      m_FloatForm(floatForm),
      m_AreFloatsFast(floatForm == FloatForm::SixDecimals) {}

char* TextFileArchive::BeginAnyLine(Label label) {
    char* const out = LabelText::Write(label, AppendTabs(GetOutput().GetPosition(), m_TabDepth));
    *out = ' ';
    return out + 1;
}

// A line without a label, such as the row of a matrix.
char* TextFileArchive::BeginRow() {
    return AppendTabs(GetOutput().GetPosition(), m_TabDepth + 1);
}

void TextFileArchive::WriteAnyInt(Label label, std::int32_t value) {
    EndLine(FormatInt(BeginLine(label), value));
}

void TextFileArchive::WriteInt(Label label, std::uint32_t value) {
    WriteInt(label, static_cast<std::int32_t>(value)); // "%d" as well
}

void TextFileArchive::WriteInt64(Label label, std::int64_t value) {
    EndLine(FormatInt64(BeginLine(label), value));
}

void TextFileArchive::WriteBool(Label label, bool value) {
    EndLine(Append(BeginLine(label), value ? "TRUE" : "FALSE"));
}

void TextFileArchive::WriteAnyFloat(Label label, float value) {
    char* out = BeginLine(label);
    switch (m_FloatForm) {
    case FloatForm::SixDecimals:
        out = FormatFloat(out, value);
        break;
    case FloatForm::Exact:
        out = FormatFloatExact(out, value);
        break;
    case FloatForm::Bits:
        out = Append(FormatFloatShort(out, value), " Bits=");
        out = FormatInt(out, std::bit_cast<std::int32_t>(value));
        break;
    }
    EndLine(out);
}

void TextFileArchive::WriteDouble(Label label, double value) {
    char* out = BeginLine(label);
    switch (m_FloatForm) {
    case FloatForm::SixDecimals:
        out = FormatDouble(out, value);
        break;
    case FloatForm::Exact:
        out = FormatDoubleExact(out, value);
        break;
    case FloatForm::Bits:
        out = Append(FormatDoubleShort(out, value), " Bits=");
        out = FormatInt64(out, std::bit_cast<std::int64_t>(value));
        break;
    }
    EndLine(out);
}

// "[ 1.000000 2.000000 ]", or "[ 1.00 2.00 ] Bits=[ 1065353216 , 1073741824 ]"
char* TextFileArchive::WriteFloats(char* out, const float* values, int count) const {
    const auto format = m_FloatForm == FloatForm::SixDecimals ? &FormatFloatOfAnySize
                        : m_FloatForm == FloatForm::Exact     ? &FormatFloatExact
                                                              : &FormatFloatShort;
    *out++ = '[';
    *out++ = ' ';
    for (int i = 0; i < count; ++i) {
        out = format(out, values[i]);
        *out++ = ' ';
    }
    *out++ = ']';
    if (m_FloatForm == FloatForm::Bits) {
        std::int32_t bits[4];
        std::transform(values, values + count, bits, [](float value) { return std::bit_cast<std::int32_t>(value); });
        out = AppendInts(Append(out, " Bits="), bits, count);
    }
    return out;
}

void TextFileArchive::WriteAnyFloats(Label label, const float* values, int count) {
    EndLine(WriteFloats(BeginLine(label), values, count));
}

void TextFileArchive::WriteAnyVector3(Label label, const Vector3& value) {
    const float numbers[] = {value.x, value.y, value.z};
    WriteAnyFloats(label, numbers, 3);
}

void TextFileArchive::WriteVector4(Label label, const Vector4& value) {
    const float numbers[] = {value.x, value.y, value.z, value.w};
    WriteAnyFloats(label, numbers, 4);
}

void TextFileArchive::WriteMatrix33(Label label, const Matrix33& value) {
    EndLine(BeginLine(label) - 1);
    for (int i = 0; i < 3; ++i) {
        const Vector3& row = value.GetRow(i);
        const float numbers[] = {row.x, row.y, row.z};
        EndLine(WriteFloats(Append(BeginRow(), " "), numbers, 3));
    }
}

void TextFileArchive::WriteMatrix44(Label label, const Matrix44& value) {
    EndLine(BeginLine(label) - 1);
    for (int i = 0; i < 4; ++i) {
        const Vector4& row = value.GetRow(i);
        const float numbers[] = {row.x, row.y, row.z, row.w};
        EndLine(WriteFloats(Append(BeginRow(), " "), numbers, 4));
    }
}

void TextFileArchive::WriteIntPair(Label label, const IntPair& value) {
    WriteIntPair(label, value.first, value.second);
}

void TextFileArchive::WriteIntPair(Label label, std::int32_t first, std::int32_t second) {
    const std::int32_t numbers[] = {first, second};
    EndLine(AppendInts(BeginLine(label), numbers, 2));
}

void TextFileArchive::WriteIntRect(Label label, const IntRect& value) {
    const std::int32_t numbers[] = {value.x, value.y, value.width, value.height};
    EndLine(AppendInts(BeginLine(label), numbers, 4));
}

void TextFileArchive::WriteAnyColor(Label label, const Color& value) {
    EndLine(FormatHex(BeginLine(label), PackColor(value)));
}

// As it is held, in quotes; each LF, inside it too, as CR LF.
void TextFileArchive::WriteString(Label label, const char16_t* value) {
    char* out = BeginLine(label);
    *out++ = '"';
    GetOutput().Commit(out);
    const char16_t* const end = value + std::char_traits<char16_t>::length(value);
    while (value != end) {
        constexpr std::ptrdiff_t kBlockUnits = 1024; // a surrogate pair may take one more
        static_assert(OutputStream::kRoom >= (kBlockUnits + 1) * (1 + kMaxUtf8Bytes));
        const char16_t* const blockEnd = end - value > kBlockUnits ? value + kBlockUnits : end;
        out = GetOutput().GetPosition();
        while (value < blockEnd) {
            if (*value == u'\n')
                *out++ = '\r';
            out = EncodeUtf8(out, DecodeUtf16(value, end));
        }
        GetOutput().Commit(out);
    }
    out = GetOutput().GetPosition();
    *out++ = '"';
    EndLine(out);
}

void TextFileArchive::WriteObject(const Archivable& object) {
    object.Save(*this);
}

} // namespace Corvid
