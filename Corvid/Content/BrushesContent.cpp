#include "Corvid/Content/BrushesContent.h"

#include "Corvid/Content/NameChecks.h"
#include "Corvid/Values/ValuePaths.h"

namespace Corvid {

void CheckBrushesContent(const ValueTree& values, DiagnosticLog& log) {
    NameChecks brushes(log);
    for (ValuePaths paths(values); !paths.IsAtEnd(); paths.Next()) {
        if (values.GetLabel(paths.GetNode()) == "name" && paths.GetNode().m_Kind == ValueKind::String)
            brushes.Add(paths.GetPath(), values.GetString(paths.GetNode()));
    }
}

} // namespace Corvid
