#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Engine/Archive/Archivable.h"
#include "Engine/Layout/RecordPlan.h"

namespace Corvid {

// A record whose fields a layout describes. It loads and saves like one that is compiled, from and to any archive, and
// keeps its values in archive order on a tape.
//
// Beyond what archives report, loading reports a word that the layout does not know, a negative count, and a count
// whose elements the layout does not know and that is not 0.
class DescribedRecord final : public Archivable {
public:
    explicit DescribedRecord(std::shared_ptr<const RecordPlan> plan);

    void Load(Archive& archive) override;
    using Archivable::Load;
    void Save(Archive& archive) const override;
    void ListFields(FieldListener& listener) const override;

    const RecordPlan& GetPlan() const { return *m_Plan; }

    // Values as they stand in a file. Only what the plan leads through tells what is what.
    struct Tape {
        std::vector<std::uint32_t>
            m_Words;            // numbers; of a list its count, of a When that nobody knows whether it is there
        std::u16string m_Units; // of strings and words, each ended by a zero
    };

private:
    void LoadDefaults();

    std::shared_ptr<const RecordPlan> m_Plan;
    Tape m_Tape;
};

} // namespace Corvid
