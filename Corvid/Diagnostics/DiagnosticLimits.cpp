#include "Corvid/Diagnostics/DiagnosticLimits.h"

#include <map>
#include <optional>
#include <utility>

namespace Corvid {

namespace {

constexpr std::uint64_t kMostOfAKind = 5;

// Takes diagnostics in turn and decides what is shown.
class Selection {
public:
    explicit Selection(const DiagnosticLimits& limits) : m_Limits(limits) {}

    void Add(const Diagnostic& diagnostic) {
        if (m_Limits.m_MostLines == 0 || !IsOneTooMany(diagnostic, 1))
            m_Shown.push_back({diagnostic});
    }

    // So many more of which only one is at hand.
    void AddLeftOut(const Diagnostic& diagnostic, std::uint64_t count) {
        if (m_Limits.m_MostLines == 0 || !IsOneTooMany(diagnostic, count))
            m_LeftOut += count;
    }

    std::vector<ShownDiagnostic> Finish() {
        if (m_Limits.m_MostLines != 0 && m_Shown.size() > m_Limits.m_MostLines) {
            const auto mostLines = static_cast<std::size_t>(m_Limits.m_MostLines);
            for (std::size_t i = mostLines; i < m_Shown.size(); ++i)
                m_LeftOut += m_Shown[i].m_More == 0 ? 1 : m_Shown[i].m_More;
            m_Shown.resize(mostLines);
        }
        if (m_LeftOut > 0)
            m_Shown.push_back({{}, m_LeftOut, true});
        return std::move(m_Shown);
    }

private:
    struct Group {
        std::uint64_t m_Count = 0;
        std::optional<std::size_t> m_MoreLine; // where the line stands that tells how many more
    };

    bool IsOneTooMany(const Diagnostic& diagnostic, std::uint64_t count) {
        std::string field = FieldOfAnyElement(diagnostic.m_Field);
        if (field.find('[') == std::string::npos)
            return false;
        Group& group = m_Groups[{diagnostic.m_Code, field}];
        if (group.m_Count < kMostOfAKind) {
            group.m_Count += count;
            return false;
        }
        if (!group.m_MoreLine) {
            group.m_MoreLine = m_Shown.size();
            Diagnostic more;
            more.m_Code = diagnostic.m_Code;
            more.m_Severity = diagnostic.m_Severity;
            more.m_Field = std::move(field);
            m_Shown.push_back({std::move(more)});
        }
        m_Shown[*group.m_MoreLine].m_More += count;
        return true;
    }

    const DiagnosticLimits& m_Limits;
    std::map<std::pair<DiagnosticCode, std::string>, Group> m_Groups;
    std::vector<ShownDiagnostic> m_Shown;
    std::uint64_t m_LeftOut = 0;
};

} // namespace

std::vector<ShownDiagnostic> SelectShown(const DiagnosticLog& log, const DiagnosticLimits& limits) {
    Selection selection(limits);
    for (const Diagnostic& diagnostic : log.GetAll()) {
        if (diagnostic.m_Severity >= limits.m_Least)
            selection.Add(diagnostic);
    }
    for (const auto& [key, leftOut] : log.GetLeftOut()) {
        if (leftOut.m_First.m_Severity >= limits.m_Least)
            selection.AddLeftOut(leftOut.m_First, leftOut.m_Count);
    }
    return selection.Finish();
}

} // namespace Corvid
