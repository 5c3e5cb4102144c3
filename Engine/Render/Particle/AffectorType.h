#pragma once

#include "Engine/String/EnumWords.h"

namespace Corvid {

// Not in alphabetical order: the numbers are those of the engine.
enum class AffectorType {
    Invalid = -1,
    ColorOscillator,
    Drag,
    Fade,
    Jitter,
    KillParticlesNearPoint,
    LinearBoundedInflate,
    LinearForceInDirection,
    LinearForceToPoint,
    LinearInflate,
    RotateAboutAxis,
    SizeOscillator,
    ExposedByController,
};

template <> struct EnumWords<AffectorType> {
    static constexpr EnumWord Words[] = {
        u"ColorOscillator",
        u"Drag",
        u"Fade",
        u"Jitter",
        u"KillParticlesNearPoint",
        u"LinearBoundedInflate",
        u"LinearForceInDirection",
        u"LinearForceToPoint",
        u"LinearInflate",
        u"RotateAboutAxis",
        u"SizeOscillator",
        u"Exposed_By_Controller",
    };
};

} // namespace Corvid
