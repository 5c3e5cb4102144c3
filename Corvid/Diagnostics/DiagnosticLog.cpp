#include "Corvid/Diagnostics/DiagnosticLog.h"

#include <algorithm>
#include <tuple>

namespace Corvid {

namespace {

constexpr std::size_t kMostLeftOut = 1000; // codes and fields

} // namespace

void DiagnosticLog::LeaveOut(Diagnostic diagnostic, std::uint64_t count) {
    const std::string field = FieldOfAnyElement(diagnostic.m_Field);
    const auto same = std::find_if(m_LeftOut.begin(), m_LeftOut.end(), [&](const LeftOut& other) {
        return other.m_First.m_Code == diagnostic.m_Code && FieldOfAnyElement(other.m_First.m_Field) == field;
    });
    if (same != m_LeftOut.end())
        same->m_Count += count;
    else if (m_LeftOut.size() < kMostLeftOut)
        m_LeftOut.push_back({std::move(diagnostic), count});
    else
        m_LeftOut.back().m_Count += count;
}

void DiagnosticLog::Append(DiagnosticLog other) {
    for (Diagnostic& diagnostic : other.m_Diagnostics)
        Add(std::move(diagnostic));
    for (LeftOut& leftOut : other.m_LeftOut)
        LeaveOut(std::move(leftOut.m_First), leftOut.m_Count);
}

void DiagnosticLog::SortByPlace() {
    std::stable_sort(m_Diagnostics.begin(), m_Diagnostics.end(), [](const Diagnostic& a, const Diagnostic& b) {
        const auto key = [](const DiagnosticPlace& place) {
            return std::tuple(place.m_Line, place.m_Column, place.m_Offset);
        };
        return key(a.m_Place) < key(b.m_Place);
    });
}

template <class Change> void DiagnosticLog::ForEach(Change change) {
    std::for_each(m_Diagnostics.begin(), m_Diagnostics.end(), change);
    for (LeftOut& leftOut : m_LeftOut)
        change(leftOut.m_First);
}

void DiagnosticLog::DemoteErrors() {
    ForEach([](Diagnostic& diagnostic) {
        if (diagnostic.m_Severity == Severity::Error)
            diagnostic.m_Severity = Severity::Warning;
    });
}

void DiagnosticLog::PromoteWarnings() {
    ForEach([](Diagnostic& diagnostic) {
        if (diagnostic.m_Severity == Severity::Warning && !diagnostic.m_StaysWarning)
            diagnostic.m_Severity = Severity::Error;
    });
}

bool DiagnosticLog::Has(Severity severity) const {
    return std::any_of(m_Diagnostics.begin(), m_Diagnostics.end(),
                       [&](const Diagnostic& diagnostic) { return diagnostic.m_Severity == severity; }) ||
           std::any_of(m_LeftOut.begin(), m_LeftOut.end(),
                       [&](const LeftOut& leftOut) { return leftOut.m_First.m_Severity == severity; });
}

} // namespace Corvid
