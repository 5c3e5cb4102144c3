#include "Corvid/Explain/TextValue.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

#include "Engine/Archive/Text/TextLine.h"
#include "Engine/Math/Color.h"
#include "Engine/String/NearWord.h"
#include "Engine/String/NumberScan.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

// Walks along a line; the first thing that does not fit becomes the fault.
class ValueCursor {
public:
    ValueCursor(std::string_view line, std::size_t start, TextFault& fault)
        : m_Line(line), m_Position(start), m_Fault(fault) {
        SkipBlanks();
    }

    std::size_t GetPosition() const { return m_Position; }
    bool IsAtEnd() const { return m_Position == m_Line.size(); }
    char Get() const { return IsAtEnd() ? '\0' : m_Line[m_Position]; }
    std::string_view GetRest() const { return m_Line.substr(m_Position); }

    void SkipBlanks() {
        while (!IsAtEnd() && IsWhiteSpace(m_Line[m_Position]))
            ++m_Position;
    }

    bool Fail(std::size_t position, std::string message, DiagnosticCode code = DiagnosticCode::BadValue) {
        m_Fault = {code, position, std::move(message), false};
        return false;
    }

    bool Expected(std::string_view what) {
        SkipBlanks();
        if (IsAtEnd())
            return Fail(m_Position, std::string(what) + " is missing");
        return Fail(m_Position, std::string(what) + " is expected, and here stands '" + Excerpt(GetRest()) + "'");
    }

    bool Character(char character) {
        SkipBlanks();
        if (Get() != character)
            return Expected(std::string("'") + character + "'");
        ++m_Position;
        return true;
    }

    bool End() {
        SkipBlanks();
        if (IsAtEnd())
            return true;
        Fail(m_Position, "'" + Excerpt(GetRest()) + "' stands behind the value");
        m_Fault.m_IsBehindValue = true;
        return false;
    }

    // Whether `mark` stands next, which is then behind.
    bool Mark(std::string_view mark) {
        SkipBlanks();
        if (!GetRest().starts_with(mark))
            return false;
        m_Position += mark.size();
        return true;
    }

    bool Integer(std::int64_t least, std::int64_t most, std::int64_t& value) {
        SkipBlanks();
        const std::size_t start = m_Position;
        const bool isNegative = Get() == '-';
        if (isNegative || Get() == '+')
            ++m_Position;
        if (Get() < '0' || Get() > '9')
            return Expected("an integer");
        const auto limit = isNegative ? ~static_cast<std::uint64_t>(least) + 1 : static_cast<std::uint64_t>(most);
        std::uint64_t number = 0;
        bool isInRange = true;
        for (; Get() >= '0' && Get() <= '9'; ++m_Position) {
            const auto digit = static_cast<std::uint64_t>(Get() - '0');
            isInRange = isInRange && number <= (limit - digit) / 10;
            number = isInRange ? 10 * number + digit : number;
        }
        if (!isInRange)
            return Fail(start, "'" + Excerpt(m_Line.substr(start, m_Position - start)) +
                                   "' is out of range, which goes from " + std::to_string(least) + " to " +
                                   std::to_string(most));
        value = static_cast<std::int64_t>(isNegative ? ~number + 1 : number);
        return true;
    }

    bool Int32(std::int32_t& value) {
        std::int64_t number = 0;
        if (!Integer(std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max(), number))
            return false;
        value = static_cast<std::int32_t>(number);
        return true;
    }

    template <class Float> bool Decimal(Float& value) {
        SkipBlanks();
        const std::size_t start = m_Position;
        const char* const end = m_Line.data() + m_Line.size();
        const char* behind = nullptr;
        if constexpr (std::is_same_v<Float, float>)
            behind = ScanFloat(m_Line.data() + start, end, value);
        else
            behind = ScanDouble(m_Line.data() + start, end, value);
        if (behind == nullptr)
            return Expected("a number");
        m_Position = static_cast<std::size_t>(behind - m_Line.data());
        const std::string_view text = m_Line.substr(start, m_Position - start);
        if (std::isinf(value) && text.find_first_of("iI") == text.npos)
            return Fail(start, "'" + Excerpt(text) + "' is out of range for a " +
                                   (sizeof value == sizeof(float) ? "float" : "double"));
        return true;
    }

private:
    std::string_view m_Line;
    std::size_t m_Position;
    TextFault& m_Fault;
};

bool ReadInts(ValueCursor& cursor, int count, std::int32_t* numbers) {
    if (!cursor.Character('['))
        return false;
    for (int i = 0; i < count; ++i) {
        if ((i > 0 && !cursor.Character(',')) || !cursor.Int32(numbers[i]))
            return false;
    }
    return cursor.Character(']');
}

bool ReadFloats(ValueCursor& cursor, int count, float* numbers) {
    if (!cursor.Character('['))
        return false;
    for (int i = 0; i < count; ++i) {
        if (!cursor.Decimal(numbers[i]))
            return false;
    }
    if (!cursor.Character(']'))
        return false;
    std::int32_t bits[4];
    if (cursor.Mark("Bits=")) {
        if (!ReadInts(cursor, count, bits))
            return false;
        for (int i = 0; i < count; ++i)
            numbers[i] = std::bit_cast<float>(bits[i]);
    }
    return true;
}

bool ReadFloat(ValueCursor& cursor, float& number) {
    if (!cursor.Decimal(number))
        return false;
    std::int32_t bits;
    if (cursor.Mark("Bits=")) {
        if (!cursor.Int32(bits))
            return false;
        number = std::bit_cast<float>(bits);
    }
    return true;
}

bool ReadDouble(ValueCursor& cursor, double& number) {
    if (!cursor.Decimal(number))
        return false;
    std::int64_t bits;
    if (cursor.Mark("Bits=")) {
        if (!cursor.Integer(std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max(), bits))
            return false;
        number = std::bit_cast<double>(bits);
    }
    return true;
}

bool ReadBool(ValueCursor& cursor, bool& value) {
    const bool isTrue = cursor.Mark("TRUE");
    if (!isTrue && !cursor.Mark("FALSE"))
        return cursor.Expected("TRUE or FALSE");
    value = isTrue;
    return true;
}

bool ReadColor(ValueCursor& cursor, float* channels) {
    std::string_view text = cursor.GetRest();
    const bool hasPrefix = text.starts_with("0x") || text.starts_with("0X");
    const std::size_t start = cursor.GetPosition();
    if (hasPrefix)
        text.remove_prefix(2);
    const std::size_t digits = std::min(text.find_first_not_of("0123456789abcdefABCDEF"), text.size());
    if (digits == 0)
        return cursor.Expected("a colour in hexadecimal digits");
    std::uint32_t packed = 0;
    const char* const end = text.data() + digits;
    ScanHex(text.data(), end, packed);
    const std::size_t zeros = std::min(text.find_first_not_of('0'), digits);
    if (digits - zeros > 8)
        return cursor.Fail(start,
                           "'" + Excerpt(text.substr(0, digits)) + "' is out of range: a colour has 8 digits at most");
    cursor.Mark(cursor.GetRest().substr(0, digits + (hasPrefix ? 2 : 0)));
    const Color color = UnpackColor(packed);
    channels[0] = color.red;
    channels[1] = color.green;
    channels[2] = color.blue;
    channels[3] = color.alpha;
    return true;
}

// Without the check of its length and words.
bool ReadQuoted(ValueCursor& cursor, std::u16string& value) {
    const std::size_t start = cursor.GetPosition();
    if (cursor.Get() != '"')
        return cursor.Fail(start,
                           cursor.IsAtEnd() ? "a string in double quotes is missing"
                                            : "a string stands in double quotes, and none opens it",
                           DiagnosticCode::BadString);
    const std::string_view text = cursor.GetRest().substr(1);
    const std::size_t length = text.find('"');
    if (length == text.npos)
        return cursor.Fail(start, "no double quote closes the string", DiagnosticCode::BadString);
    value = ToUtf16(text.substr(0, length));
    cursor.Mark(cursor.GetRest().substr(0, length + 2));
    return true;
}

bool ReadString(ValueCursor& cursor, const LayoutNode& node, std::u16string& value) {
    const std::size_t start = cursor.GetPosition();
    if (!ReadQuoted(cursor, value) || !cursor.End())
        return false;
    const auto capacity = static_cast<std::size_t>(node.m_Capacity);
    if (capacity > 0 && value.size() >= capacity) {
        const std::size_t units = value.size();
        value.resize(capacity - 1);
        return cursor.Fail(start,
                           "the string has " + std::to_string(units) + " UTF-16 units, and its capacity is " +
                               std::to_string(capacity) + " with the terminator",
                           DiagnosticCode::TooLong);
    }
    return node.m_Kind != LayoutKind::Word || IsWordOf(value, node) ||
           cursor.Fail(start, ExplainUnknownWord(value, node), DiagnosticCode::UnknownWord);
}

bool CheckRange(ValueCursor& cursor, const LayoutNode& node, std::size_t start, std::int64_t value) {
    const ValueRange& range = node.m_Range;
    if (node.m_Kind != LayoutKind::Int || (value >= range.m_Least && value <= range.m_Most))
        return true;
    return cursor.Fail(start, std::to_string(value) + " is none of " + std::to_string(range.m_Least) + " to " +
                                  std::to_string(range.m_Most));
}

} // namespace

std::string Excerpt(std::string_view text) {
    constexpr std::size_t kMostCharacters = 40;
    std::string excerpt;
    const char* position = text.data();
    const char* const end = position + text.size();
    for (std::size_t count = 0; position != end; ++count) {
        if (count == kMostCharacters)
            return excerpt + "...";
        const char32_t character = DecodeUtf8(position, end);
        char bytes[kMaxUtf8Bytes];
        const bool isPrintable = character >= 0x20 && character != 0x7F && !(character >= 0x80 && character < 0xA0);
        excerpt.append(bytes, EncodeUtf8(bytes, isPrintable ? character : kReplacementCharacter));
    }
    return excerpt;
}

bool IsWordOf(const std::u16string& word, const LayoutNode& node) {
    return std::find(node.m_Words.begin(), node.m_Words.end(), word) != node.m_Words.end() ||
           (node.m_IsInvalidAWord && word == u"Invalid");
}

std::string ExplainUnknownWord(const std::u16string& word, const LayoutNode& node) {
    const std::string text = ToUtf8(word);
    std::vector<std::string> known;
    std::transform(node.m_Words.begin(), node.m_Words.end(), std::back_inserter(known), ToUtf8);
    const std::vector<std::string_view> words(known.begin(), known.end());
    const std::string_view nearest = NearestWord(text, words);
    return "'" + Excerpt(text) + "' is no word of " + node.m_Label +
           (nearest.empty() ? "" : " (did you mean '" + std::string(nearest) + "'?)");
}

bool ReadTextEnd(std::string_view line, std::size_t start, TextFault& fault) {
    return ValueCursor(line, start, fault).End();
}

bool ReadTextRow(std::string_view line, std::size_t start, int count, float* numbers, TextFault& fault) {
    ValueCursor cursor(line, start, fault);
    return ReadFloats(cursor, count, numbers) && cursor.End();
}

bool ReadTextValue(const LayoutNode& node, std::string_view line, std::size_t start, TextValue& value,
                   TextFault& fault) {
    ValueCursor cursor(line, start, fault);
    const std::size_t valueStart = cursor.GetPosition();
    switch (node.m_Kind) {
    case LayoutKind::Bool:
        value.m_Kind = ValueKind::Bool;
        return ReadBool(cursor, value.m_Bool) && cursor.End();
    case LayoutKind::Int:
    case LayoutKind::Count: {
        std::int32_t number = 0;
        value.m_Kind = ValueKind::Int;
        if (!cursor.Int32(number) || !cursor.End())
            return false;
        value.m_Integer = number;
        return CheckRange(cursor, node, valueStart, number);
    }
    case LayoutKind::Int64:
        value.m_Kind = ValueKind::Int64;
        return cursor.Integer(std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max(),
                              value.m_Integer) &&
               cursor.End();
    case LayoutKind::Float:
        value.m_Kind = ValueKind::Float;
        return ReadFloat(cursor, value.m_Floats[0]) && cursor.End();
    case LayoutKind::Double:
        value.m_Kind = ValueKind::Double;
        return ReadDouble(cursor, value.m_Double) && cursor.End();
    case LayoutKind::String:
    case LayoutKind::Word:
        value.m_Kind = ValueKind::String;
        return ReadString(cursor, node, value.m_String);
    case LayoutKind::Color:
        value.m_Kind = ValueKind::Color;
        return ReadColor(cursor, value.m_Floats) && cursor.End();
    case LayoutKind::Vector3:
        value.m_Kind = ValueKind::Vector3;
        return ReadFloats(cursor, 3, value.m_Floats) && cursor.End();
    case LayoutKind::Vector4:
        value.m_Kind = ValueKind::Vector4;
        return ReadFloats(cursor, 4, value.m_Floats) && cursor.End();
    case LayoutKind::Pair:
        value.m_Kind = ValueKind::Pair;
        return ReadInts(cursor, 2, value.m_Ints) && cursor.End();
    case LayoutKind::Rect:
        value.m_Kind = ValueKind::Rect;
        return ReadInts(cursor, 4, value.m_Ints) && cursor.End();
    default:
        return cursor.End();
    }
}

void TextValue::AddTo(ValueTree& tree, std::string_view label) const {
    switch (m_Kind) {
    case ValueKind::Bool:
        return tree.AddBool(label, m_Bool);
    case ValueKind::Int:
        return tree.AddInt(label, static_cast<std::int32_t>(m_Integer));
    case ValueKind::Int64:
        return tree.AddInt64(label, m_Integer);
    case ValueKind::Float:
        return tree.AddFloat(label, m_Floats[0]);
    case ValueKind::Double:
        return tree.AddDouble(label, m_Double);
    case ValueKind::String:
        return tree.AddString(label, m_String);
    case ValueKind::Pair:
        return tree.AddInts(m_Kind, label, {m_Ints, 2});
    case ValueKind::Rect:
        return tree.AddInts(m_Kind, label, {m_Ints, 4});
    case ValueKind::Color:
    case ValueKind::Vector4:
        return tree.AddFloats(m_Kind, label, {m_Floats, 4});
    case ValueKind::Vector3:
        return tree.AddFloats(m_Kind, label, {m_Floats, 3});
    case ValueKind::Matrix33:
        return tree.AddFloats(m_Kind, label, {m_Floats, 9});
    case ValueKind::Matrix44:
        return tree.AddFloats(m_Kind, label, {m_Floats, 16});
    case ValueKind::Record:
    case ValueKind::List:
        return;
    }
}

void TextValue::KeepFor(Conditions& conditions, LayoutIndex field) const {
    if (m_Kind == ValueKind::Bool)
        conditions.Set(field, m_Bool);
    else
        conditions.Set(field, m_String);
}

} // namespace Corvid
