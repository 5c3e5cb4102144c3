#include "Corvid/Gltf/GltfSource.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <set>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

namespace Corvid {

namespace {

using Json = nlohmann::json;

constexpr std::uint32_t kGlbMagic = 0x46546C67;  // "glTF"
constexpr std::uint32_t kJsonChunk = 0x4E4F534A; // "JSON"
constexpr std::uint32_t kBinaryChunk = 0x004E4942;
constexpr std::size_t kGlbHeaderSize = 12;
constexpr std::size_t kChunkHeaderSize = 8;

// Real files stay far below: a few dozen levels, and more than eight characters a value.
constexpr int kMaxDepth = 64;
constexpr std::size_t kMaxValuesOfAnyFile = 1 << 18;
constexpr std::size_t kMinBytesPerValue = 8;
constexpr std::size_t kMaxObjectsOfAnyFile = 1 << 14;
constexpr std::size_t kMinBytesPerObject = 24;

std::uint32_t NumberAt(std::span<const unsigned char> bytes, std::size_t offset) {
    return static_cast<std::uint32_t>(bytes[offset]) | static_cast<std::uint32_t>(bytes[offset + 1]) << 8 |
           static_cast<std::uint32_t>(bytes[offset + 2]) << 16 | static_cast<std::uint32_t>(bytes[offset + 3]) << 24;
}

struct Chunks {
    std::span<const unsigned char> m_Text;
    std::span<const unsigned char> m_Binary;
    bool m_HasBinary = false;
};

// Chunks of other types, and what follows the stated length, are passed over.
bool SplitGlb(std::span<const unsigned char> bytes, Chunks& chunks, std::string& error) {
    if (bytes.size() < kGlbHeaderSize) {
        error = "the GLB header is cut off";
        return false;
    }
    if (NumberAt(bytes, 4) != 2) {
        error = "GLB version " + std::to_string(NumberAt(bytes, 4)) + "; only version 2 can be read";
        return false;
    }
    if (NumberAt(bytes, 8) > bytes.size()) {
        error = "the GLB is cut off: " + std::to_string(NumberAt(bytes, 8)) + " bytes stated, " +
                std::to_string(bytes.size()) + " are there";
        return false;
    }
    bytes = bytes.first(NumberAt(bytes, 8));
    std::size_t offset = kGlbHeaderSize;
    for (bool isFirst = true; offset + kChunkHeaderSize <= bytes.size(); isFirst = false) {
        const std::uint32_t length = NumberAt(bytes, offset);
        const std::uint32_t type = NumberAt(bytes, offset + 4);
        offset += kChunkHeaderSize;
        if (length > bytes.size() - offset) {
            error = "a chunk of the GLB reaches beyond its end";
            return false;
        }
        if (isFirst && type == kJsonChunk) {
            chunks.m_Text = bytes.subspan(offset, length);
        } else if (type == kBinaryChunk && !chunks.m_HasBinary) {
            chunks.m_Binary = bytes.subspan(offset, length);
            chunks.m_HasBinary = true;
        }
        offset += length;
    }
    if (chunks.m_Text.empty())
        error = "the GLB does not begin with a JSON chunk";
    return !chunks.m_Text.empty();
}

// Looks through a text before anything of it is kept.
class Bounds final : public nlohmann::json_sax<Json> {
public:
    explicit Bounds(std::size_t textSize)
        : m_ValuesLeft(kMaxValuesOfAnyFile + textSize / kMinBytesPerValue),
          m_ObjectsLeft(kMaxObjectsOfAnyFile + textSize / kMinBytesPerObject) {}

    bool AreKept() const { return m_AreKept; }

    bool null() override { return CountValue(); }
    bool boolean(bool) override { return CountValue(); }
    bool number_integer(number_integer_t) override { return CountValue(); }
    bool number_unsigned(number_unsigned_t) override { return CountValue(); }
    bool number_float(number_float_t, const string_t&) override { return CountValue(); }
    bool string(string_t&) override { return CountValue(); }
    bool binary(binary_t&) override { return CountValue(); }
    bool key(string_t&) override { return true; }
    bool start_array(std::size_t) override { return CountValue() && Keep(++m_Depth <= kMaxDepth); }
    bool start_object(std::size_t) override {
        return Keep(m_ObjectsLeft > 0 && m_Depth < kMaxDepth) && (--m_ObjectsLeft, ++m_Depth, true);
    }
    bool end_array() override { return --m_Depth, true; }
    bool end_object() override { return --m_Depth, true; }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }

private:
    bool CountValue() { return Keep(m_ValuesLeft > 0) && (--m_ValuesLeft, true); }
    bool Keep(bool isKept) { return m_AreKept = isKept; }

    std::size_t m_ValuesLeft;
    std::size_t m_ObjectsLeft;
    int m_Depth = 0;
    bool m_AreKept = true;
};

bool ParseBounded(std::span<const unsigned char> text, Json& document, std::string& error) {
    Bounds bounds(text.size());
    const bool isText = Json::sax_parse(text.begin(), text.end(), &bounds);
    if (!bounds.AreKept()) {
        error = "the JSON text is nested too deep, or has more values than a file of its length may have";
        return false;
    }
    if (isText)
        document = Json::parse(text.begin(), text.end(), nullptr, false);
    if (!document.is_object())
        error = "not glTF: neither a GLB nor a JSON object";
    return document.is_object();
}

bool CheckVersion(const Json& document, std::string& error) {
    const auto asset = document.find("asset");
    const auto version = asset != document.end() && asset->is_object() ? asset->find("version") : document.end();
    if (asset == document.end() || !asset->is_object() || version == asset->end() || !version->is_string()) {
        error = "not glTF: 'asset.version' is missing";
        return false;
    }
    const std::string text = version->get<std::string>();
    if (!text.starts_with("2.")) {
        error = "glTF version " + text.substr(0, 16) + "; only version 2 can be read";
        return false;
    }
    return true;
}

bool CheckExtensions(const Json& document, std::string& error) {
    const auto required = document.find("extensionsRequired");
    if (required == document.end() || !required->is_array())
        return true;
    for (const Json& name : *required) {
        if (!name.is_string() || name == "KHR_mesh_quantization")
            continue;
        error = "needs the extension '" + name.get<std::string>().substr(0, 80) +
                "', which is not known here; export it without that extension";
        return false;
    }
    return true;
}

std::string Counted(std::size_t count, const std::string& singular) {
    return std::to_string(count) + " " + singular + (count == 1 ? "" : "s");
}

// Takes out what a mesh has no place for, and tells it.
void DropUnused(Json& document, std::vector<std::string>& notTranslated) {
    const auto drop = [&](Json& owner, const char* member, const char* singular) {
        const auto found = owner.find(member);
        if (found == owner.end())
            return;
        if (singular != nullptr && found->is_array() && !found->empty())
            notTranslated.push_back(Counted(found->size(), singular));
        owner.erase(found);
    };
    drop(document, "animations", "animation");
    drop(document, "skins", "skin");
    drop(document, "cameras", "camera");
    drop(document, "samplers", nullptr);
    drop(document, "extras", nullptr);
    if (const auto extensions = document.find("extensions"); extensions != document.end()) {
        for (const auto& [name, value] : extensions->items()) {
            if (name == "KHR_lights_punctual" && value.is_object())
                drop(value, "lights", "light");
        }
        document.erase(extensions);
    }
}

// Pictures are known by their names alone: their bytes are never looked at.
void NameImages(Json& document) {
    const auto images = document.find("images");
    if (images == document.end() || !images->is_array())
        return;
    for (Json& image : *images) {
        Json named = {{"uri", ""}};
        if (image.is_object()) {
            if (const auto uri = image.find("uri"); uri != image.end() && uri->is_string()) {
                const std::string path = PathOfGltfUri(uri->get_ref<const std::string&>());
                named["uri"] = path.substr(path.find_last_of('/') + 1);
            }
            if (const auto name = image.find("name"); name != image.end() && name->is_string())
                named["name"] = *name;
        }
        image = std::move(named);
    }
}

bool IsDataUri(std::string_view uri) {
    return uri.starts_with("data:");
}

// Hands the bytes of every buffer that is not in the text to `source`, and puts their number in the URI's place.
bool TakeBuffers(Json& document, const Chunks& chunks, const GltfNeighbourReader& readNeighbour, GltfSource& source,
                 std::string& error) {
    const auto buffers = document.find("buffers");
    if (buffers == document.end() || !buffers->is_array())
        return true;
    std::set<std::string> names;
    for (std::size_t i = 0; i < buffers->size(); ++i) {
        Json& buffer = (*buffers)[i];
        const std::string place = "buffer " + std::to_string(i);
        const auto length = buffer.is_object() ? buffer.find("byteLength") : buffers->end();
        if (!buffer.is_object() || length == buffer.end() || !length->is_number_unsigned()) {
            error = place + " has no length";
            return false;
        }
        GltfBytes bytes;
        const auto uri = buffer.find("uri");
        if (uri == buffer.end()) {
            if (i != 0 || !chunks.m_HasBinary) {
                error = place + " has neither a URI nor a binary chunk";
                return false;
            }
            bytes.assign(chunks.m_Binary.begin(), chunks.m_Binary.end());
        } else if (!uri->is_string()) {
            error = place + ": the URI is no string";
            return false;
        } else if (IsDataUri(uri->get_ref<const std::string&>())) {
            continue;
        } else {
            const std::string path = PathOfGltfUri(uri->get_ref<const std::string&>());
            if (path.empty() || !names.insert(path).second) {
                error = place + ": '" + uri->get<std::string>().substr(0, 200) +
                        "' is not followed: only files in the folder of this one, each once";
                return false;
            }
            std::optional<GltfBytes> read = readNeighbour(path);
            if (!read) {
                error = place + ": cannot read '" + path + "' beside this file";
                return false;
            }
            bytes = std::move(*read);
        }
        const std::uint64_t wanted = length->get<std::uint64_t>();
        if (wanted == 0 || wanted > bytes.size()) {
            error =
                place + ": " + std::to_string(wanted) + " bytes stated, " + std::to_string(bytes.size()) + " are there";
            return false;
        }
        bytes.resize(static_cast<std::size_t>(wanted));
        buffer["uri"] = std::to_string(source.m_Buffers.size());
        source.m_Buffers.push_back(std::move(bytes));
    }
    return true;
}

int HexDigit(char character) {
    int value = -1;
    std::from_chars(&character, &character + 1, value, 16);
    return value;
}

} // namespace

std::string PathOfGltfUri(std::string_view uri) {
    std::string path;
    for (std::size_t i = 0; i < uri.size(); ++i) {
        const bool isEscape =
            uri[i] == '%' && i + 2 < uri.size() && HexDigit(uri[i + 1]) >= 0 && HexDigit(uri[i + 2]) >= 0;
        path += isEscape ? static_cast<char>(HexDigit(uri[i + 1]) * 16 + HexDigit(uri[i + 2])) : uri[i];
        i += isEscape ? 2 : 0;
    }
    // A colon is a scheme or a drive, a backslash separates on some systems.
    if (path.find_first_of(std::string_view(":\\\0", 3)) != path.npos || path.starts_with('/'))
        return {};
    std::string plain;
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const std::string part = path.substr(begin, end - begin);
        if (part == "..")
            return {};
        if (!part.empty() && part != ".")
            plain += (plain.empty() ? "" : "/") + part;
        begin = end + 1;
    }
    return plain;
}

bool PrepareGltfSource(std::span<const unsigned char> bytes, const GltfNeighbourReader& readNeighbour,
                       GltfSource& source, std::string& error) {
    Chunks chunks;
    const bool isGlb = bytes.size() >= 4 && NumberAt(bytes, 0) == kGlbMagic;
    if (!isGlb)
        chunks.m_Text = bytes;
    else if (!SplitGlb(bytes, chunks, error))
        return false;
    Json document;
    if (!ParseBounded(chunks.m_Text, document, error) || !CheckVersion(document, error) ||
        !CheckExtensions(document, error))
        return false;
    DropUnused(document, source.m_NotTranslated);
    NameImages(document);
    if (!TakeBuffers(document, chunks, readNeighbour, source, error))
        return false;
    source.m_Text = document.dump();
    return true;
}

} // namespace Corvid
