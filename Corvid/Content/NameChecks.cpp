#include "Corvid/Content/NameChecks.h"

#include "Engine/String/Unicode.h"

namespace Corvid {

void NameChecks::Add(std::string field, std::u16string_view name) {
    if (name.empty()) {
        m_Log.Add(DiagnosticCode::EmptyName, {}, std::move(field), "the name is empty");
        return;
    }
    const auto [first, isNew] = m_Fields.emplace(name, field);
    if (!isNew)
        m_Log.Add(DiagnosticCode::DuplicateName, {}, std::move(field),
                  "'" + ToUtf8(name) + "' is the name at " + first->second + ", too");
}

} // namespace Corvid
