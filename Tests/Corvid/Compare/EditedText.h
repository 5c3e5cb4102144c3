#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace Corvid {

// A text file that is edited by its labels. Elements of a list are found by the labels that each of them consists of,
// and their number in the whole file, from 0; counts stay right.
class EditedText {
public:
    using Labels = std::vector<std::string_view>;

    explicit EditedText(std::string text) : m_Text(std::move(text)) {}

    const std::string& Get() const { return m_Text; }

    // Of the first line with the label at or behind the `number`th element, or the file's first.
    EditedText& Set(const Labels& element, int number, std::string_view label, std::string_view value) {
        const std::size_t line = FindBlock(label, 0, element.empty() ? 0 : Find(element, number).m_Begin).m_Begin;
        const std::size_t begin = m_Text.find(label, line) + label.size();
        m_Text.replace(begin, m_Text.find_first_of("\r\n", begin) - begin, ' ' + std::string(value));
        return *this;
    }
    EditedText& Set(std::string_view label, std::string_view value) { return Set({}, 0, label, value); }

    // The first `from` at or behind the element.
    EditedText& Replace(const Labels& element, int number, std::string_view from, std::string_view to) {
        m_Text.replace(m_Text.find(from, Find(element, number).m_Begin), from.size(), to);
        return *this;
    }

    EditedText& Cut(const Labels& element, int number) {
        const Block block = Find(element, number);
        m_Text.erase(block.m_Begin, block.m_Size);
        return *this;
    }
    EditedText& Remove(std::string_view count, const Labels& element, int number) {
        return Cut(element, number).Count(count, -1);
    }

    // The copy becomes the element of the number `to`, which is there already.
    EditedText& Copy(std::string_view count, const Labels& element, int from, int to) {
        const Block block = Find(element, from);
        m_Text.insert(Find(element, to).m_Begin, m_Text.substr(block.m_Begin, block.m_Size));
        return Count(count, 1);
    }

    EditedText& Move(const Labels& element, int from, int to) {
        const Block block = Find(element, from);
        const std::string moved = m_Text.substr(block.m_Begin, block.m_Size);
        const std::size_t target =
            from < to ? Find(element, to).m_Begin + Find(element, to).m_Size - block.m_Size : Find(element, to).m_Begin;
        m_Text.erase(block.m_Begin, block.m_Size);
        m_Text.insert(target, moved);
        return *this;
    }

private:
    struct Block {
        std::size_t m_Begin = 0;
        std::size_t m_Size = 0;
    };

    EditedText& Count(std::string_view label, int more) {
        const std::size_t begin = m_Text.find(std::string(label) + ' ') + label.size() + 1;
        return Set(label, std::to_string(std::stoi(m_Text.substr(begin)) + more));
    }

    Block Find(const Labels& element, int number) const {
        const Block first = FindBlock(element.front(), number, 0);
        const Block last = FindBlock(element.back(), 0, first.m_Begin);
        return {first.m_Begin, last.m_Begin + last.m_Size - first.m_Begin};
    }

    // A line and what is nested in it.
    Block FindBlock(std::string_view label, int number, std::size_t begin) const {
        for (std::size_t line = begin; line < m_Text.size(); line = NextLine(line)) {
            const std::size_t depth = DepthOf(line);
            const std::string_view rest = std::string_view(m_Text).substr(line + depth);
            if (rest.substr(0, rest.find_first_of(" \r\n")) != label || number-- > 0)
                continue;
            std::size_t end = NextLine(line);
            while (end < m_Text.size() && DepthOf(end) > depth)
                end = NextLine(end);
            return {line, end - line};
        }
        ADD_FAILURE() << "no " << label;
        return {0, 0};
    }
    std::size_t NextLine(std::size_t line) const {
        const std::size_t end = m_Text.find('\n', line);
        return end == m_Text.npos ? m_Text.size() : end + 1;
    }
    std::size_t DepthOf(std::size_t line) const { return m_Text.find_first_not_of('\t', line) - line; }

    std::string m_Text;
};

} // namespace Corvid
