#pragma once

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>

namespace Corvid {

// Spells glTF files the way other tools write them: JSON by hand, numbers little-endian, in a buffer of their own.
class GltfText {
public:
    template <class Number> GltfText& Data(std::initializer_list<Number> numbers) {
        for (const Number number : numbers)
            m_Buffer.append(reinterpret_cast<const char*>(&number), sizeof number);
        return *this;
    }
    GltfText& Floats(std::initializer_list<float> numbers) { return Data<float>(numbers); }

    std::size_t GetSize() const { return m_Buffer.size(); }
    const std::string& GetBuffer() const { return m_Buffer; }

    // `members` follow the asset and the buffer: "name":[...],... with one view over all where none is given.
    std::string Spell(const std::string& members, const std::string& uri) const {
        std::string text = R"({"asset":{"version":"2.0"},"buffers":[{"byteLength":)" + std::to_string(m_Buffer.size()) +
                           (uri.empty() ? "" : R"(,"uri":")" + uri + '"') + "}],";
        if (members.find("\"bufferViews\"") == members.npos)
            text += R"("bufferViews":[{"buffer":0,"byteLength":)" + std::to_string(m_Buffer.size()) + "}],";
        return text + members + "}";
    }

    std::string Embedded(const std::string& members) const {
        return Spell(members, "data:application/octet-stream;base64," + Base64());
    }

    std::string Glb(const std::string& members) const {
        std::string text = Spell(members, "");
        text.resize((text.size() + 3) / 4 * 4, ' ');
        std::string binary = m_Buffer;
        binary.resize((binary.size() + 3) / 4 * 4);
        const auto number = [](std::size_t value) {
            const auto word = static_cast<std::uint32_t>(value);
            return std::string(reinterpret_cast<const char*>(&word), 4);
        };
        return "glTF" + number(2) + number(28 + text.size() + binary.size()) + number(text.size()) + "JSON" + text +
               number(binary.size()) + std::string("BIN\0", 4) + binary;
    }

private:
    std::string Base64() const {
        constexpr const char* kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        std::string text;
        for (std::size_t i = 0; i < m_Buffer.size(); i += 3) {
            std::uint32_t bits = 0;
            for (std::size_t k = 0; k < 3; ++k)
                bits = bits << 8 | (i + k < m_Buffer.size() ? static_cast<unsigned char>(m_Buffer[i + k]) : 0u);
            for (std::size_t k = 0; k < 4; ++k)
                text += i + k <= m_Buffer.size() ? kDigits[bits >> (18 - 6 * k) & 63] : '=';
        }
        return text;
    }

    std::string m_Buffer;
};

} // namespace Corvid
