#pragma once

#include <cstddef>

namespace Corvid {

// Once, at the start of a process: a standard stream that was closed by the caller is opened on the null device, so
// that no file opened later takes its number, and so that reading closed input fails; signals for broken pipes and size
// limits become failed writes; on Windows, standard output is binary and a console shows UTF-8.
void PrepareStandardStreams();

// Writes UTF-8 bytes to standard output, unbuffered. False when they could not all be written. On a Windows console a
// character shows only when one call carries it whole.
bool WriteStandardOutput(const char* bytes, std::size_t count);

} // namespace Corvid
