#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Corvid/Diagnostics/Diagnostic.h"

namespace Corvid {

// What is found about one file, in the order in which it is found.
class DiagnosticLog {
public:
    // A file that is wrong from end to end is told of in part: only so many are kept, and of the others one of each
    // code at each field, whatever the element, with how many there are.
    static constexpr std::size_t kMostKept = 1'000'000;
    struct LeftOut {
        Diagnostic m_First;
        std::uint64_t m_Count = 0;
    };

    explicit DiagnosticLog(std::size_t mostKept = kMostKept) : m_MostKept(mostKept) {}

    void Add(Diagnostic diagnostic) {
        if (m_Diagnostics.size() < m_MostKept)
            m_Diagnostics.push_back(std::move(diagnostic));
        else
            LeaveOut(std::move(diagnostic));
    }
    void Add(DiagnosticCode code, DiagnosticPlace place, std::string field, std::string message) {
        Add({code, SeverityOf(code), place, std::move(field), std::move(message)});
    }

    const std::vector<Diagnostic>& GetAll() const { return m_Diagnostics; }
    bool IsEmpty() const { return m_Diagnostics.empty(); }
    bool HasErrors() const { return Has(Severity::Error); }

    using CodeAndField = std::pair<DiagnosticCode, std::string>; // the field without its indices
    const std::map<CodeAndField, LeftOut>& GetLeftOut() const { return m_LeftOut; }

    void Append(DiagnosticLog other);

    // By line and column, or offset; what has no place comes first. Those of one place stay in order.
    void SortByPlace();

    // Errors that may be overlooked when loss is allowed become warnings.
    void DemoteErrors();
    // Where nothing is to be overlooked, warnings become errors.
    void PromoteWarnings();

    bool Has(Severity severity) const;

private:
    void LeaveOut(Diagnostic diagnostic, std::uint64_t count = 1);
    template <class Change> void ForEach(Change change);

    std::size_t m_MostKept;
    std::vector<Diagnostic> m_Diagnostics;
    std::map<CodeAndField, LeftOut> m_LeftOut;
};

} // namespace Corvid
