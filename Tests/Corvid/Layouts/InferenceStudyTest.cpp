#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

#include "Tests/Corvid/Layouts/InferenceStudy.h"

namespace Corvid {

namespace {

// CORVID_STUDY_TYPES=1000 makes it a study of so many types; a few suffice to notice that something broke.
int TypeCount() {
    const char* const types = std::getenv("CORVID_STUDY_TYPES");
    return types != nullptr ? std::atoi(types) : 25;
}

std::uint32_t FirstSeed() {
    const char* const seed = std::getenv("CORVID_STUDY_SEED");
    return seed != nullptr ? static_cast<std::uint32_t>(std::atoi(seed)) : 1;
}

// Numbers that tell little: round ones, zeros, and many that take 8 bytes.
RandomStyle Poor() {
    RandomStyle style;
    style.m_RoundShare = 100;
    style.m_ZeroIntShare = 40;
    style.m_ZeroDecimalShare = 30;
    style.m_WideShare = 6;
    style.m_DoubleShare = 10;
    style.m_DigitsOnlyShare = 60;
    return style;
}

// Elements that begin or end now and then.
RandomStyle Varying() {
    RandomStyle style;
    style.m_WhenInElementShare = 20;
    style.m_FirstInElementShare = 10;
    return style;
}

// Few fields, and numbers that are others in later files.
RandomStyle Drifting() {
    RandomStyle style = Poor();
    style.m_LeastFields = 2;
    style.m_MostFields = 5;
    style.m_DriftShare = 50;
    return style;
}

TEST(InferenceStudyTest, HeldOutFilesAreConvertedRightOrRefused) {
    struct Case {
        const char* name;
        StudySetting setting;
        int written; // percent at least
        int allowed; // 1: with what is unproven
    };
    const Case kCases[] = {
        {"6 texts and 2 binaries", {TypeCount(), 6, 2, 0, FirstSeed()}, 0, 0},
        {"8 texts and 4 binaries", {TypeCount(), 8, 4, 0, FirstSeed()}, 0, 0},
        {"30 texts and 10 binaries", {TypeCount(), 30, 10, 0, FirstSeed()}, 95, 0},
        {"30 texts and 10 binaries, poor", {TypeCount(), 30, 10, 0, FirstSeed(), false, Poor()}, 70, 0},
        {"30 texts and 10 binaries, varying", {TypeCount(), 30, 10, 0, FirstSeed(), false, Varying()}, 85, 0},
        {"30 texts and 10 binaries, drifting", {TypeCount(), 30, 10, 0, FirstSeed(), false, Drifting()}, 0, 0},
        {"30 texts and a pair", {TypeCount(), 30, 0, 1, FirstSeed()}, 65, 0},
        {"8 texts and 4 binaries, twice", {TypeCount(), 8, 4, 0, FirstSeed(), true}, 75, 0},
        {"10 texts", {TypeCount(), 10, 0, 0, FirstSeed()}, 75, 1},
    };
    for (const Case& each : kCases) {
        const StudyResult result = RunStudy(each.setting);
        const int written = result.m_Right[each.allowed] + (each.allowed == 1 ? result.m_Wrong[1] : 0);
        std::cout << each.name << ", seeds from " << each.setting.m_FirstSeed << ": of " << result.m_Files << " "
                  << result.m_Right[0] << " right, " << result.m_Wrong[0] << " wrong (" << result.m_WrongAssumed
                  << " assumed); with what is unproven " << result.m_Right[1] << " right, " << result.m_Wrong[1]
                  << " wrong, " << result.m_Contradicted << " types contradicted\n";
        for (const int allowed : {0, 1}) {
            for (const auto& [why, count] : result.m_Refused[allowed])
                std::cout << "    " << (allowed == 1 ? "allowed " : "") << why << ' ' << count << '\n';
        }
        EXPECT_EQ(result.m_Wrong[0], result.m_WrongAssumed) << each.name << ": " << result.m_FirstWrong;
        EXPECT_GE(100 * written, each.written * result.m_Files) << each.name;
    }
}

} // namespace

} // namespace Corvid
