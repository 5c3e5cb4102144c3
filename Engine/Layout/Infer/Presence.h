#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "Engine/Layout/Infer/RecordDraft.h"

namespace Corvid {

// In which instances of a record a field is there, or a condition holds.
using Presence = std::vector<bool>;

Presence PresenceOf(const DraftField& field);

// Leaves of `instances` of the record those in which the condition holds. Of a value that is not there a bool counts as
// false, a word as none of any.
void Restrict(Presence& instances, const RecordDraft& record, const DraftCondition& condition,
              std::span<const SampleTree* const> trees);

// Whether the condition holds in one instance of the record.
bool Holds(const DraftCondition& condition, const RecordDraft& record, std::uint32_t instance,
           std::span<const SampleTree* const> trees);

// A value as it stands behind its label, in an instance of the record that has the field.
std::string_view ValueOf(const DraftField& field, const RecordDraft& record, std::uint32_t instance,
                         std::span<const SampleTree* const> trees);

} // namespace Corvid
