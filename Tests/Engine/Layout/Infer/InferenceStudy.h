#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace Corvid {

// How layouts that are inferred from some files of random types do on files that were held out.
struct StudySetting {
    int m_Types = 0;
    int m_Texts = 0;
    int m_Binaries = 0; // without a twin
    int m_Twins = 0;    // of the texts
    int m_HeldOut = 10; // of each type
    std::uint32_t m_FirstSeed = 1;
};

struct StudyResult {
    int m_Files = 0; // conversions, one each way
    // Without, and with what is unproven allowed.
    int m_Right[2] = {0, 0};
    int m_Wrong[2] = {0, 0};
    int m_WrongAssumed = 0; // of the wrong ones without: by a layout that says itself that it assumes
    std::string m_FirstWrong;
    std::map<std::string, int> m_Refused[2]; // by reason
};

StudyResult RunStudy(const StudySetting& setting);

} // namespace Corvid
