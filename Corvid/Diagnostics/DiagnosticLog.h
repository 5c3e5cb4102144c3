#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Corvid/Diagnostics/Diagnostic.h"

namespace Corvid {

// What is found about one file, in the order in which it is found.
class DiagnosticLog {
public:
    void Add(Diagnostic diagnostic) { m_Diagnostics.push_back(std::move(diagnostic)); }
    void Add(DiagnosticCode code, DiagnosticPlace place, std::string field, std::string message) {
        Add({code, SeverityOf(code), place, std::move(field), std::move(message)});
    }

    const std::vector<Diagnostic>& GetAll() const { return m_Diagnostics; }
    bool IsEmpty() const { return m_Diagnostics.empty(); }
    bool HasErrors() const;

    // Errors that may be overlooked when loss is allowed become warnings.
    void DemoteErrors();

private:
    std::vector<Diagnostic> m_Diagnostics;
};

} // namespace Corvid
