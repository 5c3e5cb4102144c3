#pragma once

#include <memory>
#include <string>

#include "Engine/Layout/DescribedRecord.h"
#include "Engine/Layout/LayoutLibrary.h"
#include "Engine/String/FixedString.h"
#include "Kinds/KindObject.h"

namespace Corvid {

// An entity whose fields a layout file describes: the type word, then the record.
class DescribedEntity final : public KindObject {
public:
    explicit DescribedEntity(std::shared_ptr<const RecordPlan> plan)
        : KindObject(Kind::Entity), m_Plan(plan), m_Record(std::move(plan)) {}

    void Load(Archive& archive) override;
    void Save(Archive& archive) const override;
    void ListFields(FieldListener& listener) const override;

    const std::shared_ptr<const RecordPlan>& GetPlan() const { return m_Plan; }
    const Layout& GetLayout() const { return m_Plan->GetLayout(); } // without the type word

private:
    std::shared_ptr<const RecordPlan> m_Plan;
    FixedString<kWordCapacity> m_TypeWord;
    DescribedRecord m_Record;
};

// The layout of the whole file: the type word in front of the described fields, which keep their doubts and places.
// Strings have the capacity that they are loaded with.
Layout WithTypeWord(const Layout& layout);

} // namespace Corvid
