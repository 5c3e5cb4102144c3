#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "Corvid/Commands/FileRun.h"

namespace Corvid {

// What commands share that make one file of one other.

// In any case; `extension` in lower case, with its dot.
bool HasExtension(std::string_view path, std::string_view extension);

// Runs `work` and prints what it finds; the exit status. Standard input, and a destination that is the source, are
// usage errors.
int RunOnSingleFile(std::string_view command, const std::string& path, const std::string& output,
                    const DiagnosticOptions& diagnostics, const LookOptions& look, Console& console,
                    const std::function<void(const ListedFile&, FileOutcome&)>& work);

// All or nothing; what goes wrong stands in the outcome.
void DeliverSingleFile(const std::string& output, std::string_view bytes, FileOutcome& outcome);

} // namespace Corvid
