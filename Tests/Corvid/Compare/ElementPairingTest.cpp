#include "Corvid/Compare/ElementPairing.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "Tests/Corvid/Compare/CompareFixture.h"

namespace Corvid {
namespace {

// A list of records, each with a name (a blank: none) and one number per letter behind the colon.
ValueTree ListOf(const std::vector<std::string>& elements) {
    ValueTree tree;
    tree.AddInt("count", static_cast<std::int32_t>(elements.size()));
    const std::string_view labels[] = {"item"};
    tree.BeginList(labels);
    for (const std::string& element : elements) {
        const std::size_t colon = element.find(':');
        tree.BeginRecord("item");
        if (colon > 0)
            tree.AddString("name",
                           std::u16string(element.begin(), element.begin() + static_cast<std::ptrdiff_t>(colon)));
        for (const char letter : element.substr(colon + 1))
            tree.AddFloat("value", static_cast<float>(letter - 'a'));
        tree.EndRecord();
    }
    tree.EndList();
    tree.Finish();
    return tree;
}

class ElementPairingTest : public CompareFixture {
protected:
    std::vector<std::string> Compare(const ValueTree& before, const ValueTree& after) {
        Lines lines;
        CompareTrees(before, after, {}, lines);
        return lines.m_Lines;
    }
};

TEST_F(ElementPairingTest, ContentFirstThenNamesThenLikeness) {
    struct Case {
        const char* name;
        std::vector<std::string> before;
        std::vector<std::string> after;
        std::vector<std::string> expected;
    };
    const Case kCases[] = {
        {"FirstOfTwins", {"x:aa", "y:bb", "x:aa"}, {"y:bb", "x:aa"}, {"- item[0] \"x\""}},
        {"SameNameOtherContent", {"x:aa", "x:bb", "y:c"}, {"x:bb", "y:c"}, {"- item[0] \"x\""}},
        {"NamesAreKeys",
         {"x:aa", "y:bb"},
         {"y:dd", "x:cc"},
         {"item[0].value: 1.0 -> 3.0", "item[0].value: 1.0 -> 3.0", "item[0] -> item[1] moved",
          "item[1].value: 0.0 -> 2.0", "item[1].value: 0.0 -> 2.0"}},
        {"Nameless", {":abcd", ":efgh"}, {":abcd", ":xyzw", ":efgx"}, {"+ item[1]", "item[2].value: 7.0 -> 23.0"}},
        {"Replaced",
         {"a:aaaa", "x:bbbb", "b:cccc"},
         {"a:aaaa", "y:dddd", "b:cccc"},
         {"- item[1] \"x\"", "+ item[1] \"y\""}},
        {"BlockMoved",
         {"a:a", "b:b", "c:c", "d:d", "e:e"},
         {"d:d", "e:e", "a:a", "b:b", "c:c"},
         {"item[3] -> item[0] moved", "item[4] -> item[1] moved"}},
        {"Reversed", // the one in the middle is where it was
         {"a:a", "b:b", "c:c"},
         {"c:c", "b:b", "a:a"},
         {"item[2] -> item[0] moved", "item[0] -> item[2] moved"}},
        {"FieldsOfTheirOwn", {"a:ab"}, {"a:abc"}, {"+ item[0].value 2.0"}},
        {"EmptyAndFull", {}, {"a:a"}, {"+ item[0] \"a\""}},
    };
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Compare(ListOf(c.before), ListOf(c.after)), c.expected);
    }
}

// Every edit of one kind to random lists of twins and singles is told in one line.
TEST_F(ElementPairingTest, OneEditIsOneLine) {
    std::mt19937 random(3);
    for (int round = 0; round < 500; ++round) {
        std::vector<std::string> before(1 + random() % 12);
        for (std::string& element : before) {
            const char letter = static_cast<char>('a' + random() % 8);
            element = std::string(random() % 3 == 0 ? "" : std::string(1, letter)) + ':' + letter + letter;
        }
        std::vector<std::string> after = before;
        const auto place = static_cast<std::ptrdiff_t>(random() % before.size());
        switch (random() % 3) {
        case 0:
            after.erase(after.begin() + place);
            break;
        case 1:
            after.insert(after.begin() + place, "new:zz");
            break;
        default: {
            const std::string moved = after[static_cast<std::size_t>(place)];
            after.erase(after.begin() + place);
            after.insert(after.begin() + static_cast<std::ptrdiff_t>(random() % before.size()), moved);
        }
        }
        const std::vector<std::string> lines = Compare(ListOf(before), ListOf(after));
        EXPECT_EQ(lines.size(), before == after ? 0U : 1U) << "round " << round << ' ' << lines[0];
    }
}

TEST_F(ElementPairingTest, HundredThousandDifferentElementsEndWithinSeconds) {
    std::vector<std::string> before;
    std::vector<std::string> after;
    for (int i = 0; i < 100'000; ++i) {
        before.push_back((i % 2 == 0 ? "" : "b" + std::to_string(i)) + ":ab");
        after.push_back((i % 2 == 0 ? "" : "a" + std::to_string(i)) + ":cd");
    }
    after.pop_back();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_GE(Compare(ListOf(before), ListOf(after)).size(), 100'000U);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
}

} // namespace
} // namespace Corvid
