#include "Engine/Archive/OwnedLabel.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "Engine/Report/Reporter.h"

namespace Corvid {

namespace {

constexpr Label kNoLabel = u"?";

// ASCII text becomes itself; any other byte becomes a unit that no label has.
std::size_t Widen(std::string_view text, char16_t (&units)[Label::kMaxLength + 1]) {
    const std::size_t length = std::min(text.size(), std::size(units));
    std::transform(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length), units,
                   [](char character) { return static_cast<char16_t>(static_cast<unsigned char>(character)); });
    return length;
}

} // namespace

bool OwnedLabel::IsLabel(std::string_view text) {
    char16_t units[Label::kMaxLength + 1];
    return Label::IsLabel(units, Widen(text, units));
}

OwnedLabel::OwnedLabel(std::string_view text) : m_Label(kNoLabel) {
    char16_t units[Label::kMaxLength + 1];
    const std::size_t length = Widen(text, units);
    if (!Check(Label::IsLabel(units, length), "IsLabel( text )"))
        return;
    if (length <= Label::kMaxShortLength) {
        m_Label = Label(units, length);
        return;
    }
    auto longText = std::make_unique_for_overwrite<char16_t[]>(length);
    std::copy_n(units, length, longText.get());
    m_Label = Label(longText.get(), length);
    m_LongText = std::move(longText);
}

} // namespace Corvid
