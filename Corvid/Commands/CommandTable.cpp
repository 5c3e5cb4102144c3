#include "Corvid/Commands/CommandTable.h"

#include "Corvid/Commands/Check.h"

namespace Corvid {

namespace {

// A new command is a pair of files beside this one and a row.
constexpr CommandRow kCommands[] = {
    RowFor<CheckOptions>("check"),
};

} // namespace

std::span<const CommandRow> GetCommands() {
    return kCommands;
}

} // namespace Corvid
