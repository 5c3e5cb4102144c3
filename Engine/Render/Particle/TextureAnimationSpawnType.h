#pragma once

#include "Engine/String/EnumWords.h"

namespace Corvid {

// Which frame of its texture animation a new particle starts with.
enum class TextureAnimationSpawnType { Invalid = -1, FirstFrame, SequentialFrames, RandomFrames };

template <> struct EnumWords<TextureAnimationSpawnType> {
    static constexpr EnumWord Words[] = {u"FirstFrame", u"SequentialFrames", u"RandomFrames"};
};

} // namespace Corvid
