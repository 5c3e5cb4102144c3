#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "Tests/Engine/Layout/Infer/RandomLayout.h"

namespace Corvid {

// How layouts that are inferred from some files of random types do on files that were held out, converted as corvid
// converts files.
struct StudySetting {
    int m_Types = 0;
    int m_Texts = 0;
    int m_Binaries = 0; // without a twin
    int m_Twins = 0;    // of the texts
    std::uint32_t m_FirstSeed = 1;
    bool m_IsInTwoSteps = false; // the same number of samples again continues the layout
    RandomStyle m_Style = {};
};

struct StudyResult {
    int m_Files = 0; // conversions, one each way
    // Without, and with what is unproven allowed.
    int m_Right[2] = {0, 0};
    int m_Wrong[2] = {0, 0};
    int m_WrongAssumed = 0; // of the wrong ones without: by a layout that says itself that it assumes
    int m_Contradicted = 0; // types whose second samples contradict the layout of the first
    std::string m_FirstWrong;
    std::map<std::string, int> m_Refused[2]; // by reason
};

StudyResult RunStudy(const StudySetting& setting);

} // namespace Corvid
