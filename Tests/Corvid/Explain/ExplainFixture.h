#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "Corvid/Load/LoadedFile.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

inline std::string ReadExample(const std::string& path) {
    std::ifstream file(std::filesystem::path(CORVID_SOURCE_FOLDER) / "Examples" / path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

// "17:2 MeshData.NumVertices [missing-field]", or "@12 ..." in a binary file; a line each.
inline std::string FindingsOf(const LoadedFile& file) {
    std::string text;
    for (const Diagnostic& diagnostic : file.m_Log.GetAll()) {
        const DiagnosticPlace& place = diagnostic.m_Place;
        if (place.m_Kind == DiagnosticPlace::Kind::Line)
            text += std::to_string(place.m_Line) + ":" + std::to_string(place.m_Column) + " ";
        else if (place.m_Kind == DiagnosticPlace::Kind::Offset)
            text += "@" + std::to_string(place.m_Offset) + " ";
        text += diagnostic.m_Field + (diagnostic.m_Field.empty() ? "" : " ");
        text += "[" + std::string(WordOf(diagnostic.m_Code)) + "]\n";
    }
    return text;
}

inline LoadedFile LoadNamed(std::string bytes, const std::string& name, const LoadOptions& options = {}) {
    return LoadFromBytes(std::move(bytes), ToUtf16(name), options);
}

} // namespace Corvid
