#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "Engine/Layout/Infer/RecordDraft.h"

namespace Corvid {

// An earlier value that a condition can stand on, a bool or a word, seen from the instances of one record. It is of
// that record or of one around it.
struct Decider {
    static constexpr std::int32_t kAbsent = -1;

    RecordDraft* m_Record;
    std::uint32_t m_Field;
    bool m_IsBool;
    std::vector<std::int32_t> m_Values;  // by instance: 0 and 1, or the index of the word; kAbsent
    std::vector<std::uint32_t> m_Owners; // by instance: the instance of m_Record that the value stands in

    const DraftField& GetField() const { return m_Record->m_Fields[m_Field]; }
    std::size_t CountPossibleValues() const { return m_IsBool ? 2 : GetField().m_Words.size(); }
};

// All that the fields of the record may depend on.
std::vector<Decider> FindDeciders(RecordDraft& record, std::span<const SampleTree* const> trees);

// Of `deciders`, which are those of the record, the ones that a condition on one of its fields can name: a label means
// the nearest earlier value that has it. The nearest stand first.
std::vector<const Decider*> VisibleTo(const RecordDraft& record, std::uint32_t field,
                                      const std::vector<Decider>& deciders);

} // namespace Corvid
