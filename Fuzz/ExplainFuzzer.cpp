// Any bytes as a file of any kind, loaded and explained as corvid does. The first byte says which kind, and whether the
// file is wanted as text.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "Corvid/Load/LoadedFile.h"
#include "Fuzz/Archives.h"

namespace Corvid::Fuzz {

namespace {

constexpr ArchiveFormat kFormats[] = {ArchiveFormat::Text, ArchiveFormat::Binary};

// What could be made of the file is whole: it is written, and read back without a word.
void ExpectSound(const KindObject& object, const LoadOptions& options, bool isForText) {
    for (const ArchiveFormat format : kFormats) {
        if (format == ArchiveFormat::Text && !isForText)
            continue;
        const std::optional<std::string> bytes = SaveToBytes(object, format, FloatPrecision::Exact);
        Require(bytes.has_value(), "what was loaded can be saved");
        const LoadedFile again = LoadFromBytes(*bytes, u"memory", options);
        Require(!again.m_Log.HasErrors(), "what was saved has no errors");
        Require(again.m_Object != nullptr, "what was saved can be loaded");
        Require(SaveToBytes(*again.m_Object, format, FloatPrecision::Exact) == bytes, "saving again gives the same");
    }
}

} // namespace

} // namespace Corvid::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Corvid;
    using namespace Corvid::Fuzz;
    if (size == 0)
        return 0;
    LoadOptions options;
    options.m_Kind = kKinds[data[0] % std::size(kKinds)];
    options.m_IsForText = (data[0] & 16) != 0;
    const LoadedFile file =
        LoadFromBytes(std::string(reinterpret_cast<const char*>(data + 1), size - 1), u"memory", options);
    if (file.m_Log.HasErrors()) {
        for (const Diagnostic& diagnostic : file.m_Log.GetAll())
            Require(!diagnostic.m_Message.empty() && diagnostic.m_Message.size() < 2000,
                    "every message says something");
    } else {
        Require(file.m_Object != nullptr, "a file without errors has an object");
        ExpectSound(*file.m_Object, options, options.m_IsForText || file.m_Encoding == ArchiveFormat::Text);
    }
    return 0;
}
