#pragma once

namespace Corvid {

// What the calling thread opens from here on is its own, where the system can do that: threads that open and close
// thousands of small files wait for each other at a common table. What it opens, it has to close.
void TakeOwnDescriptors();

} // namespace Corvid
