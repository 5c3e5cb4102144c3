// Layouts out of any samples. An input is several files with a byte 0xFF between them; one that begins with "layout" is
// the layout that is continued. What must hold: inference ends, and what it makes is a layout that can be written, read
// again, and be put to use.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Engine/Layout/Infer/LayoutInference.h"
#include "Engine/Layout/LayoutParser.h"
#include "Engine/Layout/LayoutText.h"
#include "Engine/Layout/RecordPlan.h"
#include "Fuzz/Archives.h"
#include "Kinds/BuiltInLayouts.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Corvid;
    using namespace Corvid::Fuzz;
    std::vector<Sample> samples;
    ParsedLayout known;
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    for (bool isLast = false; !isLast && samples.size() < 32;) {
        const std::size_t end = rest.find('\xFF');
        isLast = end == rest.npos;
        // Texts may leave the header out: what follows the type word is what matters.
        const std::string_view file = rest.substr(0, end);
        const bool isWhole = file.starts_with("BIN") || file.starts_with("TXT");
        if (file.starts_with("layout"))
            known = ParseLayout(file, BuiltInBlocks());
        samples.push_back({std::to_string(samples.size()),
                           (isWhole ? std::string() : std::string("TXT\nentityType \"Quest\"\n")) + std::string(file)});
        rest.remove_prefix(isLast ? rest.size() : end + 1);
    }
    std::optional<LayoutToContinue> toContinue;
    if (known.m_Layout)
        toContinue.emplace(LayoutToContinue{*known.m_Layout, "known"});
    const Inference inference = InferLayouts(samples, BuiltInBlocks(), toContinue ? &*toContinue : nullptr);
    for (const InferredType& type : inference.m_Types) {
        if (!type.m_HasLayout || type.m_TypeWord != "Quest")
            continue;
        const std::string text = WriteLayoutText(type.m_Layout, BuiltInBlocks());
        const ParsedLayout parsed = ParseLayout(text, BuiltInBlocks());
        Require(parsed.m_Layout.has_value(), "what is inferred can be parsed");
        Require(WriteLayoutText(*parsed.m_Layout, BuiltInBlocks()) == text, "it is written as it was read");
        const RecordPlan plan(*parsed.m_Layout);
    }
    return 0;
}
