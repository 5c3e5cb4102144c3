#include "Corvid/Content/ContentChecks.h"

namespace Corvid {

void CheckContent(const KindObject&, DiagnosticLog&) {}

} // namespace Corvid
