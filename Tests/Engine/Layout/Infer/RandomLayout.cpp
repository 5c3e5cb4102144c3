#include "Tests/Engine/Layout/Infer/RandomLayout.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace Corvid {

namespace {

constexpr const char* kLabels[] = {"max",    "Speed", "range", "icon", "isActive",
                                   "Damage", "level", "name",  "cost", "tier"};
constexpr const char16_t* kWords[] = {u"Flat", u"Scaled", u"Invalid", u"Near", u"Far", u"Planet", u"Star"};

std::string Ascii(std::u16string_view units) {
    return {units.begin(), units.end()};
}

} // namespace

struct RandomLayout::Writing {
    std::string m_Text;
    std::string m_Binary;
    int m_Depth = 0;
    std::vector<std::u16string> m_Deciders; // by node: "1" or "0", or the word

    void Line(const std::string& label, const std::string& value) {
        m_Text.append(static_cast<std::size_t>(m_Depth), '\t').append(label);
        m_Text.append(value.empty() ? "" : " ").append(value).append("\r\n"); // rows of a matrix have no label
    }
    template <class Value> void Bytes(const Value& value) {
        m_Binary.append(reinterpret_cast<const char*>(&value), sizeof(value));
    }
    void String(std::u16string_view units) {
        Bytes(static_cast<std::uint32_t>(units.size()));
        for (const char16_t unit : units)
            Bytes(unit);
    }
};

RandomLayout::RandomLayout(std::uint32_t seed, const RandomStyle& style) : m_Style(style), m_Random(seed) {
    m_Deciders.emplace_back();
    AddFields(0, Draw(style.m_LeastFields, style.m_MostFields));
    m_Truth = m_Builder.Finish("Quest");
    m_Habits.resize(m_Truth.GetSize());
}

int RandomLayout::Draw(int least, int most) {
    return least + static_cast<int>(m_Random() % static_cast<std::uint32_t>(most - least + 1));
}

std::string RandomLayout::NewLabel() {
    const char* const label = kLabels[Draw(0, static_cast<int>(std::size(kLabels)) - 1)];
    ++m_LabelCount;
    if (!m_Style.m_HasSharedLabels)
        return label + std::to_string(m_LabelCount);
    int number = 0; // the first that is free in this record
    while (!m_LabelsOfRecord.back().insert(label + std::to_string(number)).second)
        ++number;
    return label + std::to_string(number);
}

void RandomLayout::AddFields(int depth, int count) {
    for (int i = 0; i < count; ++i) {
        const int what = Draw(1, 100);
        int share = m_Style.m_RecordShare;
        if (what <= share && depth < m_Style.m_Depth) {
            AddRecord(depth);
        } else if (what <= (share += m_Style.m_ListShare) && depth < m_Style.m_Depth) {
            AddList(depth);
        } else if (what > share + m_Style.m_WhenShare || depth >= m_Style.m_Depth || !AddWhen(depth)) {
            AddValue();
        }
    }
}

void RandomLayout::AddRecord(int depth) {
    m_Builder.Add(LayoutKind::Record, NewLabel());
    m_Builder.Begin();
    m_Deciders.emplace_back();
    m_LabelsOfRecord.emplace_back();
    AddFields(depth + 1, Draw(1, 4));
    m_LabelsOfRecord.pop_back();
    m_Deciders.pop_back();
    m_Builder.End();
}

void RandomLayout::AddList(int depth) {
    const LayoutIndex count = m_Builder.Add(LayoutKind::Count, NewLabel());
    m_Habits.resize(count + 1);
    m_Habits[count].m_Most = Chance(15) ? 1 : Draw(2, m_Style.m_MostElements);
    m_Builder.Begin();
    m_Deciders.emplace_back();
    const int labels = Draw(1, 4);
    for (int i = 0; i < labels; ++i) {
        const int whenShare = i > 0 ? m_Style.m_WhenInElementShare : m_Style.m_FirstInElementShare;
        if (whenShare > 0 && Chance(whenShare) && depth < m_Style.m_Depth && AddWhen(depth))
            continue;
        if (Chance(50)) {
            AddValue();
        } else if (Chance(20) && depth + 1 < m_Style.m_Depth) {
            AddList(depth + 1);
        } else {
            AddRecord(depth);
        }
    }
    m_Deciders.pop_back();
    m_Builder.End();
}

bool RandomLayout::AddWhen(int depth) {
    std::vector<std::pair<LayoutIndex, LayoutKind>> inSight;
    for (const auto& scope : m_Deciders)
        inSight.insert(inSight.end(), scope.begin(), scope.end());
    std::erase_if(inSight, [this](const auto& decider) { // a label means the nearest value that has it
        return m_Builder.FindEarlier(m_Builder.GetNode(decider.first).m_Label) != decider.first;
    });
    if (inSight.empty())
        return false;
    const auto [field, kind] = inSight[static_cast<std::size_t>(Draw(0, static_cast<int>(inSight.size()) - 1))];
    LayoutCondition condition;
    condition.m_Field = field;
    if (kind == LayoutKind::Word) {
        std::vector<std::u16string> words = m_Builder.GetNode(field).m_Words;
        std::shuffle(words.begin(), words.end(), m_Random);
        words.resize(static_cast<std::size_t>(Draw(1, static_cast<int>(words.size()) - 1)));
        condition.m_Words = std::move(words);
    }
    condition.m_IsNegated = Chance(m_Style.m_NegatedShare);
    const LayoutIndex when = m_Builder.Add(LayoutKind::When, {});
    m_Builder.GetNode(when).m_Condition = condition;
    m_Builder.Begin();
    m_Deciders.emplace_back(); // what may be absent decides nothing outside
    AddFields(depth + 1, Draw(1, 3));
    m_Deciders.pop_back();
    m_Builder.End();
    return true;
}

void RandomLayout::AddValue() {
    const int usual = 33 - m_Style.m_WideShare - m_Style.m_DoubleShare; // of floats
    const std::pair<LayoutKind, int> shares[] = {
        {LayoutKind::Bool, 16},
        {LayoutKind::Int, 20},
        {LayoutKind::Int64, m_Style.m_WideShare},
        {LayoutKind::Float, usual},
        {LayoutKind::Double, m_Style.m_DoubleShare},
        {LayoutKind::String, 10},
        {LayoutKind::Word, 8},
        {LayoutKind::Color, 5},
        {LayoutKind::Vector3, 3},
        {LayoutKind::Vector4, 1},
        {LayoutKind::Pair, 1},
        {LayoutKind::Rect, 1},
        {LayoutKind::Matrix33, 1},
        {LayoutKind::Matrix44, 1},
    };
    int what = Draw(1, 100);
    const auto* share = std::begin(shares);
    while (what > share->second) {
        what -= share->second;
        ++share;
    }
    const LayoutKind kind = share->first;
    const LayoutIndex node = m_Builder.Add(kind, NewLabel());
    m_Habits.resize(node + 1);
    Habit& habit = m_Habits[node];
    habit.m_Kind = Draw(0, 4);
    habit.m_Constant = Chance(30) ? 1 : Draw(2, 50);
    habit.m_ChanceOfTrue = Chance(10) ? 0 : Chance(10) ? 100 : Draw(25, 75);
    habit.m_IsDigitsOnly = Chance(m_Style.m_DigitsOnlyShare);
    if (m_Style.m_ZeroIntShare != 20 && Chance(m_Style.m_ZeroIntShare))
        habit.m_Kind = 1;
    if (m_Style.m_SkewShare > 0 && Chance(m_Style.m_SkewShare))
        habit.m_ChanceOfTrue = Draw(3, 20);
    habit.m_Drifts = m_Style.m_DriftShare > 0 && Chance(m_Style.m_DriftShare);
    if (kind == LayoutKind::Word) {
        std::vector<std::u16string> words(std::begin(kWords), std::end(kWords));
        std::shuffle(words.begin(), words.end(), m_Random);
        words.resize(static_cast<std::size_t>(Draw(2, m_Style.m_MostWords)));
        m_Builder.GetNode(node).m_Words = std::move(words);
    }
    if (kind == LayoutKind::Bool || kind == LayoutKind::Word)
        m_Deciders.back().emplace_back(node, kind);
}

void RandomLayout::WriteValue(Writing& writing, LayoutIndex index) {
    const LayoutNode& node = m_Truth[index];
    const Habit& habit = m_Habits[index];
    const bool hasDrifted = habit.m_Drifts && m_FileCount > m_Style.m_DriftAfter;
    const auto decimal = [&] {
        if (Chance(m_Style.m_ZeroDecimalShare))
            return 0.0;
        if (m_Style.m_RoundShare > 0 && !hasDrifted && Chance(m_Style.m_RoundShare))
            return Draw(1, 40) / 4.0;
        return Draw(-200'000, 200'000) / 1000.0;
    };
    const auto number = [&]() -> std::int64_t {
        switch (hasDrifted ? 4 : habit.m_Kind) {
        case 0:
            return Draw(0, 20);
        case 1:
            return 0;
        case 2:
            return habit.m_Constant;
        case 3:
            return Draw(0, 2'000'000);
        default:
            return Draw(-100, 100);
        }
    };
    const auto floats = [&](int count) {
        std::string text = "[";
        for (int i = 0; i < count; ++i) {
            const auto value = static_cast<float>(decimal());
            writing.Bytes(value);
            text += ' ' + std::to_string(value);
        }
        return text + " ]";
    };
    const auto ints = [&](int count) {
        std::string text = "[";
        for (int i = 0; i < count; ++i) {
            const auto value = static_cast<std::int32_t>(Draw(0, 512));
            writing.Bytes(value);
            text += (i > 0 ? " , " : " ") + std::to_string(value);
        }
        return text + " ]";
    };
    std::string text;
    switch (node.m_Kind) {
    case LayoutKind::Bool: {
        const bool value = Chance(habit.m_ChanceOfTrue);
        writing.Bytes(static_cast<char>(value));
        writing.m_Deciders[index] = value ? u"1" : u"0";
        text = value ? "TRUE" : "FALSE";
        break;
    }
    case LayoutKind::Int: {
        const auto value = static_cast<std::int32_t>(number());
        writing.Bytes(value);
        text = std::to_string(value);
        break;
    }
    case LayoutKind::Int64: {
        const std::int64_t value = number() * (habit.m_Kind == 3 ? 1'000'003 : 1);
        writing.Bytes(value);
        text = std::to_string(value);
        break;
    }
    case LayoutKind::Float: {
        const auto value = static_cast<float>(decimal());
        writing.Bytes(value);
        text = std::to_string(value);
        break;
    }
    case LayoutKind::Double: {
        const double value = decimal();
        writing.Bytes(value);
        text = std::to_string(value);
        break;
    }
    case LayoutKind::String: {
        std::u16string units;
        for (int i = Draw(0, 12); i > 0; --i)
            units += static_cast<char16_t>(Draw('A', 'Z'));
        if (habit.m_Kind == 2)
            units = u"Constant";
        if (m_Style.m_HasFewStrings && habit.m_Kind != 2)
            units = kWords[Draw(0, 4)] + std::u16string(u"Name");
        writing.String(units);
        text = '"' + Ascii(units) + '"';
        break;
    }
    case LayoutKind::Word: {
        const std::u16string& word =
            node.m_Words[static_cast<std::size_t>(Draw(0, static_cast<int>(node.m_Words.size()) - 1))];
        writing.String(word);
        writing.m_Deciders[index] = word;
        text = '"' + Ascii(word) + '"';
        break;
    }
    case LayoutKind::Color: {
        std::uint32_t packed = 0;
        for (int nibble = 0; nibble < 8; ++nibble)
            packed = packed << 4 | static_cast<std::uint32_t>(Draw(0, habit.m_IsDigitsOnly ? 9 : 15));
        if (Chance(20))
            packed = 0;
        for (const int shift : {16, 8, 0, 24})
            writing.Bytes(static_cast<float>(packed >> shift & 0xFF) * (1.0f / 255.0f));
        char digits[9];
        std::snprintf(digits, sizeof(digits), "%x", packed);
        text = digits;
        break;
    }
    case LayoutKind::Vector3:
        text = floats(3);
        break;
    case LayoutKind::Vector4:
        text = floats(4);
        break;
    case LayoutKind::Pair:
        text = ints(2);
        break;
    case LayoutKind::Rect:
        text = ints(4);
        break;
    default: {
        const int size = node.m_Kind == LayoutKind::Matrix33 ? 3 : 4;
        writing.Line(node.m_Label, {});
        ++writing.m_Depth;
        for (int row = 0; row < size; ++row)
            writing.Line({}, floats(size));
        --writing.m_Depth;
        return;
    }
    }
    writing.Line(node.m_Label, text);
}

void RandomLayout::Write(Writing& writing, LayoutIndex first, LayoutIndex end) {
    for (LayoutIndex index = first; index < end; index = m_Truth[index].m_End) {
        const LayoutNode& node = m_Truth[index];
        switch (node.m_Kind) {
        case LayoutKind::Record:
            writing.Line(node.m_Label, {});
            ++writing.m_Depth;
            Write(writing, index + 1, node.m_End);
            --writing.m_Depth;
            break;
        case LayoutKind::Count: {
            const std::int32_t count = Draw(0, m_Habits[index].m_Most);
            writing.Bytes(count);
            writing.Line(node.m_Label, std::to_string(count));
            for (int i = 0; i < count; ++i)
                Write(writing, index + 1, node.m_End);
            break;
        }
        case LayoutKind::When: {
            const std::u16string& value = writing.m_Deciders[node.m_Condition.m_Field];
            const auto& words = node.m_Condition.m_Words;
            const bool isHeld =
                words.empty() ? value == u"1" : std::find(words.begin(), words.end(), value) != words.end();
            if (isHeld != node.m_Condition.m_IsNegated)
                Write(writing, index + 1, node.m_End);
            break;
        }
        default:
            WriteValue(writing, index);
        }
    }
}

RandomLayout::File RandomLayout::MakeFile() {
    Writing writing;
    ++m_FileCount;
    writing.m_Text = "\xEF\xBB\xBFTXT\r\nentityType \"Quest\"\r\n";
    writing.m_Binary = "BIN\n";
    writing.String(u"Quest");
    writing.m_Deciders.resize(m_Truth.GetSize());
    Write(writing, 0, m_Truth.GetSize());
    return {std::move(writing.m_Text), std::move(writing.m_Binary)};
}

} // namespace Corvid
