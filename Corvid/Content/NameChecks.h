#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "Corvid/Diagnostics/DiagnosticLog.h"

namespace Corvid {

// Warns of names that are empty, or that an earlier element of the list has.
class NameChecks {
public:
    explicit NameChecks(DiagnosticLog& log) : m_Log(log) {}

    void Add(std::string field, std::u16string_view name);
    bool Has(std::u16string_view name) const { return m_Fields.contains(std::u16string(name)); }

private:
    DiagnosticLog& m_Log;
    std::unordered_map<std::u16string, std::string> m_Fields; // by name, of the first that has it
};

} // namespace Corvid
