#pragma once

#include "Engine/Archive/ArchiveValues.h"

namespace Corvid {

// A reference to a brush by name, on one line under the label of its owner.
class BrushRef : public SingleLineArchivable {
public:
    void Load(Archive& archive, Label label) override;
    void Save(Archive& archive, Label label) const override;

    const char16_t* GetName() const { return m_Name.GetText(); }

private:
    FixedString<100> m_Name;
};

// To a brush of a set that is loaded when it is first needed. In a file it looks the same.
class LoadOnDemandBrushRef final : public BrushRef {};

} // namespace Corvid
