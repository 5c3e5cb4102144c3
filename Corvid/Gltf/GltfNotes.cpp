#include "Corvid/Gltf/GltfNotes.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <system_error>

#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

constexpr const char* kUnitsSuffix = "Units";

void AppendNumber(std::string& text, float value) {
    char buffer[32];
    const auto [end, failure] =
        std::isfinite(value) ? std::to_chars(buffer, buffer + sizeof buffer, value)
                             : std::to_chars(buffer, buffer + sizeof buffer, std::bit_cast<std::uint32_t>(value), 16);
    text += std::isfinite(value) ? "" : "0x";
    text.append(buffer, end);
}

void AppendNumber(std::string& text, std::int32_t value) {
    text += std::to_string(value);
}

template <class Number> void NoteNumbers(GltfNotes& notes, std::string_view name, std::span<const Number> values) {
    std::string text;
    for (const Number value : values) {
        text += text.empty() ? "" : " ";
        AppendNumber(text, value);
    }
    notes.insert_or_assign(std::string(name), std::move(text));
}

bool ReadNumber(const char*& position, const char* end, float& value) {
    if (end - position > 2 && position[0] == '0' && position[1] == 'x') {
        std::uint32_t bits = 0;
        const auto [behind, failure] = std::from_chars(position + 2, end, bits, 16);
        value = std::bit_cast<float>(bits);
        position = behind;
        return failure == std::errc{};
    }
    const auto [behind, failure] = std::from_chars(position, end, value);
    position = behind;
    return failure == std::errc{};
}

bool ReadNumber(const char*& position, const char* end, std::int32_t& value) {
    const auto [behind, failure] = std::from_chars(position, end, value);
    position = behind;
    return failure == std::errc{};
}

template <class Number> std::optional<std::vector<Number>> ReadNumbers(const GltfNotes& notes, std::string_view name) {
    const auto found = notes.find(name);
    if (found == notes.end())
        return std::nullopt;
    std::vector<Number> values;
    const char* position = found->second.data();
    const char* const end = position + found->second.size();
    while (position != end) {
        if (!values.empty() && *position++ != ' ')
            return std::nullopt;
        Number value{};
        if (!ReadNumber(position, end, value))
            return std::nullopt;
        values.push_back(value);
    }
    return values;
}

} // namespace

void NoteFloats(GltfNotes& notes, std::string_view name, std::span<const float> values) {
    NoteNumbers(notes, name, values);
}

bool FindFloats(const GltfNotes& notes, std::string_view name, std::span<float> values) {
    const auto found = ReadNumbers<float>(notes, name);
    if (!found || found->size() != values.size())
        return false;
    std::copy(found->begin(), found->end(), values.begin());
    return true;
}

void NoteIntegers(GltfNotes& notes, std::string_view name, std::span<const std::int32_t> values) {
    NoteNumbers(notes, name, values);
}

std::optional<std::vector<std::int32_t>> FindIntegers(const GltfNotes& notes, std::string_view name) {
    return ReadNumbers<std::int32_t>(notes, name);
}

void NoteString(GltfNotes& notes, const std::string& name, std::u16string_view value) {
    std::string text = ToUtf8(value);
    if (ToUtf16(text) == value)
        notes[name] = std::move(text);
    else
        NoteIntegers(notes, name + kUnitsSuffix, std::vector<std::int32_t>(value.begin(), value.end()));
}

std::optional<std::u16string> FindString(const GltfNotes& notes, const std::string& name) {
    if (const auto found = notes.find(name); found != notes.end())
        return ToUtf16(found->second);
    const auto units = FindIntegers(notes, name + kUnitsSuffix);
    if (!units)
        return std::nullopt;
    std::u16string value;
    for (const std::int32_t unit : *units)
        value += static_cast<char16_t>(unit);
    return value;
}

} // namespace Corvid
