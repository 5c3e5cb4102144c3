#pragma once

#include "Engine/Math/Vector.h"
#include "Engine/Report/Reporter.h"
#include "Engine/String/EnumWords.h"

namespace Corvid {

enum class Direction { Invalid = -1, Up, Down, Left, Right, Front, Back };

template <> struct EnumWords<Direction> {
    static constexpr EnumWord Words[] = {u"UP", u"DOWN", u"LEFT", u"RIGHT", u"FRONT", u"BACK"};
};

inline constexpr int kDirectionCount = EnumWordCount<Direction>();

// The unit vector of a direction: +Y, -Y, -X, +X, +Z, -Z. Any other value is reported and yields zero.
inline Vector3 AxisOf(Direction direction) {
    switch (direction) {
    case Direction::Up:
        return {0.0f, 1.0f, 0.0f};
    case Direction::Down:
        return {0.0f, -1.0f, 0.0f};
    case Direction::Left:
        return {-1.0f, 0.0f, 0.0f};
    case Direction::Right:
        return {1.0f, 0.0f, 0.0f};
    case Direction::Front:
        return {0.0f, 0.0f, 1.0f};
    case Direction::Back:
        return {0.0f, 0.0f, -1.0f};
    case Direction::Invalid:
        break;
    }
    Check(false, "false");
    return Vector3{};
}

} // namespace Corvid
