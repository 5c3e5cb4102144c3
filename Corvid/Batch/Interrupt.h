#pragma once

namespace Corvid {

// Being asked to stop: SIGINT, SIGTERM, Ctrl-C. The first time only raises a flag, so that work in hand is finished and
// nothing new begun; a second time ends the process at once.
void CatchInterrupts();
bool IsInterrupted();

// Ends the process as the signal would have done (on Windows with status 130).
[[noreturn]] void EndByInterrupt();

} // namespace Corvid
