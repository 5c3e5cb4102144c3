#pragma once

#include <cstdint>
#include <string_view>

#include "Engine/Archive/ArchiveValues.h"

namespace Corvid {

// The name of a definition, by which others refer to it. Archived as one string under the label of its owner.
class EntityDefName final : public SingleLineArchivable {
public:
    static constexpr int kCapacity = 80; // UTF-16 units, terminator included

    EntityDefName() = default;
    explicit EntityDefName(std::u16string_view name) : m_Name(name) {} // cut, and reported, when it does not fit

    void Load(Archive& archive, Label label) override;
    void Save(Archive& archive, Label label) const override;

    const char16_t* GetText() const { return m_Name.GetText(); }
    std::int32_t GetIndex() const { return m_Index; } // where the name was resolved, -1 until then

private:
    FixedString<kCapacity> m_Name;
    std::int32_t m_Index = -1;
};

} // namespace Corvid
