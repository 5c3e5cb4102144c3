#include "Engine/Archive/Text/TextLine.h"

#include "Engine/Archive/LabelText.h"
#include "Engine/File/InputStream.h"

namespace Corvid {

static_assert(InputStream::kPadding >= LabelText::kMatchedBytes); // of zeros

std::string_view SkipWhiteSpace(std::string_view text) {
    while (!text.empty() && IsWhiteSpace(text.front()))
        text.remove_prefix(1);
    return text;
}

std::string_view TextWithLabel(const TextLine& line) {
    return line.m_FirstUnit == 0 ? SkipWhiteSpace(line.m_Text) : std::string_view();
}

std::optional<std::string_view> ValueBehindLabel(std::string_view textWithLabel, Label label) {
    const std::size_t length = LabelText::GetLength(label);
    if (textWithLabel.size() <= length || !IsWhiteSpace(textWithLabel[length]) ||
        LabelText::Match(label, textWithLabel.data()) == nullptr)
        return std::nullopt;
    return SkipWhiteSpace(textWithLabel.substr(length));
}

std::string_view TextForReport(const TextLine& line, std::string& storage) {
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
    if (line.m_FirstUnit == 0 && line.m_LastUnit == 0)
        return line.m_Text;
    storage.append(line.m_FirstUnit != 0 ? kReplacement : "");
    storage.append(line.m_Text).append(line.m_LastUnit != 0 ? kReplacement : "");
    return storage;
}

} // namespace Corvid
