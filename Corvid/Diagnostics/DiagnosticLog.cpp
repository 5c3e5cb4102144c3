#include "Corvid/Diagnostics/DiagnosticLog.h"

#include <algorithm>

namespace Corvid {

bool DiagnosticLog::HasErrors() const {
    return std::any_of(m_Diagnostics.begin(), m_Diagnostics.end(),
                       [](const Diagnostic& diagnostic) { return diagnostic.m_Severity == Severity::Error; });
}

void DiagnosticLog::DemoteErrors() {
    for (Diagnostic& diagnostic : m_Diagnostics) {
        if (diagnostic.m_Severity == Severity::Error)
            diagnostic.m_Severity = Severity::Warning;
    }
}

} // namespace Corvid
