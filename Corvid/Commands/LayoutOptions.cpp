#include "Corvid/Commands/LayoutOptions.h"

#include <optional>
#include <string>

#include "Corvid/Files/FileStatus.h"
#include "Corvid/Layouts/LayoutFolders.h"
#include "Engine/File/NativePath.h"
#include "Kinds/BuiltInLayouts.h"

namespace Corvid {

namespace {

std::shared_ptr<const LayoutLibrary> MakeLibrary(const std::optional<std::string>& folder) {
    return std::make_shared<LayoutLibrary>(GetLayoutFolders(folder), BuiltInBlocks);
}

} // namespace

void DeclareLayoutFolder(CommandDeclaration& declaration, LayoutOptions& options) {
    options.m_Library = MakeLibrary(std::nullopt);
    declaration.Take(
        "--layouts", "DIR",
        [&options](const std::string& folder) -> std::string {
            if (GetPathKind(EnginePath(folder)) != PathKind::Folder)
                return "'" + folder + "' is no folder";
            options.m_Library = MakeLibrary(folder);
            return {};
        },
        "look here first for the layouts of entity types that are not built in", ValueRole::Folder);
}

void DeclareLayouts(CommandDeclaration& declaration, LayoutOptions& options) {
    DeclareLayoutFolder(declaration, options);
    declaration.Flag("--allow-unproven", options.m_IsUnprovenAllowed,
                     "go on where a file touches what its layout marks as not proven");
}

} // namespace Corvid
