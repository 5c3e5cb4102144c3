#include "Corvid/Batch/WorkThread.h"

namespace Corvid {

// Handles are the process's.
void BecomeWorkThread() {}

} // namespace Corvid
