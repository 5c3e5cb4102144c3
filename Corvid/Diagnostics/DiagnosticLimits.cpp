#include "Corvid/Diagnostics/DiagnosticLimits.h"

#include <map>
#include <utility>

namespace Corvid {

namespace {

constexpr std::uint64_t kMostOfAKind = 5;

// The path of the field without its indices, in brackets that stay: "MeshData.Triangle[].iMaterial".
std::string FieldOfAnyElement(const std::string& field) {
    std::string any;
    bool isInIndex = false;
    for (const char unit : field) {
        isInIndex = isInIndex && unit != ']';
        if (!isInIndex)
            any.push_back(unit);
        isInIndex = isInIndex || unit == '[';
    }
    return any;
}

struct Group {
    std::uint64_t m_Count = 0;
    std::size_t m_MoreLine = 0; // where the line stands that tells how many more
};

} // namespace

std::vector<ShownDiagnostic> SelectShown(const DiagnosticLog& log, const DiagnosticLimits& limits) {
    std::map<std::pair<DiagnosticCode, std::string>, Group> groups;
    std::vector<ShownDiagnostic> shown;
    std::uint64_t leftOut = 0;
    for (const Diagnostic& diagnostic : log.GetAll()) {
        if (diagnostic.m_Severity < limits.m_Least)
            continue;
        if (limits.m_MostLines == 0) {
            shown.push_back({diagnostic});
            continue;
        }
        std::string field = FieldOfAnyElement(diagnostic.m_Field);
        const bool isOfElement = field.find('[') != std::string::npos;
        Group& group = groups[{diagnostic.m_Code, field}];
        if (isOfElement && ++group.m_Count > kMostOfAKind) {
            if (group.m_Count == kMostOfAKind + 1) {
                group.m_MoreLine = shown.size();
                Diagnostic more;
                more.m_Code = diagnostic.m_Code;
                more.m_Severity = diagnostic.m_Severity;
                more.m_Field = std::move(field);
                shown.push_back({std::move(more)});
            }
            ++shown[group.m_MoreLine].m_More;
            continue;
        }
        shown.push_back({diagnostic});
    }
    if (limits.m_MostLines != 0 && shown.size() > limits.m_MostLines) {
        for (std::size_t i = limits.m_MostLines; i < shown.size(); ++i)
            leftOut += shown[i].m_More == 0 ? 1 : shown[i].m_More;
        shown.resize(limits.m_MostLines);
        shown.push_back({{}, leftOut, true});
    }
    return shown;
}

} // namespace Corvid
