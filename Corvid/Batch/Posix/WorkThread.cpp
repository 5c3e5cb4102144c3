#include "Corvid/Batch/WorkThread.h"

#ifdef __linux__
#include <pthread.h>
#include <sched.h>
#include <sys/prctl.h>
#endif

namespace Corvid {

// All of it is a wish.
void BecomeWorkThread() {
#ifdef __linux__
    // A table of descriptors for each thread.
    unshare(CLONE_FILES);
    // Open files are counted by the credentials, too; setting one, to what it is, makes them the thread's own.
    prctl(PR_SET_KEEPCAPS, prctl(PR_GET_KEEPCAPS, 0L, 0L, 0L, 0L), 0L, 0L, 0L);
    // No thread is ever cancelled. In this mode the C library does not get ready for it at each call.
    pthread_setcanceltype(PTHREAD_CANCEL_ASYNCHRONOUS, nullptr);
#endif
}

} // namespace Corvid
