#include "Corvid/Batch/OwnDescriptors.h"

namespace Corvid {

// Handles are the process's.
void TakeOwnDescriptors() {}

} // namespace Corvid
