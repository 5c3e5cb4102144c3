#include "Corvid/Batch/Interrupt.h"

#include <atomic>
#include <cstdlib>

#include "Engine/File/Windows/WindowsApi.h"

namespace Corvid {

namespace {

constexpr int kInterruptedStatus = 130;

std::atomic<bool> g_IsInterrupted = false;

BOOL WINAPI NoteInterrupt(DWORD) {
    return g_IsInterrupted.exchange(true) ? FALSE : TRUE; // the second time, the system ends the process
}

} // namespace

void CatchInterrupts() {
    SetConsoleCtrlHandler(NoteInterrupt, TRUE);
}

bool IsInterrupted() {
    return g_IsInterrupted;
}

void EndByInterrupt() {
    std::_Exit(kInterruptedStatus);
}

} // namespace Corvid
