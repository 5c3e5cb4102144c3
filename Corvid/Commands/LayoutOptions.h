#pragma once

#include <memory>

#include "Corvid/CommandLine/CommandDeclaration.h"
#include "Corvid/Load/LoadedFile.h"
#include "Engine/Layout/LayoutLibrary.h"

namespace Corvid {

// For commands that load entities of types that are not built in.
struct LayoutOptions {
    std::shared_ptr<const LayoutLibrary> m_Library; // once declared, always there
    bool m_IsUnprovenAllowed = false;

    void ApplyTo(LoadOptions& load) const {
        load.m_Layouts = m_Library.get();
        load.m_IsUnprovenAllowed = m_IsUnprovenAllowed;
    }
};

void DeclareLayouts(CommandDeclaration& declaration, LayoutOptions& options);      // --layouts, --allow-unproven
void DeclareLayoutFolder(CommandDeclaration& declaration, LayoutOptions& options); // --layouts

} // namespace Corvid
