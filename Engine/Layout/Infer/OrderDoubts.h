#pragma once

#include "Engine/Layout/Infer/RecordDraft.h"

namespace Corvid {

// Where nothing shows which of two fields comes first, a file that has both cannot be trusted: puts their conditions in
// doubt, unless these exclude each other.
void MarkUnordered(RecordDraft& record);

} // namespace Corvid
