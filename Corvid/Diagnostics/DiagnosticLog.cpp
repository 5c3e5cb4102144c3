#include "Corvid/Diagnostics/DiagnosticLog.h"

#include <algorithm>
#include <tuple>

namespace Corvid {

bool DiagnosticLog::HasErrors() const {
    return std::any_of(m_Diagnostics.begin(), m_Diagnostics.end(),
                       [](const Diagnostic& diagnostic) { return diagnostic.m_Severity == Severity::Error; });
}

void DiagnosticLog::Append(DiagnosticLog other) {
    for (Diagnostic& diagnostic : other.m_Diagnostics)
        Add(std::move(diagnostic));
    m_LeftOutCount += other.m_LeftOutCount;
}

void DiagnosticLog::SortByPlace() {
    std::stable_sort(m_Diagnostics.begin(), m_Diagnostics.end(), [](const Diagnostic& a, const Diagnostic& b) {
        const auto key = [](const DiagnosticPlace& place) {
            return std::tuple(place.m_Line, place.m_Column, place.m_Offset);
        };
        return key(a.m_Place) < key(b.m_Place);
    });
}

void DiagnosticLog::DemoteErrors() {
    for (Diagnostic& diagnostic : m_Diagnostics) {
        if (diagnostic.m_Severity == Severity::Error)
            diagnostic.m_Severity = Severity::Warning;
    }
}

void DiagnosticLog::PromoteWarnings() {
    for (Diagnostic& diagnostic : m_Diagnostics) {
        if (diagnostic.m_Severity == Severity::Warning && !diagnostic.m_StaysWarning)
            diagnostic.m_Severity = Severity::Error;
    }
}

bool DiagnosticLog::Has(Severity severity) const {
    return std::any_of(m_Diagnostics.begin(), m_Diagnostics.end(),
                       [&](const Diagnostic& diagnostic) { return diagnostic.m_Severity == severity; });
}

} // namespace Corvid
