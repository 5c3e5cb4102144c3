#include <string>

#include "Engine/Archive/LabelText.h"
#include "Engine/Archive/Text/QuotedString.h"
#include "Engine/Archive/Text/TextFileReader.h"

// The way "by line".

namespace Corvid {

namespace {

// The checked condition of a parse, by the number of items that its format asks for.
constexpr const char* kItemsConditions[] = {"result == 0", "result == 1", "result == 2", "result == 3", "result == 4",
                                            "result == 5", "result == 6", "result == 7", "result == 8"};

} // namespace

// Lines --------------------------------------------------------------------------------------------------------------

void TextFileReader::SkipFirstLine() {
    TakeRow();
}

std::optional<std::string_view> TextFileReader::FindByLine(Label label) {
    if (IsStopped())
        return std::nullopt;
    ++m_LookUpsByLine;
    if (!m_CurrentLineUnread) { // one that is offered again has been cut out already: a miss must not cost its length
        m_CurrentLine = m_Lines.Peek();
        m_CurrentText = TextWithLabel(m_CurrentLine);
    }
    m_CurrentLineUnread = false;
    const std::optional<std::string_view> value = ValueBehindLabel(m_CurrentText, label);
    if (value)
        m_Lines.Take();
    else
        ReportMissingLabel(label);
    UpdateWays();
    return value;
}

void TextFileReader::ReportMissingLabel(Label label) {
    Check(!m_CurrentLineUnread, "! m_CurrentLineUnread");
    m_CurrentLineUnread = true;
    std::string storage;
    ReportMessage(Message::MissingLabel,
                  {GetPath(), std::string_view(LabelText(label)), GetLookUps(), TextForReport(m_CurrentLine, storage)});
}

bool TextFileReader::TakeLabelLineByLine(Label label) {
    const auto text = FindByLine(label);
    m_HasDeviated = m_HasDeviated || (text && !text->empty());
    return text.has_value();
}

// A line of a matrix: taken as it comes, no look-up.
std::string_view TextFileReader::TakeRow() {
    m_CurrentLine = m_Lines.Peek();
    m_Lines.Take();
    UpdateWays();
    return m_CurrentLine.m_FirstUnit == 0 ? m_CurrentLine.m_Text : std::string_view();
}

// Numbers ------------------------------------------------------------------------------------------------------------

// Whether all items of a value were read; anything less is reported, anything more noted.
bool TextFileReader::Accept(const ScannedValue& scanned, int items) {
    m_HasDeviated = m_HasDeviated || !scanned.m_IsPlain;
    return Check(scanned.m_Items == items, kItemsConditions[items]);
}

bool TextFileReader::AcceptFloats(const ScannedValue& scanned, int count) {
    return Accept(scanned, m_BitsRule == BitsRule::Required ? 2 * count : count);
}

void TextFileReader::ReadIntByLine(Label label, std::int32_t& value) {
    const auto text = FindByLine(label);
    if (text && Accept(ScanIntValue(*text, value), 1))
        AddToChecksum(&value, 1);
}

void TextFileReader::ReadInt(Label label, std::uint32_t& value) {
    const auto text = FindByLine(label);
    if (!text || !Accept(ScanUnsignedValue(*text, value), 1))
        return;
    const auto number = static_cast<std::int32_t>(value);
    AddToChecksum(&number, 1);
}

void TextFileReader::ReadInt64(Label label, std::int64_t& value) {
    const auto text = FindByLine(label);
    if (text && Accept(ScanInt64Value(*text, value), 1)) {
        const auto low = static_cast<std::int32_t>(value);
        AddToChecksum(&low, 1);
    }
}

void TextFileReader::ReadIntPair(Label label, std::int32_t& first, std::int32_t& second) {
    IntPair pair{first, second};
    ReadIntPair(label, pair);
    first = pair.first;
    second = pair.second;
}

void TextFileReader::ReadIntPair(Label label, IntPair& value) {
    const auto text = FindByLine(label);
    if (!text)
        return;
    std::int32_t numbers[] = {value.first, value.second};
    const ScannedValue scanned = ScanIntsValue(*text, numbers, 2);
    value = {numbers[0], numbers[1]};
    if (Accept(scanned, 2))
        AddToChecksum(numbers, 2);
}

void TextFileReader::ReadIntRect(Label label, IntRect& value) {
    const auto text = FindByLine(label);
    if (!text)
        return;
    std::int32_t numbers[] = {value.x, value.y, value.width, value.height};
    const ScannedValue scanned = ScanIntsValue(*text, numbers, 4);
    value = {numbers[0], numbers[1], numbers[2], numbers[3]};
    if (Accept(scanned, 4))
        AddToChecksum(numbers, 4);
}

void TextFileReader::ReadFloatByLine(Label label, float& value) {
    const auto text = FindByLine(label);
    if (text && AcceptFloats(ScanFloatValue(*text, m_BitsRule, value), 1))
        AddToChecksum(&value, 1);
}

void TextFileReader::ReadDouble(Label label, double& value) {
    const auto text = FindByLine(label);
    if (text && AcceptFloats(ScanDoubleValue(*text, m_BitsRule, value), 1) && m_IsChecksumEnabled)
        m_Checksum.AddDouble(value);
}

void TextFileReader::ReadVector3ByLine(Label label, Vector3& value) {
    float numbers[] = {value.x, value.y, value.z};
    if (const auto text = FindByLine(label))
        TakeFloats(*text, numbers, 3);
    value = {numbers[0], numbers[1], numbers[2]};
}

void TextFileReader::ReadVector4(Label label, Vector4& value) {
    float numbers[] = {value.x, value.y, value.z, value.w};
    if (const auto text = FindByLine(label))
        TakeFloats(*text, numbers, 4);
    value = {numbers[0], numbers[1], numbers[2], numbers[3]};
}

void TextFileReader::TakeFloats(std::string_view text, float* values, int count) {
    if (AcceptFloats(ScanFloatsValue(text, m_BitsRule, values, count), count))
        AddToChecksum(values, count);
}

void TextFileReader::ReadMatrix33(Label label, Matrix33& value) {
    if (!TakeLabelLineInPlace(label))
        return;
    for (int i = 0; i < 3; ++i) {
        Vector3& row = value.GetRow(i);
        float numbers[] = {row.x, row.y, row.z};
        TakeFloats(TakeRow(), numbers, 3);
        row = {numbers[0], numbers[1], numbers[2]};
    }
}

void TextFileReader::ReadMatrix44(Label label, Matrix44& value) {
    if (!TakeLabelLineInPlace(label))
        return;
    for (int i = 0; i < 4; ++i) {
        Vector4& row = value.GetRow(i);
        float numbers[] = {row.x, row.y, row.z, row.w};
        TakeFloats(TakeRow(), numbers, 4);
        row = {numbers[0], numbers[1], numbers[2], numbers[3]};
    }
}

void TextFileReader::AddToChecksum(const float* values, int count) {
    if (!m_IsChecksumEnabled)
        return;
    for (int i = 0; i < count; ++i)
        m_Checksum.AddFloat(values[i]);
}

void TextFileReader::AddToChecksum(const std::int32_t* values, int count) {
    if (!m_IsChecksumEnabled)
        return;
    for (int i = 0; i < count; ++i)
        m_Checksum.AddInt(static_cast<std::uint32_t>(values[i]));
}

void TextFileReader::ReadColorByLine(Label label, Color& value) {
    std::uint32_t packed;
    const auto text = FindByLine(label);
    if (text && Accept(ScanHexValue(*text, packed), 1))
        TakeColor(packed, value);
}

void TextFileReader::TakeColor(std::uint32_t packed, Color& value) {
    value = UnpackColor(packed);
    const float channels[] = {value.red, value.green, value.blue, value.alpha};
    AddToChecksum(channels, 4);
}

// Words and strings --------------------------------------------------------------------------------------------------

void TextFileReader::ReadBool(Label label, bool& value) {
    const auto text = FindByLine(label);
    if (!text)
        return;
    const ScannedValue scanned = ScanBoolValue(*text, value);
    m_HasDeviated = m_HasDeviated || !scanned.m_IsPlain;
    if (!Check(scanned.m_Items == 1, "false")) // neither word
        return;
    const std::int32_t number = value ? 1 : 0;
    AddToChecksum(&number, 1);
}

void TextFileReader::ReadString(Label label, char16_t* buffer, int capacity) {
    const auto text = FindByLine(label);
    if (!text || capacity < 1)
        return;
    const QuotedString string(m_CurrentLine, *text);
    m_HasDeviated = m_HasDeviated || !string.m_IsAlone;
    Check(string.m_IsQuoted, "*stringSrc == _T('\"')");
    const bool isWhole = Check(string.CopyTo(buffer, capacity), "numCharsCopied < bufferSize");
    if (isWhole && !string.m_IsTerminated)
        ReportUnterminatedString(string.m_BehindQuote);
    if (m_IsChecksumEnabled)
        m_Checksum.AddString(buffer);
}

void TextFileReader::ReportUnterminatedString(const TextLine& behindQuote) const {
    std::string storages[2];
    ReportMessage(Message::UnterminatedString, {TextForReport(behindQuote, storages[0]), GetPath(), GetLookUps(),
                                                TextForReport(m_CurrentLine, storages[1])});
}

} // namespace Corvid
