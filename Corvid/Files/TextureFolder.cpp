#include "Corvid/Files/TextureFolder.h"

#include <algorithm>

#include "Corvid/Files/FileBytes.h"
#include "Corvid/Files/FolderListing.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Files/SystemError.h"
#include "Engine/File/PathParts.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

// The first that is there counts.
constexpr const char* kExtensions[] = {".png", ".jpg", ".jpeg"};

std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return text;
}

bool IsPicture(std::string_view bytes) {
    constexpr std::string_view kPngStart("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16);
    return bytes.starts_with(kPngStart) || bytes.starts_with("\xFF\xD8\xFF");
}

} // namespace

TextureFolder::TextureFolder(const std::string& path) : m_Path(path) {
    if (!m_Path.empty() && !IsPathSeparator(m_Path.back()))
        m_Path += '/';
    const std::optional<std::vector<FolderEntry>> entries = ListFolder(path);
    if (!entries) {
        m_Error = LastSystemError();
        return;
    }
    std::vector<std::string> names;
    for (const FolderEntry& entry : *entries)
        names.push_back(entry.m_Name);
    std::sort(names.begin(), names.end()); // the same one, in whatever order the system tells them
    for (const std::string_view extension : kExtensions) {
        for (const std::string& name : names) {
            if (LowerCase(name).ends_with(extension))
                m_Files.try_emplace(LowerCase(name.substr(0, name.size() - extension.size())), name);
        }
    }
}

std::optional<std::string> TextureFolder::ReadPicture(std::u16string_view textureName, std::string& problem) const {
    const std::string name = ToUtf8(SplitPath(textureName).m_Name);
    const auto found = m_Files.find(LowerCase(name));
    if (found == m_Files.end()) {
        problem = "no PNG or JPEG of the name " + PrintedPath(name) + " in " + PrintedPath(m_Path);
        return std::nullopt;
    }
    const std::string path = m_Path + found->second;
    ReadResult read = ReadFoundFile(path);
    if (!read.m_Error.empty())
        problem = PrintedPath(path) + ": " + read.m_Error;
    else if (!IsPicture(read.m_Bytes))
        problem = PrintedPath(path) + ": neither PNG nor JPEG";
    return problem.empty() ? std::optional(std::move(read.m_Bytes)) : std::nullopt;
}

} // namespace Corvid
