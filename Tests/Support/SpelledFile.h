#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace Corvid {

// A file spelled out value by value, in both encodings at once.
class SpelledFile {
public:
    std::string GetText() const { return "\xEF\xBB\xBFTXT\r\n" + m_Lines; }
    std::string GetBinary() const { return "BIN\n" + m_Bytes; }

    SpelledFile& Bool(const char* label, bool value) {
        m_Bytes.push_back(value ? '\1' : '\0');
        return Line(label, value ? "TRUE" : "FALSE");
    }
    SpelledFile& Int(const char* label, std::int32_t value) {
        AddInt(static_cast<std::uint32_t>(value));
        return Line(label, std::to_string(value));
    }
    SpelledFile& Float(const char* label, float value) {
        AddInt(std::bit_cast<std::uint32_t>(value));
        return Line(label, std::to_string(value));
    }
    SpelledFile& String(const char* label, std::string_view ascii) {
        AddInt(static_cast<std::uint32_t>(ascii.size()));
        for (const char c : ascii)
            m_Bytes.append({c, '\0'});
        return Line(label, '"' + std::string(ascii) + '"');
    }
    SpelledFile& Rect(const char* label, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
        std::string text = "[";
        for (const std::int32_t value : {x, y, width, height}) {
            AddInt(static_cast<std::uint32_t>(value));
            text += ' ' + std::to_string(value) + " ,";
        }
        return Line(label, text.replace(text.size() - 1, 1, "]"));
    }
    SpelledFile& Vector(const char* label, const std::array<float, 3>& vector) {
        return Line(label, AddVector(vector));
    }
    // `packed` in hexadecimal, and its bytes from red to alpha.
    SpelledFile& Color(const char* label, const char* packed, const std::array<int, 4>& channels) {
        for (const int channel : channels)
            AddInt(std::bit_cast<std::uint32_t>(static_cast<float>(channel) * 0.00392156886f));
        return Line(label, packed);
    }
    SpelledFile& Matrix(const char* label, const std::array<std::array<float, 3>, 3>& rows) {
        Begin(label);
        for (const std::array<float, 3>& row : rows)
            Line("", AddVector(row));
        return End();
    }

    // A nested record.
    SpelledFile& Begin(const char* label) {
        m_Lines += m_Indentation + label + "\r\n";
        m_Indentation += '\t';
        return *this;
    }
    SpelledFile& End() {
        m_Indentation.pop_back();
        return *this;
    }

private:
    SpelledFile& Line(const char* label, const std::string& value) {
        m_Lines += m_Indentation + label + ' ' + value + "\r\n";
        return *this;
    }
    std::string AddVector(const std::array<float, 3>& vector) {
        std::string text = "[";
        for (const float value : vector) {
            AddInt(std::bit_cast<std::uint32_t>(value));
            text += ' ' + std::to_string(value);
        }
        return text + " ]";
    }
    void AddInt(std::uint32_t value) {
        for (int shift = 0; shift < 32; shift += 8)
            m_Bytes.push_back(static_cast<char>(value >> shift & 0xFF));
    }

    std::string m_Lines;
    std::string m_Bytes;
    std::string m_Indentation;
};

} // namespace Corvid
