#pragma once

#include <cstdint>
#include <memory>

#include "Engine/Archive/FloatForm.h"
#include "Engine/Archive/LabelText.h"
#include "Engine/Archive/Text/TextFileReader.h"

namespace Corvid {

// The human-readable encoding. One value is one line: tabs, the label, a blank, the value. Nested objects show by their
// indentation alone, which reading ignores.
//
// On disk: UTF-8 behind a byte-order mark, a first line "TXT", lines end with CR LF. In memory a line is UTF-16 and
// ends with "\n"; it is at most TextLineReader::kMaxLineUnits long, a longer one counts as several.
//
// A read takes the current line if it begins with the label and white space behind it. Otherwise the miss is reported,
// the value stays as it was, and the line is offered to the next read: a missing field costs one message.
//
// TextFileReader has all that reads; here stands what writes.
class TextFileArchive final : public TextFileReader {
public:
    // Reading and writing start where the file stands.
    explicit TextFileArchive(std::unique_ptr<File> file, FloatForm floatForm = FloatForm::SixDecimals);

    void WriteColor(Label label, const Color& value) override;
    void WriteIntRect(Label label, const IntRect& value) override;
    void WriteIntPair(Label label, const IntPair& value) override;
    void WriteIntPair(Label label, std::int32_t first, std::int32_t second) override;
    void WriteVector4(Label label, const Vector4& value) override;
    void WriteMatrix44(Label label, const Matrix44& value) override;
    void WriteMatrix33(Label label, const Matrix33& value) override;
    void WriteVector3(Label label, const Vector3& value) override;
    void WriteString(Label label, const char16_t* value) override;
    void WriteInt64(Label label, std::int64_t value) override;
    void WriteBool(Label label, bool value) override;
    void WriteDouble(Label label, double value) override;
    void WriteFloat(Label label, float value) override;
    void WriteInt(Label label, std::int32_t value) override;
    void WriteInt(Label label, std::uint32_t value) override;
    void WriteObject(const Archivable& object) override;
    void WriteLabeledObject(Label label, const Archivable& object) override;

private:
    // What large files are made of is written without a loop (TextFileArchiveFast.cpp): a line with a short label and
    // few tabs, a small number, a float of six decimals. Any other line is handed on to the functions of any shape.
    bool IsFast(Label label) const { return m_HasFewTabs && LabelText::IsShort(label); }
    bool AreFloatsFast(Label label) const { return m_AreFloatsFast && LabelText::IsShort(label); }
    char* BeginFastLine(Label label);
    void UpdateFast();

    void WriteAnyInt(Label label, std::int32_t value);
    void WriteAnyFloat(Label label, float value);
    void WriteAnyFloats(Label label, const float* values, int count);
    void WriteAnyVector3(Label label, const Vector3& value);
    void WriteAnyColor(Label label, const Color& value);
    char* BeginLine(Label label); // the indentation, the label and a blank; the value goes to the returned place
    char* BeginAnyLine(Label label);
    char* BeginRow();
    void EndLine(char* end);
    char* WriteFloats(char* out, const float* values, int count) const;

    FloatForm m_FloatForm;
    int m_TabDepth = 0; // nested objects around the current value
    bool m_HasFewTabs = true;
    bool m_AreFloatsFast; // few tabs, six decimals
};

} // namespace Corvid
