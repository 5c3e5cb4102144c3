#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Corvid/Diagnostics/DiagnosticLog.h"
#include "Engine/Archive/FileArchiveSystem.h"
#include "Engine/Layout/LayoutLibrary.h"
#include "Kinds/KindObject.h"

namespace Corvid {

struct LoadOptions {
    std::optional<Kind> m_Kind;              // given by the user: comes before extension and content
    bool m_IsForText = false;                // strings that text cannot hold are errors
    bool m_IsUnprovenAllowed = false;        // a doubt of a layout that the file touches is a warning
    const LayoutSource* m_Layouts = nullptr; // for entity types that are not built in; null: there are none
};

// What became of the bytes of one file. What is wrong with them stands in the log; reading the file is the caller's
// business.
struct LoadedFile {
    std::optional<Kind> m_Kind;              // none: not an archive, or of no known kind
    std::optional<ArchiveFormat> m_Encoding; // Text or Binary; none: not an archive
    std::uint64_t m_Size = 0;                // bytes
    std::string m_EntityType;                // the type word of an entity, as far as it can be read
    std::string m_LayoutOrigin;              // of an entity: "built-in", or the path of the layout that was used
    bool m_IsMemoryShort = false;            // there is no object, and nothing is known of the file
    DiagnosticLog m_Log;                     // errors, and the warnings that go with loading

    // As the engine loads it, whatever is wrong with it; null: nothing may be made of this file, whatever is allowed.
    std::unique_ptr<KindObject> m_Object;

    // Where something is wrong: what could be read, each field for itself. Null where nothing is wrong.
    std::unique_ptr<KindObject> m_Readable;

    // The best there is to show or compare; null: nothing.
    const KindObject* GetBest() const { return m_Readable != nullptr ? m_Readable.get() : m_Object.get(); }
};

// Finds out encoding and kind, loads the object the way the engine does, and explains what is wrong if anything is.
// `path` names the file for its extension and an entity's name; nothing is opened.
LoadedFile LoadFromBytes(std::string bytes, std::u16string_view path, const LoadOptions& options);

enum class FloatPrecision { Exact, SixDecimals };

// Hands the bytes of a file of the encoding to `sink`. False: memory is short, and what was handed on is worth nothing.
bool SaveToSink(const KindObject& object, ArchiveFormat format, FloatPrecision floats, ByteSink& sink);

// The same as one string; nothing when memory is short.
std::optional<std::string> SaveToBytes(const KindObject& object, ArchiveFormat format, FloatPrecision floats);

} // namespace Corvid
