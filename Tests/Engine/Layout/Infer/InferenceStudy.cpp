#include "Tests/Engine/Layout/Infer/InferenceStudy.h"

#include <cstdlib>
#include <iostream>

#include "Engine/Layout/Infer/LayoutInference.h"
#include "Engine/Layout/LayoutText.h"
#include "Tests/Engine/Layout/Infer/RandomLayout.h"
#include "Tests/Engine/Layout/Infer/StrictConverter.h"

namespace Corvid {

StudyResult RunStudy(const StudySetting& setting) {
    const bool isTalking = std::getenv("CORVID_STUDY") != nullptr;
    StudyResult result;
    for (int type = 0; type < setting.m_Types; ++type) {
        const std::uint32_t seed = setting.m_FirstSeed + static_cast<std::uint32_t>(type);
        RandomLayout random(seed);
        std::vector<Sample> samples;
        for (int i = 0; i < setting.m_Texts; ++i) {
            RandomLayout::File file = random.MakeFile();
            samples.push_back({"text" + std::to_string(i), file.m_Text});
            if (i < setting.m_Twins)
                samples.push_back({"twin" + std::to_string(i), file.m_Binary});
        }
        for (int i = 0; i < setting.m_Binaries; ++i)
            samples.push_back({"binary" + std::to_string(i), random.MakeFile().m_Binary});
        const Inference inference = InferLayouts(samples, {});
        const InferredType& inferred = inference.m_Types.at(0);
        int refused = 0;
        for (int i = 0; i < setting.m_HeldOut; ++i) {
            const RandomLayout::File file = random.MakeFile();
            for (const bool isToText : {false, true}) {
                ++result.m_Files;
                for (const int allowed : {0, 1}) {
                    const auto converted = isToText ? ToText(inferred.m_Layout, file.m_Binary, allowed == 1)
                                                    : ToBinary(inferred.m_Layout, file.m_Text, allowed == 1);
                    if (!converted.has_value()) {
                        ++result.m_Refused[allowed][WhyRefused() + (isToText ? " to text" : " to binary")];
                        refused += allowed == 0 ? 1 : 0;
                        continue;
                    }
                    const bool isRight = *converted == (isToText ? file.m_Text : file.m_Binary);
                    ++(isRight ? result.m_Right : result.m_Wrong)[allowed];
                    if (isRight || allowed == 1)
                        continue;
                    result.m_WrongAssumed += inferred.m_Layout.IsAssumed() ? 1 : 0;
                    if (result.m_FirstWrong.empty() && !inferred.m_Layout.IsAssumed())
                        result.m_FirstWrong = "seed " + std::to_string(seed) + (isToText ? " to text" : " to binary");
                }
            }
        }
        if (isTalking && (refused > 0 || !inferred.m_Problems.empty())) {
            std::cout << "seed " << seed << ": " << refused << " refused\n";
            for (const InferenceProblem& problem : inferred.m_Problems)
                std::cout << "  " << problem.m_Place.m_Sample << ": " << problem.m_Message << '\n';
            for (const InferredMark& mark : inferred.m_Marks)
                std::cout << "  " << mark.m_Field << ": " << mark.m_Advice << '\n';
            if (std::string_view(std::getenv("CORVID_STUDY")) == "all")
                std::cout << WriteLayoutText(random.GetTruth(), {}) << WriteLayoutText(inferred.m_Layout, {});
        }
    }
    return result;
}

} // namespace Corvid
