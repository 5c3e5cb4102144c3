#include "Tests/Corvid/Layouts/InferenceStudy.h"

#include <cstdlib>
#include <iostream>
#include <optional>

#include "Corvid/Load/LoadedFile.h"
#include "Engine/Layout/Infer/LayoutInference.h"
#include "Engine/Layout/LayoutText.h"
#include "Tests/Corvid/Layouts/OneLayout.h"
#include "Tests/Engine/Layout/Infer/RandomLayout.h"

namespace Corvid {

namespace {

constexpr int kHeldOut = 10; // files of each type

struct Conversion {
    std::optional<std::string> m_Bytes;
    std::string m_Why; // it is refused
};

// The file in the other encoding, by the way that all commands go.
Conversion Convert(const LayoutSource& layouts, const std::string& bytes, bool isUnprovenAllowed) {
    LoadOptions options;
    options.m_Layouts = &layouts;
    options.m_IsUnprovenAllowed = isUnprovenAllowed;
    options.m_IsForText = bytes.starts_with("BIN");
    const LoadedFile file = LoadFromBytes(bytes, u"held-out.entity", options);
    for (const Diagnostic& diagnostic : file.m_Log.GetAll()) {
        if (diagnostic.m_Severity != Severity::Error)
            continue;
        const std::string& message = diagnostic.m_Message;
        return {std::nullopt,
                std::string(WordOf(diagnostic.m_Code)) +
                    (diagnostic.m_Code == DiagnosticCode::Unproven ? ": " + message.substr(0, 24) : std::string())};
    }
    if (file.m_Object == nullptr)
        return {std::nullopt, "no object"};
    const ArchiveFormat format = options.m_IsForText ? ArchiveFormat::Text : ArchiveFormat::Binary;
    return {SaveToBytes(*file.m_Object, format, FloatPrecision::Exact), "no bytes"};
}

std::vector<Sample> DrawSamples(RandomLayout& random, const StudySetting& setting) {
    std::vector<Sample> samples;
    for (int i = 0; i < setting.m_Texts; ++i) {
        RandomLayout::File file = random.MakeFile();
        samples.push_back({"text" + std::to_string(i), file.m_Text});
        if (i < setting.m_Twins)
            samples.push_back({"twin" + std::to_string(i), file.m_Binary});
    }
    for (int i = 0; i < setting.m_Binaries; ++i)
        samples.push_back({"binary" + std::to_string(i), random.MakeFile().m_Binary});
    return samples;
}

void Tell(std::uint32_t seed, int refused, const RandomLayout& random, const InferredType& inferred) {
    std::cout << "seed " << seed << ": " << refused << " refused\n";
    for (const InferenceProblem& problem : inferred.m_Problems)
        std::cout << "  " << problem.m_Place.m_Sample << ": " << problem.m_Message << '\n';
    for (const InferredMark& mark : inferred.m_Marks)
        std::cout << "  " << mark.m_Field << ": " << mark.m_Advice << '\n';
    if (std::string_view(std::getenv("CORVID_STUDY")) == "all")
        std::cout << WriteLayoutText(random.GetTruth(), {}) << WriteLayoutText(inferred.m_Layout, {});
}

} // namespace

StudyResult RunStudy(const StudySetting& setting) {
    const bool isTalking = std::getenv("CORVID_STUDY") != nullptr;
    StudyResult result;
    for (int type = 0; type < setting.m_Types; ++type) {
        const std::uint32_t seed = setting.m_FirstSeed + static_cast<std::uint32_t>(type);
        RandomLayout random(seed, setting.m_Style);
        InferredType inferred = InferLayouts(DrawSamples(random, setting), BuiltInBlocks()).m_Types.at(0);
        if (setting.m_IsInTwoSteps) {
            const Layout first = inferred.m_Layout;
            const LayoutToContinue known{first, "first"};
            inferred = InferLayouts(DrawSamples(random, setting), BuiltInBlocks(), &known).m_Types.at(0);
            if (!inferred.m_HasLayout) { // a field that all had before, and not all have now
                ++result.m_Contradicted;
                continue;
            }
        }
        const OneLayout layouts(WriteLayoutText(inferred.m_Layout, BuiltInBlocks()));
        int refused = 0;
        for (int i = 0; i < kHeldOut; ++i) {
            const RandomLayout::File file = random.MakeFile();
            for (const bool isToText : {false, true}) {
                ++result.m_Files;
                for (const int allowed : {0, 1}) {
                    const Conversion converted = Convert(layouts, isToText ? file.m_Binary : file.m_Text, allowed == 1);
                    if (!converted.m_Bytes.has_value()) {
                        ++result.m_Refused[allowed][converted.m_Why + (isToText ? " to text" : " to binary")];
                        refused += allowed == 0 ? 1 : 0;
                        continue;
                    }
                    const bool isRight = *converted.m_Bytes == (isToText ? file.m_Text : file.m_Binary);
                    ++(isRight ? result.m_Right : result.m_Wrong)[allowed];
                    if (isRight || allowed == 1)
                        continue;
                    result.m_WrongAssumed += inferred.m_Layout.IsAssumed() ? 1 : 0;
                    if (result.m_FirstWrong.empty() || !inferred.m_Layout.IsAssumed())
                        result.m_FirstWrong = "seed " + std::to_string(seed) + (isToText ? " to text" : " to binary");
                }
            }
        }
        if (isTalking && (refused > 0 || !inferred.m_Problems.empty() || result.m_Wrong[0] > 0))
            Tell(seed, refused, random, inferred);
    }
    return result;
}

} // namespace Corvid
