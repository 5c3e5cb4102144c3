#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Kinds/KindObject.h"

namespace Corvid {

// One load by the engine's own archives.
struct FastLoad {
    std::unique_ptr<KindObject> m_Object; // as the engine has it; null: no object
    bool m_IsClean = false;               // nothing was reported, nothing was taken that should not be
    bool m_IsMemoryShort = false;
    std::string m_FirstReport;
};

FastLoad LoadFast(Kind kind, const std::string& bytes, std::u16string_view path);

} // namespace Corvid
