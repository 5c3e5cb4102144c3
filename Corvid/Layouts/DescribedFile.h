#pragma once

#include <string>
#include <string_view>

#include "Corvid/Diagnostics/DiagnosticLog.h"
#include "Corvid/Layouts/DescribedEntity.h"
#include "Engine/Archive/FileArchiveSystem.h"

namespace Corvid {

// What is asked of a file whose layout is data, beyond what is asked of every file.

// Whether anything may be made of it: false where it touches a doubt that is not allowed, or that nothing helps
// against. What it touches, and that binary kinds are assumed, goes to the log.
bool CheckDoubts(const DescribedEntity& entity, const std::string& layoutPath, bool isFromBinary,
                 bool isUnprovenAllowed, DiagnosticLog& log);

// Whether the entity comes back: from a binary file its very bytes, and by way of the other encoding the same values,
// colours as text holds them. Empty, or what does not.
std::string ExplainNoReturn(const DescribedEntity& entity, std::string_view source, ArchiveFormat encoding);

} // namespace Corvid
