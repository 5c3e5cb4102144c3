#include "Engine/Archive/TextFileArchive.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "Engine/Archive/LabelText.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

// The checked condition of a parse, by the number of items that its format asks for.
constexpr const char* kItemsConditions[] = {"result == 0", "result == 1", "result == 2", "result == 3", "result == 4",
                                            "result == 5", "result == 6", "result == 7", "result == 8"};

bool HasInfinity(const float (&numbers)[3]) {
    return std::isinf(numbers[0]) || std::isinf(numbers[1]) || std::isinf(numbers[2]);
}

} // namespace

TextFileArchive::TextFileArchive(std::unique_ptr<File> file, FloatForm floatForm)
    : FileArchive(std::move(file)),
      m_FloatForm(floatForm),
      m_BitsRule(floatForm == FloatForm::Bits ? BitsRule::Required : BitsRule::Ignored) {
    m_Lines.emplace(GetInput()); // an empty one when writing, so that a read finds nothing
    if (GetFile().GetAccess() == FileAccess::Write) {
        UpdateQuickWriting();
        return;
    }
    if (m_BitsRule == BitsRule::Required)
        m_Lines->CloseAhead(); // it knows plain decimals only
    UpdateQuick();
}

// Finding a label ----------------------------------------------------------------------------------------------------

void TextFileArchive::UpdateQuick() {
    if (GetFile().GetAccess() == FileAccess::Write)
        return UpdateQuickWriting();
    m_IsQuick = m_Lines->IsAheadAllowed() && !m_IsChecksumEnabled;
}

void TextFileArchive::EnableChecksum(bool isEnabled) {
    FileArchive::EnableChecksum(isEnabled);
    UpdateQuick();
}

void TextFileArchive::TakeBits() {
    if (m_BitsRule == BitsRule::Ignored)
        m_BitsRule = BitsRule::Taken;
}

void TextFileArchive::CloseFastWay() {
    m_Lines->CloseAhead();
    UpdateQuick();
}

const char* TextFileArchive::FindAhead(Label label) {
    if (m_CurrentLineUnread || !m_Lines->IsAheadOpen())
        return nullptr;
    const char* const position = LabelText::Match(label, SkipBlanks(m_Lines->GetAhead()));
    if (position == nullptr || (*position != ' ' && *position != '\t'))
        return nullptr;
    return SkipBlanks(position);
}

bool TextFileArchive::TakeAhead(const char* valueEnd) {
    if (!m_Lines->TakeAhead(valueEnd))
        return false;
    ++m_LinesTakenInPlace;
    m_CurrentLineUnread = false;
    return true;
}

void TextFileArchive::SkipFirstLine() {
    TakeRow();
}

std::optional<std::string_view> TextFileArchive::FindLabel(Label label) {
    if (IsStopped())
        return std::nullopt;
    ++m_LineNumber;
    if (!m_CurrentLineUnread) { // one that is offered again has been cut out already: a miss must not cost its length
        m_CurrentLine = m_Lines->Peek();
        m_CurrentText = TextWithLabel(m_CurrentLine);
    }
    m_CurrentLineUnread = false;
    const std::optional<std::string_view> value = ValueBehindLabel(m_CurrentText, label);
    if (value)
        m_Lines->Take();
    else
        ReportMissingLabel(label);
    UpdateQuick();
    return value;
}

void TextFileArchive::ReportMissingLabel(Label label) {
    Check(!m_CurrentLineUnread, "! m_CurrentLineUnread");
    m_CurrentLineUnread = true;
    std::string storage;
    ReportMessage(Message::MissingLabel, {GetPath(), std::string_view(LabelText(label)),
                                          m_LineNumber + m_LinesTakenInPlace, TextForReport(m_CurrentLine, storage)});
}

bool TextFileArchive::TakeLabelLineGenerally(Label label) {
    if (!m_CurrentLineUnread && m_Lines->IsAheadOpen()) {
        const char* const position = LabelText::Match(label, SkipBlanks(m_Lines->GetAhead()));
        if (position != nullptr && TakeAhead(position))
            return true;
    }
    const auto text = FindLabel(label);
    m_HasDeviated = m_HasDeviated || (text && !text->empty());
    return text.has_value();
}

// A line of a matrix: taken as it comes, no look-up.
std::string_view TextFileArchive::TakeRow() {
    m_CurrentLine = m_Lines->Peek();
    m_Lines->Take();
    UpdateQuick();
    return m_CurrentLine.m_FirstUnit == 0 ? m_CurrentLine.m_Text : std::string_view();
}

// Numbers ------------------------------------------------------------------------------------------------------------

// Whether all items of a value were read; anything less is reported, anything more noted.
bool TextFileArchive::Accept(const ScannedValue& scanned, int items) {
    m_HasDeviated = m_HasDeviated || !scanned.m_IsPlain;
    return Check(scanned.m_Items == items, kItemsConditions[items]);
}

bool TextFileArchive::AcceptFloats(const ScannedValue& scanned, int count) {
    return Accept(scanned, m_BitsRule == BitsRule::Required ? 2 * count : count);
}

void TextFileArchive::ReadIntGenerally(Label label, std::int32_t& value) {
    std::int32_t number;
    if (const char* text = FindAhead(label)) {
        const char* const end = ScanInt(text, m_Lines->GetAheadEnd(), number);
        if (end != nullptr && end - text <= kSafeIntDigits && TakeAhead(end)) [[likely]] {
            value = number;
            AddToChecksum(&number, 1);
            return;
        }
    }
    const auto text = FindLabel(label);
    if (text && Accept(ScanIntValue(*text, value), 1))
        AddToChecksum(&value, 1);
}

void TextFileArchive::ReadInt(Label label, std::uint32_t& value) {
    const auto text = FindLabel(label);
    if (!text || !Accept(ScanUnsignedValue(*text, value), 1))
        return;
    const auto number = static_cast<std::int32_t>(value);
    AddToChecksum(&number, 1);
}

void TextFileArchive::ReadInt64(Label label, std::int64_t& value) {
    const auto text = FindLabel(label);
    if (text && Accept(ScanInt64Value(*text, value), 1)) {
        const auto low = static_cast<std::int32_t>(value);
        AddToChecksum(&low, 1);
    }
}

void TextFileArchive::ReadIntPair(Label label, std::int32_t& first, std::int32_t& second) {
    IntPair pair{first, second};
    ReadIntPair(label, pair);
    first = pair.first;
    second = pair.second;
}

void TextFileArchive::ReadIntPair(Label label, IntPair& value) {
    const auto text = FindLabel(label);
    if (!text)
        return;
    std::int32_t numbers[] = {value.first, value.second};
    const ScannedValue scanned = ScanIntsValue(*text, numbers, 2);
    value = {numbers[0], numbers[1]};
    if (Accept(scanned, 2))
        AddToChecksum(numbers, 2);
}

void TextFileArchive::ReadIntRect(Label label, IntRect& value) {
    const auto text = FindLabel(label);
    if (!text)
        return;
    std::int32_t numbers[] = {value.x, value.y, value.width, value.height};
    const ScannedValue scanned = ScanIntsValue(*text, numbers, 4);
    value = {numbers[0], numbers[1], numbers[2], numbers[3]};
    if (Accept(scanned, 4))
        AddToChecksum(numbers, 4);
}

void TextFileArchive::ReadFloatGenerally(Label label, float& value) {
    float number;
    if (const char* text = FindAhead(label)) {
        const char* const end = ScanFloat(text, m_Lines->GetAheadEnd(), number);
        if (end != nullptr && !std::isinf(number) && TakeAhead(end)) [[likely]] {
            value = number;
            AddToChecksum(&number, 1);
            return;
        }
    }
    const auto text = FindLabel(label);
    if (text && AcceptFloats(ScanFloatValue(*text, m_BitsRule, value), 1))
        AddToChecksum(&value, 1);
}

void TextFileArchive::ReadDouble(Label label, double& value) {
    const auto text = FindLabel(label);
    if (text && AcceptFloats(ScanDoubleValue(*text, m_BitsRule, value), 1) && m_IsChecksumEnabled)
        m_Checksum.AddDouble(value);
}

void TextFileArchive::ReadVector3Generally(Label label, Vector3& value) {
    float numbers[3];
    if (const char* text = FindAhead(label); text != nullptr && *text == '[') {
        const char* const windowEnd = m_Lines->GetAheadEnd();
        const char* end = ScanNextFloat(text + 1, windowEnd, numbers[0]);
        if (end != nullptr)
            end = ScanNextFloat(end, windowEnd, numbers[1]);
        if (end != nullptr)
            end = ScanNextFloat(end, windowEnd, numbers[2]);
        if (end != nullptr) {
            end = SkipBlanks(end);
            if (*end == ']' && !HasInfinity(numbers) && TakeAhead(end + 1)) [[likely]] {
                value = {numbers[0], numbers[1], numbers[2]};
                AddToChecksum(numbers, 3);
                return;
            }
        }
    }
    numbers[0] = value.x;
    numbers[1] = value.y;
    numbers[2] = value.z;
    if (const auto line = FindLabel(label))
        TakeFloats(*line, numbers, 3);
    value = {numbers[0], numbers[1], numbers[2]};
}

void TextFileArchive::ReadVector4(Label label, Vector4& value) {
    float numbers[] = {value.x, value.y, value.z, value.w};
    if (const auto text = FindLabel(label))
        TakeFloats(*text, numbers, 4);
    value = {numbers[0], numbers[1], numbers[2], numbers[3]};
}

void TextFileArchive::TakeFloats(std::string_view text, float* values, int count) {
    if (AcceptFloats(ScanFloatsValue(text, m_BitsRule, values, count), count))
        AddToChecksum(values, count);
}

void TextFileArchive::ReadMatrix33(Label label, Matrix33& value) {
    if (!TakeLabelLineGenerally(label))
        return;
    for (int i = 0; i < 3; ++i) {
        Vector3& row = value.GetRow(i);
        float numbers[] = {row.x, row.y, row.z};
        TakeFloats(TakeRow(), numbers, 3);
        row = {numbers[0], numbers[1], numbers[2]};
    }
}

void TextFileArchive::ReadMatrix44(Label label, Matrix44& value) {
    if (!TakeLabelLineGenerally(label))
        return;
    for (int i = 0; i < 4; ++i) {
        Vector4& row = value.GetRow(i);
        float numbers[] = {row.x, row.y, row.z, row.w};
        TakeFloats(TakeRow(), numbers, 4);
        row = {numbers[0], numbers[1], numbers[2], numbers[3]};
    }
}

void TextFileArchive::AddToChecksum(const float* values, int count) {
    if (!m_IsChecksumEnabled)
        return;
    for (int i = 0; i < count; ++i)
        m_Checksum.AddFloat(values[i]);
}

void TextFileArchive::AddToChecksum(const std::int32_t* values, int count) {
    if (!m_IsChecksumEnabled)
        return;
    for (int i = 0; i < count; ++i)
        m_Checksum.AddInt(static_cast<std::uint32_t>(values[i]));
}

void TextFileArchive::ReadColorGenerally(Label label, Color& value) {
    std::uint32_t packed;
    if (const char* text = FindAhead(label)) {
        const char* const end = ScanHex(text, m_Lines->GetAheadEnd(), packed);
        if (end != nullptr && end - text <= kSafeHexDigits && *text != '-' && TakeAhead(end)) [[likely]] {
            TakeColor(packed, value);
            return;
        }
    }
    const auto text = FindLabel(label);
    if (text && Accept(ScanHexValue(*text, packed), 1))
        TakeColor(packed, value);
}

void TextFileArchive::TakeColor(std::uint32_t packed, Color& value) {
    value = UnpackColor(packed);
    const float channels[] = {value.red, value.green, value.blue, value.alpha};
    AddToChecksum(channels, 4);
}

// Words and strings --------------------------------------------------------------------------------------------------

void TextFileArchive::ReadBool(Label label, bool& value) {
    const auto text = FindLabel(label);
    if (!text)
        return;
    const ScannedValue scanned = ScanBoolValue(*text, value);
    m_HasDeviated = m_HasDeviated || !scanned.m_IsPlain;
    if (!Check(scanned.m_Items == 1, "false")) // neither word
        return;
    const std::int32_t number = value ? 1 : 0;
    AddToChecksum(&number, 1);
}

void TextFileArchive::ReadString(Label label, char16_t* buffer, int capacity) {
    const auto text = FindLabel(label);
    if (!text || capacity < 1)
        return;
    CopyString(*text, buffer, capacity);
    if (m_IsChecksumEnabled)
        m_Checksum.AddString(buffer);
}

// Copies the quoted string of a value text. A first unit that is no quote is skipped like one.
void TextFileArchive::CopyString(std::string_view text, char16_t* buffer, int capacity) {
    const char* position = text.data();
    const char* end = position + text.size();
    const int bufferSize = capacity;
    int numCharsCopied = 0;
    const auto append = [&](char16_t unit) {
        if (!Check(numCharsCopied + 1 < bufferSize, "numCharsCopied < bufferSize"))
            return false;
        buffer[numCharsCopied++] = unit;
        return true;
    };
    const auto appendCharacter = [&](char32_t character) {
        if (character >= 0x10000)
            return append(HighSurrogate(character)) && append(LowSurrogate(character));
        return append(static_cast<char16_t>(character));
    };

    bool isFitting = true;
    char16_t firstUnit = 0; // what is left of a character that the quote's place splits
    Check(!text.empty() && text.front() == '"', "*stringSrc == _T('\"')");
    if (position != end) {
        const char32_t first = DecodeUtf8(position, end);
        if (first >= 0x10000) {
            firstUnit = LowSurrogate(first);
            isFitting = append(firstUnit);
        }
    }
    const TextLine behindQuote{
        {position, static_cast<std::size_t>(end - position)}, false, firstUnit, m_CurrentLine.m_LastUnit};
    if (position != end && end[-1] == '\n') {
        --end;
        if (position != end && end[-1] == '\r')
            --end;
    }
    while (isFitting && position != end && *position != '"')
        isFitting = appendCharacter(DecodeUtf8(position, end));
    const bool isTerminated = position != end && *position == '"';
    if (isTerminated)
        m_HasDeviated = m_HasDeviated || !std::all_of(position + 1, end, IsWhiteSpace);
    if (isFitting && !isTerminated && m_CurrentLine.m_LastUnit != 0)
        isFitting = append(m_CurrentLine.m_LastUnit);
    buffer[numCharsCopied] = 0;

    if (isFitting && !isTerminated) {
        std::string storages[2];
        ReportMessage(Message::UnterminatedString,
                      {TextForReport(behindQuote, storages[0]), GetPath(), m_LineNumber + m_LinesTakenInPlace,
                       TextForReport(m_CurrentLine, storages[1])});
    }
}

// Objects ------------------------------------------------------------------------------------------------------------

void TextFileArchive::ReadObject(Archivable& object) {
    object.Load(*this);
}

// Asserted around the record of every nested object that is written.
void TextFileArchive::CheckTabDepth() const {
    Check(m_TabDepth > 0, "m_TabDepth > 0");
}

} // namespace Corvid
