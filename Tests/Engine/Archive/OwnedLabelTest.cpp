#include "Engine/Archive/OwnedLabel.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Tests/Engine/Archive/TextArchiveFixture.h"

namespace Corvid {
namespace {

using namespace std::string_literals;

class OwnedLabelTest : public TextArchiveFixture {};

TEST_F(OwnedLabelTest, EveryLengthIsWrittenAndFoundAgain) {
    std::vector<OwnedLabel> labels;
    std::string lines;
    for (std::size_t length = 1; length <= Label::kMaxLength; ++length) {
        std::string text(length, 'a');
        text.back() = static_cast<char>('!' + length % 90);
        labels.emplace_back(text); // and moves those that are there
        lines += text + ' ' + std::to_string(length) + "\r\n";
    }
    const auto write = [&](Archive& archive) {
        for (std::size_t i = 0; i < labels.size(); ++i)
            archive.WriteInt(labels[i], static_cast<std::int32_t>(i + 1));
    };
    const auto read = [&](Archive& archive) {
        for (std::size_t i = 0; i < labels.size(); ++i) {
            std::int32_t value = 0;
            archive.ReadInt(labels[i], value);
            EXPECT_EQ(value, static_cast<std::int32_t>(i + 1));
        }
    };
    EXPECT_EQ(Write(FloatForm::SixDecimals, write), lines);
    EXPECT_EQ(Read(lines, read), "");
    LoadWith(SaveWith(ArchiveFormat::Binary, write), read);
    EXPECT_EQ(TakeReports(), "");
}

// The text ends where the label's last letter would stand: nothing behind it may be looked at.
TEST_F(OwnedLabelTest, LineMayEndWithinTheLabel) {
    const std::string text(Label::kMaxLength, 'z');
    std::int32_t value = -7;
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const std::string line = text.substr(0, length);
        EXPECT_EQ(Read(line, [&](Archive& archive) { archive.ReadInt(OwnedLabel(text), value); }),
                  Missing(text, 1, line));
    }
    EXPECT_EQ(value, -7);
}

TEST_F(OwnedLabelTest, OnlyPrintableAsciiIsALabel) {
    for (const std::string& text : {"x"s, "~"s, "Move Left"s, "\"#?"s, "ends with "s, std::string(127, 'x')})
        EXPECT_TRUE(OwnedLabel::IsLabel(text)) << text;
    EXPECT_EQ(TakeReports(), "");
    for (const std::string& text :
         {""s, " x"s, "a\tb"s, "a\nb"s, "\x7F"s, "\xC3\xA9"s, "a\0"s, std::string(128, 'x')}) {
        EXPECT_FALSE(OwnedLabel::IsLabel(text)) << text;
        const std::string line =
            Write(FloatForm::SixDecimals, [&](Archive& archive) { archive.WriteInt(OwnedLabel(text), 1); });
        EXPECT_EQ(line, "? 1\r\n");
        EXPECT_EQ(TakeReports(), Failed("IsLabel( text )", "Engine/Archive/OwnedLabel"));
    }
}

TEST_F(OwnedLabelTest, LabelMayHoldBlanks) {
    const OwnedLabel label("Move Left"), longer("Move Left Twice And Again");
    std::int32_t first = 0, second = 0;
    EXPECT_EQ(Read("Move Left 3\n\tMove Left Twice And Again\t4\n",
                   [&](Archive& archive) {
                       archive.ReadInt(label, first);
                       archive.ReadInt(longer, second);
                   }),
              "");
    EXPECT_TRUE(first == 3 && second == 4);
}

} // namespace
} // namespace Corvid
