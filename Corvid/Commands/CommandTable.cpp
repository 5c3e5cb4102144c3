#include "Corvid/Commands/CommandTable.h"

#include "Corvid/Commands/Cat.h"
#include "Corvid/Commands/Check.h"
#include "Corvid/Commands/Convert.h"
#include "Corvid/Commands/Diff.h"
#include "Corvid/Commands/Export.h"
#include "Corvid/Commands/Import.h"
#include "Corvid/Commands/Info.h"
#include "Corvid/Commands/LayoutCheck.h"
#include "Corvid/Commands/LayoutInfer.h"
#include "Corvid/Commands/LayoutShow.h"
#include "Corvid/Commands/View.h"

namespace Corvid {

namespace {

// A new command is a pair of files beside this one and a row.
constexpr CommandRow kCommands[] = {
    RowFor<ConvertOptions>("convert"),
    RowFor<CheckOptions>("check"),
    RowFor<CatOptions>("cat"),
    RowFor<DiffOptions>("diff"),
    RowFor<InfoOptions>("info"),
    RowFor<LayoutInferOptions>("layout infer"),
    RowFor<LayoutCheckOptions>("layout check"),
    RowFor<LayoutShowOptions>("layout show"),
    RowFor<ExportOptions>("export"),
    RowFor<ImportOptions>("import"),
    RowFor<ViewOptions>("view"),
};

} // namespace

std::span<const CommandRow> GetCommands() {
    return kCommands;
}

} // namespace Corvid
