#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "Corvid/Content/References.h"
#include "Corvid/Diagnostics/DiagnosticLog.h"

namespace Corvid {

// The names of all files below a folder, without their folders and without regard to case.
class ReferenceIndex {
public:
    // False when the folder, or one below it, cannot be read: GetError() is a line that says so. Links to folders
    // are not followed; what begins with a dot is left out.
    bool Read(const std::string& folder);
    const std::string& GetError() const { return m_Error; }

    void Add(std::u16string_view fileName);

    // A name without an extension is looked for with the usual ones of its kind; folders in it do not matter.
    bool Has(std::u16string_view name, AssetKind asset) const;

    std::size_t GetSize() const { return m_Names.size(); }

private:
    bool ReadFolder(const std::string& folder);

    std::unordered_set<std::u16string> m_Names;
    std::string m_Error;
};

// Adds a missing-reference for each name that the index does not have.
void CheckReferences(const KindObject& object, const ReferenceIndex& index, DiagnosticLog& log);

} // namespace Corvid
