#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Engine/File/File.h"
#include "Kinds/KindObject.h"

namespace Corvid {

// One load by the engine's own archives.
struct FastLoad {
    std::unique_ptr<KindObject> m_Object; // as the engine has it; null: no object
    bool m_IsClean = false;               // nothing was reported, nothing was taken that should not be
    bool m_IsMemoryShort = false;
    bool m_HasStringBeyondText = false; // a binary file holds a string that text cannot hold
    std::string m_FirstReport;
};

// The bytes outlive the call alone.
FastLoad LoadFast(Kind kind, const PaddedView& bytes, std::u16string_view path);

// Into an object that is there already, in its initial state.
FastLoad LoadFast(std::unique_ptr<KindObject> object, std::unique_ptr<File> file);

} // namespace Corvid
