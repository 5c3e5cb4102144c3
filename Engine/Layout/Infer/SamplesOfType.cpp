#include "Engine/Layout/Infer/SamplesOfType.h"

#include <algorithm>
#include <optional>

#include "Engine/Layout/Infer/PlausibleValue.h"
#include "Engine/Layout/Infer/ValueKinds.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

constexpr std::string_view kTypeLabel = "entityType";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

std::vector<const Sample*> SortByContent(std::span<const Sample> samples) {
    std::vector<const Sample*> sorted;
    for (const Sample& sample : samples)
        sorted.push_back(&sample);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Sample* left, const Sample* right) { return left->m_Bytes < right->m_Bytes; });
    sorted.erase(std::unique(sorted.begin(), sorted.end(),
                             [](const Sample* left, const Sample* right) { return left->m_Bytes == right->m_Bytes; }),
                 sorted.end());
    return sorted;
}

// The word of the type, where a sample begins as one of an entity does.
std::optional<std::string> TypeOfText(const SampleTree& tree) {
    const SampleLine& line = tree[1];
    if (line.m_Label != kTypeLabel || !KindsOfValue(line.m_Value).Has(LayoutKind::String))
        return std::nullopt;
    return std::string(line.m_Value.substr(1, line.m_Value.size() - 2));
}

// Moves behind it.
std::optional<std::string> TakeTypeOfBinary(std::string_view& bytes) {
    bytes.remove_prefix(std::min(bytes.size(), kBinaryHeader.size()));
    const std::optional<std::size_t> size = SizeOfPlausible(LayoutKind::String, bytes, {});
    if (!size.has_value())
        return std::nullopt;
    std::string word = ToUtf8(TakeString(bytes));
    bytes.remove_prefix(*size);
    return word;
}

} // namespace

std::map<std::string, SamplesOfType> SortByType(std::span<const Sample> samples,
                                                std::vector<InferenceProblem>& problems) {
    std::map<std::string, SamplesOfType> types;
    const auto complain = [&](const Sample& sample, std::string message, int line) {
        problems.push_back({std::move(message), {sample.m_Name, line}, {}});
    };
    for (const Sample* sample : SortByContent(samples)) {
        if (IsBinarySample(*sample)) {
            std::string_view bytes = sample->m_Bytes;
            if (const auto word = TakeTypeOfBinary(bytes))
                types[*word].m_Binaries.push_back({sample, bytes});
            else
                complain(*sample, "no entity definition", 0);
            continue;
        }
        std::string_view text = sample->m_Bytes;
        if (text.starts_with(kUtf8Mark))
            text.remove_prefix(kUtf8Mark.size());
        auto tree = std::make_unique<SampleTree>();
        if (!tree->Parse(text))
            complain(*sample, tree->GetFault(), tree->GetFaultLine());
        else if (const auto word = TypeOfText(*tree))
            types[*word].m_Texts.push_back({sample, std::move(tree)});
        else
            complain(*sample, "no entity definition", (*tree)[1].m_Line);
    }
    return types;
}

} // namespace Corvid
