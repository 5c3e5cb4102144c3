#include "Corvid/Batch/OwnDescriptors.h"

#ifdef __linux__
#include <sched.h>
#endif

namespace Corvid {

void TakeOwnDescriptors() {
#ifdef __linux__
    unshare(CLONE_FILES); // a wish
#endif
}

} // namespace Corvid
