#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "Corvid/Diagnostics/Diagnostic.h"

namespace Corvid {

// What is found about one file, in the order in which it is found.
class DiagnosticLog {
public:
    void Add(Diagnostic diagnostic) {
        if (m_Diagnostics.size() < kMostKept)
            m_Diagnostics.push_back(std::move(diagnostic));
        else
            ++m_LeftOutCount;
    }
    void Add(DiagnosticCode code, DiagnosticPlace place, std::string field, std::string message) {
        Add({code, SeverityOf(code), place, std::move(field), std::move(message)});
    }

    const std::vector<Diagnostic>& GetAll() const { return m_Diagnostics; }
    bool IsEmpty() const { return m_Diagnostics.empty(); }
    bool HasErrors() const;

    // A file that is wrong from end to end is told of in part: only so many are kept, and the others counted.
    static constexpr std::size_t kMostKept = 200'000;
    std::uint64_t GetLeftOutCount() const { return m_LeftOutCount; }

    void Append(DiagnosticLog other);

    // By line and column, or offset; what has no place comes first. Those of one place stay in order.
    void SortByPlace();

    // Errors that may be overlooked when loss is allowed become warnings.
    void DemoteErrors();
    // Where nothing is to be overlooked, warnings become errors.
    void PromoteWarnings();

    bool Has(Severity severity) const;

private:
    std::vector<Diagnostic> m_Diagnostics;
    std::uint64_t m_LeftOutCount = 0;
};

} // namespace Corvid
