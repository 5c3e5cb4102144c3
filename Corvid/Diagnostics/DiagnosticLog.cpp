#include "Corvid/Diagnostics/DiagnosticLog.h"

#include <algorithm>
#include <tuple>

namespace Corvid {

namespace {

constexpr std::size_t kMostGroups = 1000; // of codes and fields; what is beyond them counts for the first

} // namespace

void DiagnosticLog::LeaveOut(Diagnostic diagnostic, std::uint64_t count) {
    CodeAndField key(diagnostic.m_Code, FieldOfAnyElement(diagnostic.m_Field));
    auto group = m_LeftOut.find(key);
    if (group == m_LeftOut.end())
        group = m_LeftOut.size() < kMostGroups ? m_LeftOut.try_emplace(std::move(key)).first : m_LeftOut.begin();
    if (group->second.m_Count == 0)
        group->second.m_First = std::move(diagnostic);
    group->second.m_Count += count;
}

void DiagnosticLog::Append(DiagnosticLog other) {
    for (Diagnostic& diagnostic : other.m_Diagnostics)
        Add(std::move(diagnostic));
    for (auto& [key, leftOut] : other.m_LeftOut)
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
    for (auto& [key, leftOut] : m_LeftOut)
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
                       [&](const auto& group) { return group.second.m_First.m_Severity == severity; });
}

} // namespace Corvid
