// Layouts out of any samples. An input is several files with a byte 0xFF between them. What must hold: inference ends,
// and what it makes is a layout that can be written, read again, and be put to use.

#include <cstddef>
#include <cstdint>
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
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    for (bool isLast = false; !isLast && samples.size() < 32;) {
        const std::size_t end = rest.find('\xFF');
        isLast = end == rest.npos;
        // Texts may leave the header out: what follows the type word is what matters.
        const std::string_view file = rest.substr(0, end);
        const bool isWhole = file.starts_with("BIN") || file.starts_with("TXT");
        samples.push_back({std::to_string(samples.size()),
                           (isWhole ? std::string() : std::string("TXT\nentityType \"Quest\"\n")) + std::string(file)});
        rest.remove_prefix(isLast ? rest.size() : end + 1);
    }
    for (const InferredType& type : InferLayouts(samples, BuiltInBlocks()).m_Types) {
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
