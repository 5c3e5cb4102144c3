#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

#include "Engine/Archive/FileArchive.h"
#include "Engine/Archive/Text/TextLineReader.h"
#include "Engine/Archive/Text/TextValues.h"

namespace Corvid {

class UnreadLines;

// The half of TextFileArchive that reads; the format and what a read promises stand there.
//
// There are three ways to read a line. Each is a shortcut to what the next does with the same line, and hands on,
// untouched, a line that it does not know:
//
//   as written  A line that looks to the byte as the archive writes it, with a label of at most Label::kMaxShortLength
//               characters: it is recognised without a loop. Open while no checksum is computed and floats have six
//               decimals. (TextFileReaderAsWritten.cpp)
//   in place    Any blanks, line end and shape of number; the value is read where it stands in the window.
//               (TextFileReaderInPlace.cpp)
//   by line     The line is cut out of the window first; this way knows every rule. (TextFileReader.cpp)
//
// An operation that large files are made of has a function for each way; the others go by line at once.
class TextFileReader : public FileArchive {
public:
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

    // Moves behind the header, which is no look-up.
    void SkipFirstLine();

    void Stop() override;
    ElementRoom GetRoom(const ElementSize& smallest) const override;
    void SkipEntry(Label contents, Label nextEntry, std::span<const Label> behindList) override;
    std::optional<bool> IsNext(Label label) override;
    bool ReportUnreadInput() override;
    ReportPosition GetPosition() const override; // a physical line; the header is line 1

    void EnableChecksum(bool isEnabled) override;

    // From now on every value is read by line: for tests, and once the archive is stopped.
    void ReadByLineOnly();

protected:
    TextFileReader(std::unique_ptr<File> file, BitsRule bitsRule);

private:
    // As written
    const char* FindAsWritten(Label label) const; // the place behind the label, or null
    bool TakeAsWritten(const char* valueEnd);     // moves behind the line if it ends there
    bool TakeLabelLine(Label label);
    void SetTabDepth(int depth);

    // In place
    const char* FindInPlace(Label label); // the place of the value, or null
    bool TakeInPlace(const char* valueEnd);
    bool TakeLabelLineInPlace(Label label);
    void ReadIntInPlace(Label label, std::int32_t& value);
    void ReadFloatInPlace(Label label, float& value);
    void ReadVector3InPlace(Label label, Vector3& value);
    void ReadColorInPlace(Label label, Color& value);

    // By line
    std::optional<std::string_view> FindByLine(Label label); // the text of the value; a miss is reported
    bool TakeLabelLineByLine(Label label);
    std::string_view TakeRow();
    void ReadIntByLine(Label label, std::int32_t& value);
    void ReadFloatByLine(Label label, float& value);
    void ReadVector3ByLine(Label label, Vector3& value);
    void ReadColorByLine(Label label, Color& value);
    void ReportMissingLabel(Label label);
    void ReportUnterminatedString(const TextLine& behindQuote) const;
    void ReportUnread(const UnreadLines& unread) const;

    bool Accept(const ScannedValue& scanned, int items);
    bool AcceptFloats(const ScannedValue& scanned, int count);
    void TakeFloats(std::string_view text, float* values, int count);
    void TakeColor(std::uint32_t packed, Color& value);
    void AddToChecksum(const float* values, int count);
    void AddToChecksum(const std::int32_t* values, int count);

    void UpdateWays();
    std::uint64_t GetLinesTaken() const;
    std::uint64_t GetLookUps() const { return m_LookUpsByLine + m_LinesTakenInWindow; }

    TextLineReader m_Lines;
    BitsRule m_BitsRule;
    bool m_HasDeviated = false;
    bool m_IsAsWrittenOpen = false;
    int m_TabDepth = 0;                  // nested objects around the current value
    std::uint64_t m_ExpectedTabs = 0;    // what a line as written has in front of its label: these bytes,
    std::uint64_t m_ExpectedTabMask = 0; // as far as the mask has them

    std::uint64_t m_LinesTakenInWindow = 0; // as written and in place: each one line and one look-up
    std::uint64_t m_LookUpsByLine = 0;      // of a label

    TextLine m_CurrentLine;           // the last line that was taken or looked at by line
    std::string_view m_CurrentText;   // the same from its label on
    bool m_CurrentLineUnread = false; // the current line did not carry the label that was asked for
};

} // namespace Corvid
