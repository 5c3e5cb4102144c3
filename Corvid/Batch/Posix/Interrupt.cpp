#include "Corvid/Batch/Interrupt.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>

namespace Corvid {

namespace {

std::atomic<int> g_Signal = 0; // whichever thread it comes to
static_assert(std::atomic<int>::is_always_lock_free);

void NoteSignal(int signal) {
    g_Signal = signal;
}

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

} // namespace

void CatchInterrupts() {
    for (const int signal : kSignals) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN)
            continue; // whoever started the program wants it so
        action = {};
        action.sa_handler = NoteSignal;
        action.sa_flags = static_cast<int>(SA_RESETHAND); // no restart: a read that waits ends
        sigaction(signal, &action, nullptr);
    }
}

bool IsInterrupted() {
    return g_Signal != 0;
}

void EndByInterrupt() {
    std::signal(g_Signal, SIG_DFL);
    std::raise(g_Signal);
    _exit(128 + g_Signal);
}

} // namespace Corvid
