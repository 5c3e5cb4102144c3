#include "Tests/Engine/Layout/Infer/StrictConverter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>

#include "Engine/Layout/Infer/PlausibleValue.h"
#include "Engine/Layout/Infer/SampleTree.h"
#include "Engine/Layout/Infer/ValueKinds.h"
#include "Engine/Math/Color.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

constexpr std::size_t kTypeBytes = 4 + 4 + 2 * 5; // header and "Quest"

std::string g_Why;

bool Refuse(const char* why) {
    g_Why = why;
    return false;
}

template <class Value> void Append(std::string& bytes, Value value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof(value));
}

// What both directions share: conditions and marks.
class Walker {
public:
    Walker(const Layout& layout, bool isUnprovenAllowed) : m_Layout(layout), m_IsAllowed(isUnprovenAllowed) {}

protected:
    ~Walker() = default;

    bool Walk(LayoutIndex first, LayoutIndex end) {
        for (LayoutIndex index = first; index < end; index = m_Layout[index].m_End) {
            const LayoutNode& node = m_Layout[index];
            bool isGood = true;
            if (node.m_Kind == LayoutKind::Use)
                isGood = Walk(index + 1, node.m_End);
            else if (node.m_Kind == LayoutKind::Record)
                isGood = EnterRecord(node) && Walk(index + 1, node.m_End) && LeaveRecord();
            else if (node.m_Kind == LayoutKind::When)
                isGood = WalkWhen(index);
            else if (node.m_Kind == LayoutKind::Count)
                isGood = WalkCount(index);
            else
                isGood = TakeValue(index) && (!node.m_IsDoubtful || m_IsAllowed || node.m_Kind == LayoutKind::Bool ||
                                              Refuse("number mark"));
            if (!isGood)
                return false;
        }
        return true;
    }

    bool WalkWhen(LayoutIndex index) {
        const LayoutNode& node = m_Layout[index];
        std::optional<bool> holds;
        if (node.m_Condition.m_Field == kNoLayoutIndex) {
            holds = IsNext(index + 1);
            if (!holds.has_value())
                return Refuse("when unknown");
        } else {
            holds = Holds(node.m_Condition);
            if (!holds.has_value())
                return Refuse("when decider absent");
            if (node.m_IsDoubtful && !m_IsAllowed) {
                if (node.m_Doubt.m_Alternatives.empty())
                    return Refuse("when uncertain");
                for (const LayoutCondition& other : node.m_Doubt.m_Alternatives) {
                    if (Holds(other) != holds)
                        return Refuse("when rival");
                }
            }
        }
        if (*holds)
            return Walk(index + 1, node.m_End);
        for (LayoutIndex inside = index; inside < node.m_End; ++inside)
            m_Values.erase(inside);
        return true;
    }

    std::optional<bool> Holds(const LayoutCondition& condition) const {
        const auto value = m_Values.find(condition.m_Field);
        if (value == m_Values.end())
            return std::nullopt;
        const bool isHeld = condition.m_Words.empty() ? value->second == u"1"
                                                      : std::find(condition.m_Words.begin(), condition.m_Words.end(),
                                                                  value->second) != condition.m_Words.end();
        return isHeld != condition.m_IsNegated;
    }

    bool WalkCount(LayoutIndex index) {
        const LayoutNode& node = m_Layout[index];
        std::int32_t count = 0;
        if (!TakeCount(index, count) || count < 0 || count > 100'000 || (count > 0 && node.m_End == index + 1))
            return Refuse("count");
        const std::vector<std::int32_t>& seen = node.m_Doubt.m_SeenNumbers;
        if (node.m_IsDoubtful && !m_IsAllowed && std::find(seen.begin(), seen.end(), count) == seen.end())
            return Refuse("count mark");
        for (std::int32_t i = 0; i < count; ++i) {
            if (!Walk(index + 1, node.m_End))
                return false;
        }
        return true;
    }

    // Keeps what conditions ask for; false for a word that is not known, or a bool that touches its mark.
    bool Keep(LayoutIndex index, std::u16string value) {
        const LayoutNode& node = m_Layout[index];
        if (node.m_Kind == LayoutKind::Word &&
            std::find(node.m_Words.begin(), node.m_Words.end(), value) == node.m_Words.end())
            return Refuse("unknown word");
        const std::vector<bool>& seen = node.m_Doubt.m_SeenBools;
        if (node.m_Kind == LayoutKind::Bool && node.m_IsDoubtful && !m_IsAllowed &&
            std::find(seen.begin(), seen.end(), value == u"1") == seen.end())
            return Refuse("bool mark");
        m_Values[index] = std::move(value);
        return true;
    }

    virtual bool EnterRecord(const LayoutNode& node) = 0;
    virtual bool LeaveRecord() = 0;
    virtual bool TakeValue(LayoutIndex index) = 0;
    virtual bool TakeCount(LayoutIndex index, std::int32_t& count) = 0;
    virtual std::optional<bool> IsNext(LayoutIndex index) const = 0; // nothing: nobody can tell

    const Layout& m_Layout;
    bool m_IsAllowed;
    std::map<LayoutIndex, std::u16string> m_Values;
};

class TextWalker final : public Walker {
public:
    using Walker::Walker;

    std::optional<std::string> Convert(std::string_view text) {
        if (text.starts_with("\xEF\xBB\xBF"))
            text.remove_prefix(3);
        m_Bytes = std::string("BIN\n\5\0\0\0Q\0u\0e\0s\0t\0", kTypeBytes);
        m_Next = 2;
        if (!m_Tree.Parse(text) || !Walk(0, m_Layout.GetSize()) || m_Next != m_Tree.GetSize())
            return std::nullopt;
        return m_Bytes;
    }

private:
    bool IsLine(const std::string& label) const { return m_Next < m_Tree.GetSize() && m_Tree[m_Next].m_Label == label; }
    bool EnterRecord(const LayoutNode& node) override {
        return IsLine(node.m_Label) && m_Tree[m_Next].m_Value.empty() && (++m_Next, true);
    }
    bool LeaveRecord() override { return true; }
    std::optional<bool> IsNext(LayoutIndex index) const override {
        while (m_Layout[index].m_Label.empty())
            ++index;
        return IsLine(m_Layout[index].m_Label);
    }
    bool TakeCount(LayoutIndex index, std::int32_t& count) override {
        if (!IsLine(m_Layout[index].m_Label))
            return false;
        const auto number = ReadIntText(m_Tree[m_Next++].m_Value);
        count = number.value_or(-1);
        Append(m_Bytes, count);
        return number.has_value();
    }
    bool TakeValue(LayoutIndex index) override {
        const LayoutNode& node = m_Layout[index];
        if (!IsLine(node.m_Label))
            return Refuse("missing line");
        const std::string value(m_Tree[m_Next++].m_Value);
        const auto floats = [&](std::string list, int count) {
            const char* position = list.c_str() + 1;
            for (int i = 0; i < count; ++i) {
                char* end = nullptr;
                Append(m_Bytes, std::strtof(position, &end));
                position = end;
            }
        };
        if (node.m_Kind == LayoutKind::Matrix33 || node.m_Kind == LayoutKind::Matrix44) {
            const int size = node.m_Kind == LayoutKind::Matrix33 ? 3 : 4;
            for (int row = 0; row < size; ++row)
                floats(std::string(m_Tree[m_Next++].m_Value), size);
            return true;
        }
        const LayoutKind kind = node.m_Kind == LayoutKind::Word ? LayoutKind::String : node.m_Kind;
        if (!KindsOfValue(value).Has(kind))
            return Refuse("value of another kind");
        switch (kind) {
        case LayoutKind::Bool:
            Append(m_Bytes, static_cast<char>(value == "TRUE"));
            return Keep(index, value == "TRUE" ? u"1" : u"0");
        case LayoutKind::Int:
            Append(m_Bytes, *ReadIntText(value));
            return true;
        case LayoutKind::Int64:
            Append(m_Bytes, static_cast<std::int64_t>(std::strtoll(value.c_str(), nullptr, 10)));
            return true;
        case LayoutKind::Float:
            Append(m_Bytes, std::strtof(value.c_str(), nullptr));
            return true;
        case LayoutKind::Double:
            Append(m_Bytes, std::strtod(value.c_str(), nullptr));
            return true;
        case LayoutKind::String: {
            const std::u16string units = ReadStringText(value);
            Append(m_Bytes, static_cast<std::uint32_t>(units.size()));
            for (const char16_t unit : units)
                Append(m_Bytes, unit);
            return Keep(index, units);
        }
        case LayoutKind::Color: {
            const Color color = UnpackColor(static_cast<std::uint32_t>(std::strtoul(value.c_str(), nullptr, 16)));
            Append(m_Bytes, color);
            return true;
        }
        case LayoutKind::Vector3:
            return floats(value, 3), true;
        case LayoutKind::Vector4:
            return floats(value, 4), true;
        default: {
            int numbers[4] = {};
            const int count =
                std::sscanf(value.c_str(), "[ %d , %d , %d , %d ]", numbers, numbers + 1, numbers + 2, numbers + 3);
            for (int i = 0; i < count; ++i)
                Append(m_Bytes, numbers[i]);
            return true;
        }
        }
    }

    SampleTree m_Tree;
    std::uint32_t m_Next = 0;
    std::string m_Bytes;
};

class BinaryWalker final : public Walker {
public:
    using Walker::Walker;

    std::optional<std::string> Convert(std::string_view binary) {
        m_Bytes = binary.substr(std::min(binary.size(), kTypeBytes));
        m_Text = "\xEF\xBB\xBFTXT\r\nentityType \"Quest\"\r\n";
        if (!Walk(0, m_Layout.GetSize()) || !m_Bytes.empty())
            return std::nullopt;
        return m_Text;
    }

private:
    template <class Value> Value Take() {
        Value value;
        std::memcpy(&value, m_Bytes.data(), sizeof(value));
        m_Bytes.remove_prefix(sizeof(value));
        return value;
    }
    void Line(const std::string& label, const std::string& value) {
        m_Text.append(m_Depth, '\t').append(label);
        m_Text.append(value.empty() || label.empty() ? "" : " ").append(value).append("\r\n");
    }
    bool EnterRecord(const LayoutNode& node) override {
        Line(node.m_Label, {});
        ++m_Depth;
        return true;
    }
    bool LeaveRecord() override { return --m_Depth, true; }
    std::optional<bool> IsNext(LayoutIndex) const override { return std::nullopt; }
    bool TakeCount(LayoutIndex index, std::int32_t& count) override {
        if (m_Bytes.size() < 4)
            return false;
        count = Take<std::int32_t>();
        Line(m_Layout[index].m_Label, std::to_string(count));
        return count >= 0 && static_cast<std::size_t>(count) <= m_Bytes.size() + 1;
    }
    std::string Floats(int count) {
        std::string text = "[";
        for (int i = 0; i < count; ++i)
            text += ' ' + std::to_string(Take<float>());
        return text + " ]";
    }
    std::string Ints(int count) {
        std::string text = "[";
        for (int i = 0; i < count; ++i)
            text += (i > 0 ? " , " : " ") + std::to_string(Take<std::int32_t>());
        return text + " ]";
    }
    bool TakeValue(LayoutIndex index) override {
        const LayoutNode& node = m_Layout[index];
        const NumberRange wide{1e30, 0};
        const auto size = SizeOfPlausible(node.m_Kind, m_Bytes, wide);
        if (!size.has_value())
            return false;
        switch (node.m_Kind) {
        case LayoutKind::Bool: {
            const bool value = Take<char>() != 0;
            Line(node.m_Label, value ? "TRUE" : "FALSE");
            return Keep(index, value ? u"1" : u"0");
        }
        case LayoutKind::Int:
            Line(node.m_Label, std::to_string(Take<std::int32_t>()));
            return true;
        case LayoutKind::Int64:
            Line(node.m_Label, std::to_string(Take<std::int64_t>()));
            return true;
        case LayoutKind::Float:
            Line(node.m_Label, std::to_string(Take<float>()));
            return true;
        case LayoutKind::Double:
            Line(node.m_Label, std::to_string(Take<double>()));
            return true;
        case LayoutKind::Word:
        case LayoutKind::String: {
            const std::u16string units = TakeString(m_Bytes);
            m_Bytes.remove_prefix(*size);
            Line(node.m_Label, '"' + ToUtf8(units) + '"');
            return Keep(index, units);
        }
        case LayoutKind::Color: {
            char digits[9];
            std::snprintf(digits, sizeof(digits), "%x", PackColor(Take<Color>()));
            Line(node.m_Label, digits);
            return true;
        }
        case LayoutKind::Vector3:
            Line(node.m_Label, Floats(3));
            return true;
        case LayoutKind::Vector4:
            Line(node.m_Label, Floats(4));
            return true;
        case LayoutKind::Pair:
            Line(node.m_Label, Ints(2));
            return true;
        case LayoutKind::Rect:
            Line(node.m_Label, Ints(4));
            return true;
        default: {
            const int rows = node.m_Kind == LayoutKind::Matrix33 ? 3 : 4;
            Line(node.m_Label, {});
            ++m_Depth;
            for (int row = 0; row < rows; ++row)
                Line({}, Floats(rows));
            --m_Depth;
            return true;
        }
        }
    }

    std::string_view m_Bytes;
    std::string m_Text;
    std::size_t m_Depth = 0;
};

} // namespace

const std::string& WhyRefused() {
    return g_Why;
}

std::optional<std::string> ToBinary(const Layout& layout, std::string_view text, bool isUnprovenAllowed) {
    g_Why = "other";
    return TextWalker(layout, isUnprovenAllowed).Convert(text);
}

std::optional<std::string> ToText(const Layout& layout, std::string_view binary, bool isUnprovenAllowed) {
    g_Why = "other";
    return BinaryWalker(layout, isUnprovenAllowed).Convert(binary);
}

} // namespace Corvid
