#include "Corvid/Compare/ListElements.h"

#include <algorithm>

namespace Corvid {

std::vector<ValueSpan> ElementsOf(const ValueTree& tree, ValueIndex list) {
    const auto labels = tree.GetElementLabels(tree[list]);
    std::vector<ValueSpan> elements;
    if (labels.size() == 1 && tree.GetInt(tree[list]) > 0) // no more than there are values, whatever the count says
        elements.reserve(std::min(static_cast<ValueIndex>(tree.GetInt(tree[list])), tree[list].m_End - list));
    std::ptrdiff_t lastPlace = 0; // of a label among those of an element
    for (ValueIndex i = list + 1; i < tree[list].m_End; i = tree[i].m_End) {
        const auto place = std::find(labels.begin(), labels.end(), tree[i].m_Label) - labels.begin();
        if (elements.empty() || place <= lastPlace)
            elements.push_back({i, i});
        elements.back().m_End = tree[i].m_End;
        lastPlace = place;
    }
    return elements;
}

ValueIndex MainValueOf(const ValueTree& tree, ValueSpan element) {
    for (ValueIndex i = element.m_Begin; i < element.m_End; i = tree[i].m_End) {
        if (tree[i].m_Kind == ValueKind::Record)
            return i;
    }
    return element.m_Begin;
}

std::u16string_view NameOf(const ValueTree& tree, ValueSpan element) {
    const ValueIndex record = MainValueOf(tree, element);
    for (ValueIndex i = record + 1; i < tree[record].m_End; i = tree[i].m_End) {
        if (tree[i].m_Kind == ValueKind::String && !tree.GetString(tree[i]).empty())
            return tree.GetString(tree[i]);
    }
    for (ValueIndex i = element.m_Begin; i < element.m_End; i = tree[i].m_End) {
        if (tree[i].m_Kind == ValueKind::String)
            return tree.GetString(tree[i]);
    }
    return {};
}

} // namespace Corvid
