#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "Engine/String/EnumWords.h"
#include "Tests/Support/ReportLog.h"

namespace Corvid {

// Walks an enumeration from -1 to N-1 and beyond, by value and by word. `list` holds the words with blanks between.
template <class Enum> void ExpectWords(std::u16string_view list) {
    std::vector<std::u16string> words;
    for (std::size_t start = 0; start < list.size(); start += words.back().size() + 1)
        words.emplace_back(list.substr(start, list.find(u' ', start) - start));
    ReportLog reports;
    const int count = static_cast<int>(words.size());
    EXPECT_EQ(EnumWordCount<Enum>(), count);
    for (int value = -1; value < count; ++value) {
        const std::u16string word = value < 0 ? u"Invalid" : words[static_cast<std::size_t>(value)];
        ASSERT_NE(WordOf(static_cast<Enum>(value)), nullptr) << value;
        EXPECT_EQ(WordOf(static_cast<Enum>(value)), word) << value;
        EXPECT_EQ(static_cast<int>(EnumFromWord<Enum>(word.c_str())), value);
    }
    EXPECT_EQ(reports.Take(), "");
    EXPECT_EQ(WordOf(static_cast<Enum>(-2)), nullptr);
    EXPECT_EQ(WordOf(static_cast<Enum>(count)), nullptr);
    EXPECT_EQ(static_cast<int>(EnumFromWord<Enum>((words[0] + u" ").c_str())), -1);
    EXPECT_EQ(reports.Count("' to an enum value.\n"), 1);
}

} // namespace Corvid
