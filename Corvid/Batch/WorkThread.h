#pragma once

namespace Corvid {

// Frees the calling thread, where the system can do that, of what threads that open and close thousands of small files
// would wait for each other at. What it opens from here on is its own, and it has to close that itself.
void BecomeWorkThread();

} // namespace Corvid
