#pragma once

#include "Engine/String/EnumWords.h"

namespace Corvid {

// What the record of a brush holds beside its name. A brush does not keep it: saving derives it from the data.
enum class BrushContent { Invalid = -1, Simple, MarginsAndStates, Margins, States };

template <> struct EnumWords<BrushContent> {
    static constexpr EnumWord Words[] = {u"Simple", u"MarginsAndStates", u"Margins", u"States"};
};

constexpr bool HasMargins(BrushContent content) {
    return content == BrushContent::Margins || content == BrushContent::MarginsAndStates;
}

// All states one by one; otherwise one stands for all.
constexpr bool HasStates(BrushContent content) {
    return content == BrushContent::States || content == BrushContent::MarginsAndStates;
}

constexpr bool HasOneState(BrushContent content) {
    return !HasStates(content);
}

} // namespace Corvid
