// Any text as a layout. What must hold: nothing goes beyond its bounds, and a layout that is sound comes back from its
// own text as it was.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Engine/Layout/LayoutParser.h"
#include "Engine/Layout/LayoutText.h"
#include "Fuzz/Archives.h"
#include "Kinds/BuiltInLayouts.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Corvid;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const LayoutBlocks& blocks = BuiltInBlocks();
    const ParsedLayout parsed = ParseLayout(input, blocks);
    Fuzz::Require(parsed.m_Layout.has_value() == parsed.m_Errors.empty(), "there is a layout or an error");
    Fuzz::Require(parsed.m_Errors.size() <= LayoutBounds::kMostErrors, "errors stay within their bound");
    for (const LayoutError& error : parsed.m_Errors)
        Fuzz::Require(error.m_Line >= 1 && error.m_Column >= 1 && !error.m_Message.empty(), "errors have a place");
    if (!parsed.m_Layout)
        return 0;
    Fuzz::Require(parsed.m_Layout->GetSize() <= LayoutBounds::kMostSize, "layouts stay within their bound");
    const std::string text = WriteLayoutText(*parsed.m_Layout, blocks);
    const ParsedLayout again = ParseLayout(text, blocks);
    Fuzz::Require(again.m_Layout.has_value(), "a layout's own text is sound");
    Fuzz::Require(
        AreNodesSame(*parsed.m_Layout, 0, parsed.m_Layout->GetSize(), *again.m_Layout, 0, again.m_Layout->GetSize()) &&
            parsed.m_Layout->IsAssumed() == again.m_Layout->IsAssumed() &&
            parsed.m_Layout->GetName() == again.m_Layout->GetName(),
        "a layout comes back from its own text");
    return 0;
}
