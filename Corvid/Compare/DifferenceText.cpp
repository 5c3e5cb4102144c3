#include "Corvid/Compare/DifferenceText.h"

#include "Corvid/Values/ValueText.h"
#include "Engine/Math/Color.h"

namespace Corvid {

namespace {

const ValueNode& NodeOf(const ComparedValue& value) {
    return (*value.m_Tree)[value.m_Node];
}

void AppendValue(std::string& text, const ComparedValue& value) {
    AppendValueText(text, *value.m_Tree, NodeOf(value));
}

void AppendChange(std::string& text, const ComparedValue& from, const ComparedValue& to) {
    const std::size_t begin = text.size();
    AppendValue(text, from);
    const std::size_t arrow = text.size();
    text += " -> ";
    const std::size_t toBegin = text.size();
    AppendValue(text, to);
    const std::string_view all = text;
    const bool looksSame = all.substr(begin, arrow - begin) == all.substr(toBegin);
    if (looksSame && NodeOf(from).m_Kind == ValueKind::Color && NodeOf(to).m_Kind == ValueKind::Color) {
        text.resize(begin);
        AppendChannels(text, from.m_Tree->GetFloats(NodeOf(from)));
        text += " -> ";
        AppendChannels(text, to.m_Tree->GetFloats(NodeOf(to)));
    }
}

void AppendSummary(std::string& text, const Difference& difference) {
    const ListSummary& summary = *difference.m_Summary;
    text += difference.m_Field;
    text += ": " + std::to_string(summary.m_Count) + " of " + std::to_string(summary.m_Of);
    if (difference.m_Change != Change::Changed) {
        text += ", first at " + summary.m_FirstElement;
        return;
    }
    text += " differ";
    for (const ListSummary::Largest& largest : summary.m_Largest) {
        text += largest.m_Label.empty() ? ", " : ", " + largest.m_Label + ' ';
        text += "by at most ";
        if (largest.m_IsInteger)
            text += std::to_string(static_cast<std::int64_t>(largest.m_Distance));
        else
            AppendFloatText(text, static_cast<float>(largest.m_Distance));
        text += " at " + largest.m_Element;
    }
    if (summary.m_Largest.empty())
        text += ", first at " + summary.m_FirstElement;
}

} // namespace

void AppendDifferenceText(std::string& text, const Difference& difference) {
    if (difference.m_Change == Change::Added)
        text += "+ ";
    if (difference.m_Change == Change::Removed)
        text += "- ";
    if (difference.m_Summary != nullptr) {
        AppendSummary(text, difference);
        return;
    }
    text += difference.m_Field;
    if (difference.m_Change == Change::Moved) {
        text += " -> ";
        text += difference.m_MovedTo;
        text += " moved";
    } else if (difference.m_Change == Change::Changed) {
        text += ": ";
        AppendChange(text, difference.m_From, difference.m_To);
    } else if (!difference.m_Name.empty()) {
        text.push_back(' ');
        AppendQuoted(text, difference.m_Name);
    } else {
        const ComparedValue& value = difference.m_Change == Change::Added ? difference.m_To : difference.m_From;
        std::string shown;
        AppendValue(shown, value);
        if (!shown.empty())
            text += ' ' + shown;
    }
}

} // namespace Corvid
