#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "Engine/Archive/FileArchive.h"
#include "Engine/Archive/FloatForm.h"
#include "Engine/Archive/TextLineReader.h"
#include "Engine/Archive/TextValues.h"

namespace Corvid {

// The human-readable encoding. One value is one line: tabs, the label, a blank, the value. Nested objects show by their
// indentation alone, which reading ignores.
//
// On disk: UTF-8 behind a byte-order mark, a first line "TXT", lines end with CR LF. In memory a line is UTF-16 and
// ends with "\n"; it is at most TextLineReader::kMaxLineUnits long, a longer one counts as several.
//
// A read takes the current line if it begins with the label and white space behind it. Otherwise the miss is reported,
// the value stays as it was, and the line is offered to the next read: a missing field costs one message.
class TextFileArchive final : public FileArchive {
public:
    // Reading and writing start where the file stands.
    explicit TextFileArchive(std::unique_ptr<File> file, FloatForm floatForm = FloatForm::SixDecimals);

    // When reading: the header is no look-up.
    void SkipFirstLine();

    // From now on, where exact bits stand behind the decimals of a float, they are read, whatever the file's form.
    void TakeBits();

    // Whether a value so far was read in silence from a text that holds something else, too: anything but white space
    // behind the value or behind a label that stands alone, anything around TRUE and FALSE, a list of numbers without
    // its closing bracket, a number beyond the range of its type.
    bool HasDeviated() const { return m_HasDeviated; }

    void ReadColor(Label label, Color& value) override;
    void ReadIntRect(Label label, IntRect& value) override;
    void ReadIntPair(Label label, IntPair& value) override;
    void ReadIntPair(Label label, std::int32_t& first, std::int32_t& second) override;
    void ReadVector4(Label label, Vector4& value) override;
    void ReadMatrix44(Label label, Matrix44& value) override;
    void ReadMatrix33(Label label, Matrix33& value) override;
    void ReadVector3(Label label, Vector3& value) override;
    void ReadString(Label label, char16_t* buffer, int capacity) override;
    void ReadInt64(Label label, std::int64_t& value) override;
    void ReadBool(Label label, bool& value) override;
    void ReadDouble(Label label, double& value) override;
    void ReadFloat(Label label, float& value) override;
    void ReadInt(Label label, std::int32_t& value) override;
    void ReadInt(Label label, std::uint32_t& value) override;
    void ReadObject(Archivable& object) override;
    void ReadLabeledObject(Label label, Archivable& object, void* context) override;
    void ReadLabeledObject(Label label, Archivable& object) override;

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

    void Stop() override;
    ElementRoom GetRoom(const ElementSize& smallest) const override;
    void SkipEntry(Label contents, Label nextEntry, std::span<const Label> behindList) override;
    std::optional<bool> IsNext(Label label) override;
    bool ReportUnreadInput() override;
    ReportPosition GetPosition() const override; // a physical line; the header is line 1

    void EnableChecksum(bool isEnabled) override;

    // From now on every read takes the general way: for tests, and once the archive is stopped.
    void CloseFastWay();

private:
    // There are three ways to read a line, each a shortcut to what the next does for the same line, and each handing on
    // what it does not know. The quick way takes a line with a short label that looks as this archive writes it,
    // without a loop (TextFileArchiveQuick.cpp). The way ahead takes a value where it stands in the window, with any
    // blanks, line end and number shape. The general way cuts out the line first.
    const char* FindQuick(Label label) const; // the place of the value, or null
    bool TakeQuick(const char* valueEnd);
    bool IsQuick(Label label) const;
    bool AreFloatsQuick(Label label) const;
    void UpdateQuick();
    void SetTabDepth(int depth);

    const char* FindAhead(Label label); // the same, one way on
    bool TakeAhead(const char* valueEnd);

    void ReadIntGenerally(Label label, std::int32_t& value);
    void ReadFloatGenerally(Label label, float& value);
    void ReadVector3Generally(Label label, Vector3& value);
    void ReadColorGenerally(Label label, Color& value);
    bool TakeLabelLineGenerally(Label label);

    class UnreadLines;

    // The value text of the current line if it has the label; else the miss is reported.
    std::optional<std::string_view> FindLabel(Label label);
    bool TakeLabelLine(Label label);
    std::string_view TakeRow();
    std::uint64_t GetPhysicalLinesTaken() const;
    void ReportMissingLabel(Label label);

    bool Accept(const ScannedValue& scanned, int items);
    bool AcceptFloats(const ScannedValue& scanned, int count);
    void TakeFloats(std::string_view text, float* values, int count);
    void CopyString(std::string_view text, char16_t* buffer, int capacity);
    void TakeColor(std::uint32_t packed, Color& value);
    void AddToChecksum(const float* values, int count);
    void AddToChecksum(const std::int32_t* values, int count);

    char* BeginQuickLine(Label label);
    char* BeginLine(Label label);
    void EndLine(char* end);
    void CheckTabDepth() const;
    void WriteIntOfAnySize(Label label, std::int32_t value);
    void WriteFloatInAnyForm(Label label, float value);
    void WriteVector3InAnyForm(Label label, const Vector3& value);
    void WriteColorOfAnyValue(Label label, const Color& value);
    void UpdateQuickWriting();
    void WriteFloatsInAnyForm(Label label, const float* values, int count);
    char* BeginRow();
    char* WriteFloats(char* out, const float* values, int count) const;

    std::optional<TextLineReader> m_Lines; // when reading
    FloatForm m_FloatForm;
    BitsRule m_BitsRule;
    bool m_HasDeviated = false;
    int m_TabDepth = 0;                    // nested objects around the current value
    bool m_IsQuick = false;                // the quick way is open,
    bool m_AreFloatsQuick = false;         // to floats in six decimals, too (when writing)
    std::uint64_t m_QuickTabs = 0;         // what it expects in front of a label: these bytes,
    std::uint64_t m_QuickTabMask = 0;      // as far as the mask has them
    std::uint64_t m_LinesTakenInPlace = 0; // by the quick way and the way ahead: each one line and one look-up

    TextLine m_CurrentLine;           // the last line that was taken or looked at in the general way
    std::string_view m_CurrentText;   // the same from its label on
    std::uint64_t m_LineNumber = 0;   // label look-ups in the general way
    bool m_CurrentLineUnread = false; // the current line did not carry the label that was asked for
};

} // namespace Corvid
