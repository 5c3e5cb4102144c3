#pragma once

#include "Engine/String/EnumWords.h"

namespace Corvid {

enum class EmitterType { Invalid = -1, Point, Sphere, Ring, MeshSurface };

template <> struct EnumWords<EmitterType> {
    static constexpr EnumWord Words[] = {u"Point", u"Sphere", u"Ring", u"MeshSurface"};
};

} // namespace Corvid
