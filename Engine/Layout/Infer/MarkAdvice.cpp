#include "Engine/Layout/Infer/MarkAdvice.h"

#include <algorithm>

namespace Corvid {

namespace {

std::string PathOf(const Layout& layout, LayoutIndex node) {
    std::string path;
    for (; node != kNoLayoutIndex; node = layout[node].m_Parent) {
        const std::string& label = layout[node].m_Label;
        // The elements of a list stand under their own labels, which say as much.
        if (label.empty() || (layout[node].m_Kind == LayoutKind::Count && !path.empty()))
            continue;
        path = path.empty() ? label : label + "." + path;
    }
    return path;
}

std::string Plural(std::size_t count) {
    return count == 0 ? "no sample" : std::to_string(count) + (count == 1 ? " sample" : " samples");
}

std::string Numbers(const std::vector<std::int32_t>& numbers) {
    constexpr std::size_t kMostShown = 4;
    if (numbers.empty() || numbers.size() > kMostShown)
        return "digits alone";
    std::string text;
    for (const std::int32_t number : numbers)
        text += (text.empty() ? "" : ", ") + std::to_string(number);
    return text;
}

std::string AdviceOnNumber(const LayoutNode& node, const DraftField& field) {
    const std::string seen = Numbers(field.m_Numbers) + " in " + Plural(field.m_PresentCount);
    if (node.m_Doubt.m_IsOfWidth)
        return seen + "; it or a number beside it takes 8 bytes; a binary file in which it is not 0 decides";
    switch (node.m_Kind) {
    case LayoutKind::Count:
        return field.m_Numbers == std::vector<std::int32_t>{0}
                   ? seen + "; it may count what nobody has seen; a sample with another number decides"
                   : seen + "; a sample with two elements, or with a number that counts nothing, decides";
    case LayoutKind::Int:
    case LayoutKind::Color:
        return field.m_Kinds.Has(LayoutKind::Color) ? seen + "; a binary file, or a value with a letter, decides"
                                                    : seen + "; a binary file that has it decides";
    default:
        return "in " + Plural(field.m_PresentCount) + ", but in no binary file; one that has it decides";
    }
}

std::string NameOf(const Layout& layout, const LayoutCondition& condition) {
    std::string name = (condition.m_IsNegated ? "not " : "") + layout[condition.m_Field].m_Label;
    for (std::size_t i = 0; i < condition.m_Words.size(); ++i) {
        name += i == 0 ? " = \"" : " \"";
        for (const char16_t unit : condition.m_Words[i])
            name += unit < 0x7F ? static_cast<char>(unit) : '?';
        name += '"';
    }
    return name;
}

std::string AdviceOnWhen(const Layout& layout, LayoutIndex index, const DraftWhen& when) {
    const LayoutNode& node = layout[index];
    if (node.m_Condition.m_Field == kNoLayoutIndex)
        return "in some samples, and no earlier value tells in which; more samples may";
    const std::string name = NameOf(layout, node.m_Condition);
    if (!node.m_Doubt.m_Alternatives.empty()) {
        std::string others;
        for (const LayoutCondition& other : node.m_Doubt.m_Alternatives)
            others += (others.empty() ? "" : ", or ") + NameOf(layout, other);
        return "when " + name + ", or " + others + "; a sample in which these differ decides";
    }
    if (when.m_IsUncertain)
        return "when " + name + ", as far as so few samples show; more of them decide";
    return "when " + name + ": " + Plural(when.m_Samples[1]) + " with it and " + std::to_string(when.m_Samples[0]) +
           " without; two of each decide";
}

} // namespace

std::vector<InferredMark> DescribeMarks(const DraftLayout& made) {
    const Layout& layout = made.m_Layout;
    std::vector<InferredMark> marks;
    for (LayoutIndex index = 0; index < layout.GetSize(); ++index) {
        const LayoutNode& node = layout[index];
        if (!node.m_IsDoubtful)
            continue;
        InferredMark& mark = marks.emplace_back();
        mark.m_Node = index;
        if (node.m_Kind == LayoutKind::When) {
            mark.m_Field = PathOf(layout, index + 1);
            mark.m_Advice = AdviceOnWhen(layout, index, *made.m_Whens[index].front());
            continue;
        }
        mark.m_Field = PathOf(layout, index);
        const DraftField& field = *made.m_Fields[index];
        if (node.m_Kind == LayoutKind::Bool) {
            const bool value = node.m_Doubt.m_SeenBools.front();
            mark.m_Advice = std::string(value ? "TRUE" : "FALSE") + " in " + Plural(field.m_PresentCount) +
                            "; a sample with " + (value ? "FALSE" : "TRUE") + " decides";
        } else {
            mark.m_Advice = AdviceOnNumber(node, field);
        }
    }
    return marks;
}

} // namespace Corvid
