#pragma once

#include "Engine/Archive/ArchiveValues.h"

namespace Corvid {

// The name of an emitter that an affector acts on.
struct AttachedEmitterName {
    static constexpr int kStoredCapacity = 64; // UTF-16 units, terminator included

    FixedString<kStoredCapacity> m_Text;
};

// Files may hold longer names than the engine: they are read whole, then cut by the bounded copy.
inline void ReadValue(Archive& archive, Label label, AttachedEmitterName& value) {
    FixedString<256> name(value.m_Text.GetView());
    ReadValue(archive, label, name);
    value.m_Text = name.GetView();
}
inline void WriteValue(Archive& archive, Label label, const AttachedEmitterName& value) {
    WriteValue(archive, label, value.m_Text);
}

} // namespace Corvid
