#include "Corvid/Explain/BinaryExplainer.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <type_traits>

#include "Corvid/Explain/BadCount.h"
#include "Corvid/Explain/Implausible.h"
#include "Corvid/Explain/NotInText.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

ValueKind ValueKindOf(LayoutKind kind) {
    switch (kind) {
    case LayoutKind::Color:
        return ValueKind::Color;
    case LayoutKind::Vector3:
        return ValueKind::Vector3;
    case LayoutKind::Vector4:
        return ValueKind::Vector4;
    case LayoutKind::Matrix33:
        return ValueKind::Matrix33;
    case LayoutKind::Matrix44:
        return ValueKind::Matrix44;
    case LayoutKind::Pair:
        return ValueKind::Pair;
    default:
        return ValueKind::Rect;
    }
}

// Of one element at the least: what stands under a condition may not be there.
std::uint64_t SmallestSize(const Layout& layout, LayoutIndex first, LayoutIndex end) {
    std::uint64_t size = 0;
    for (LayoutIndex index = first; index < end;) {
        const LayoutNode& node = layout[index];
        size += LeastBytesOf(node.m_Kind);
        index = node.m_Kind == LayoutKind::When || node.m_Kind == LayoutKind::Count ? node.m_End : index + 1;
    }
    return std::max<std::uint64_t>(size, 1);
}

} // namespace

BinaryExplainer::BinaryExplainer(const Layout& layout, std::string_view bytes, bool isForText, DiagnosticLog& log,
                                 ValueTree& tree)
    : m_Layout(layout),
      m_Bytes(bytes),
      m_IsForText(isForText),
      m_Log(log),
      m_Tree(tree),
      m_Conditions(layout),
      m_Offset(std::min(kHeaderSize, bytes.size())) {}

void BinaryExplainer::Run() {
    ReadFields(0, m_Layout.GetSize(), nullptr);
    if (!m_HasStopped && !m_IsMute && m_Offset < m_Bytes.size()) {
        const std::size_t left = m_Bytes.size() - m_Offset;
        m_Log.Add(DiagnosticCode::UnreadInput, DiagnosticPlace::AtOffset(m_Offset), {},
                  std::to_string(left) + (left == 1 ? " byte is" : " bytes are") + " left behind the last value");
    }
    m_Tree.Finish();
}

void BinaryExplainer::ReadFields(LayoutIndex first, LayoutIndex end, const ElementPlace* element) {
    for (LayoutIndex index = first; index < end && !m_HasStopped; index = m_Layout[index].m_End) {
        const LayoutNode& node = m_Layout[index];
        switch (node.m_Kind) {
        case LayoutKind::Use:
            ReadFields(index + 1, node.m_End, element);
            break;
        case LayoutKind::When:
            if (m_Conditions.Holds(index).value_or(false))
                ReadFields(index + 1, node.m_End, element);
            else
                m_Conditions.Skip(index);
            break;
        case LayoutKind::Record: {
            const std::size_t path = m_Path.Enter(m_Layout, node, element);
            m_Tree.BeginRecord(node.m_Label);
            ReadFields(index + 1, node.m_End, nullptr);
            m_Tree.EndRecord();
            m_Path.Leave(path);
            break;
        }
        case LayoutKind::Count:
            ReadList(index, element);
            break;
        default:
            ReadValue(index, element);
        }
    }
}

void BinaryExplainer::ReadValue(LayoutIndex index, const ElementPlace* element) {
    const LayoutNode& node = m_Layout[index];
    const std::size_t size = LeastBytesOf(node.m_Kind);
    if (!Ensure(size, index, element))
        return;
    TextValue value;
    const std::size_t offset = m_Offset;
    switch (node.m_Kind) {
    case LayoutKind::Bool: {
        const auto byte = Take<std::uint8_t>();
        value.m_Kind = ValueKind::Bool;
        value.m_Bool = byte != 0;
        if (m_IsStrict && byte > 1)
            ReportImplausible(offset, index, element, std::to_string(byte) + " is neither TRUE nor FALSE");
        break;
    }
    case LayoutKind::Int:
        value.m_Kind = ValueKind::Int;
        value.m_Integer = Take<std::int32_t>();
        if (value.m_Integer < node.m_Range.m_Least || value.m_Integer > node.m_Range.m_Most)
            Report(DiagnosticCode::BadValue, offset, index, element,
                   std::to_string(value.m_Integer) + " is none of " + std::to_string(node.m_Range.m_Least) + " to " +
                       std::to_string(node.m_Range.m_Most));
        break;
    case LayoutKind::Int64:
        value.m_Kind = ValueKind::Int64;
        value.m_Integer = Take<std::int64_t>();
        break;
    case LayoutKind::Float:
        value.m_Kind = ValueKind::Float;
        value.m_Floats[0] = Take<float>();
        break;
    case LayoutKind::Double:
        value.m_Kind = ValueKind::Double;
        value.m_Double = Take<double>();
        break;
    case LayoutKind::String:
    case LayoutKind::Word:
        value.m_Kind = ValueKind::String;
        ReadString(index, element, value);
        break;
    case LayoutKind::Pair:
    case LayoutKind::Rect:
        value.m_Kind = ValueKindOf(node.m_Kind);
        for (std::size_t i = 0; i < size / sizeof(std::int32_t); ++i)
            value.m_Ints[i] = Take<std::int32_t>();
        break;
    default:
        value.m_Kind = ValueKindOf(node.m_Kind);
        for (std::size_t i = 0; i < size / sizeof(float); ++i)
            value.m_Floats[i] = Take<float>();
        break;
    }
    if (m_HasStopped && value.m_String.empty())
        return;
    if (m_IsStrict) {
        if (const std::string why = ExplainImplausible(value); !why.empty())
            ReportImplausible(offset, index, element, why);
    }
    value.AddTo(m_Tree, node.m_Label);
    value.KeepFor(m_Conditions, index);
}

void BinaryExplainer::ReadString(LayoutIndex index, const ElementPlace* element, TextValue& value) {
    const LayoutNode& node = m_Layout[index];
    const std::size_t offset = m_Offset;
    const auto length = Take<std::uint32_t>();
    const std::uint64_t left = (m_Bytes.size() - m_Offset) / sizeof(char16_t);
    const bool isTooLong = node.m_Capacity > 0 && length >= static_cast<std::uint32_t>(node.m_Capacity);
    if (isTooLong)
        Report(DiagnosticCode::TooLong, offset, index, element,
               "the string has " + std::to_string(length) + " UTF-16 units, and its capacity is " +
                   std::to_string(node.m_Capacity) + " with the terminator");
    else if (length > left)
        Report(DiagnosticCode::InputEnds, offset, index, element,
               std::to_string(2 * std::uint64_t{length}) + " bytes wanted behind the length, " +
                   std::to_string(m_Bytes.size() - m_Offset) + " are left");
    if (length > left) {
        m_HasStopped = true;
        return;
    }
    m_IsMute = m_IsMute || isTooLong; // if the length is wrong, so is all that follows
    value.m_String.resize(length);
    std::memcpy(value.m_String.data(), m_Bytes.data() + m_Offset, sizeof(char16_t) * length);
    m_Offset += sizeof(char16_t) * length;
    if (isTooLong) {
        value.m_String.resize(static_cast<std::size_t>(node.m_Capacity - 1));
        return;
    }
    if (m_IsForText) {
        if (const std::string why = ExplainNotInText(value.m_String); !why.empty())
            Report(DiagnosticCode::NotInText, offset, index, element, why);
    }
    value.m_String = value.m_String.c_str(); // strings of the engine end at a NUL

    if (node.m_Kind != LayoutKind::Word || IsWordOf(value.m_String, node))
        return;
    Report(DiagnosticCode::UnknownWord, offset, index, element, ExplainUnknownWord(value.m_String, node));
    // Where what follows depends on the word, it is read by the branch for all others, and nothing more is said of it.
    const Branches branches = BranchesOf(index);
    m_HasStopped = branches == Branches::OfWords;
    m_IsMute = m_IsMute || m_IsStrict || branches == Branches::OfWordsAndOthers;
}

BinaryExplainer::Branches BinaryExplainer::BranchesOf(LayoutIndex field) const {
    Branches branches = Branches::None;
    for (const LayoutNode& node : m_Layout.GetNodes()) {
        if (node.m_Kind != LayoutKind::When || node.m_Condition.m_Field != field)
            continue;
        if (node.m_Condition.m_IsNegated)
            return Branches::OfWordsAndOthers;
        branches = Branches::OfWords;
    }
    return branches;
}

void BinaryExplainer::ReadList(LayoutIndex index, const ElementPlace* outer) {
    const LayoutNode& node = m_Layout[index];
    const std::size_t offset = m_Offset;
    if (!Ensure(LeastBytesOf(node.m_Kind), index, outer))
        return;
    const auto count = Take<std::int32_t>();
    const std::uint64_t fitting = (m_Bytes.size() - m_Offset) / SmallestSize(m_Layout, index + 1, node.m_End);
    const ValueIndex list = m_Tree.GetSize();
    m_Tree.AddInt(node.m_Label, 0);
    const std::vector<std::string_view> labels = ElementLabels(m_Layout, index);
    m_Tree.BeginList(labels);
    const std::string why = ExplainBadCount(node, count, fitting);
    if (!why.empty() || (labels.empty() && count != 0)) {
        Report(DiagnosticCode::BadCount, offset, index, outer,
               !why.empty() ? why : std::to_string(count) + ", and nobody knows what an element is");
        m_HasStopped = true;
    }
    ElementPlace element;
    element.m_List = index;
    element.m_IsNamedByCount = labels.size() == 1 && IsNamedByCount(index);
    element.m_OuterIndices = outer != nullptr ? outer->GetIndices() : "";
    for (; !m_HasStopped && element.m_Index < static_cast<std::uint32_t>(count); ++element.m_Index)
        ReadFields(index + 1, node.m_End, &element);
    m_Tree.EndList();
    m_Tree.SetCount(list, static_cast<std::int32_t>(element.m_Index));
}

bool BinaryExplainer::IsNamedByCount(LayoutIndex list) {
    const auto [found, isNew] = m_AreNamedByCount.try_emplace(list, false);
    if (isNew) {
        LayoutIndex record = m_Layout[list].m_Parent;
        while (record != kNoLayoutIndex && m_Layout[record].m_Kind != LayoutKind::Record)
            record = m_Layout[record].m_Parent;
        const bool isInRecord = record != kNoLayoutIndex;
        const RecordLabels labels(m_Layout, isInRecord ? record + 1 : 0,
                                  isInRecord ? m_Layout[record].m_End : m_Layout.GetSize());
        found->second = labels.IsNamedByCount(list);
    }
    return found->second;
}

template <class Number> Number BinaryExplainer::Take() {
    Number number;
    std::memcpy(&number, m_Bytes.data() + m_Offset, sizeof number);
    m_Offset += sizeof number;
    return number;
}

bool BinaryExplainer::Ensure(std::size_t bytes, LayoutIndex index, const ElementPlace* element) {
    const std::size_t left = m_Bytes.size() - m_Offset;
    if (left >= bytes)
        return true;
    Report(DiagnosticCode::InputEnds, m_Offset, index, element,
           std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes") + " wanted, " + std::to_string(left) +
               (left == 1 ? " is left" : " are left"));
    m_HasStopped = true;
    return false;
}

// Most likely the value is none of this field, and what follows is out of step, too.
void BinaryExplainer::ReportImplausible(std::size_t offset, LayoutIndex index, const ElementPlace* element,
                                        std::string message) {
    Report(DiagnosticCode::BadValue, offset, index, element, std::move(message));
    m_IsMute = true;
}

void BinaryExplainer::Report(DiagnosticCode code, std::size_t offset, LayoutIndex index, const ElementPlace* element,
                             std::string message) {
    if (m_IsMute)
        return;
    m_Log.Add(code, DiagnosticPlace::AtOffset(offset), m_Path.Of(m_Layout, m_Layout[index], element),
              std::move(message));
}

} // namespace Corvid
