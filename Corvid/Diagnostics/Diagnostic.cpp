#include "Corvid/Diagnostics/Diagnostic.h"

#include <iterator>

namespace Corvid {

namespace {

struct CodeRow {
    std::string_view m_Word;
    Severity m_Severity;
};

// In the order of the enumeration.
constexpr CodeRow kCodes[] = {
    {"cannot-read", Severity::Error},
    {"cannot-write", Severity::Error},
    {"not-an-archive", Severity::Error},
    {"unknown-kind", Severity::Error},
    {"kind-differs", Severity::Warning},
    {"unknown-type", Severity::Error},
    {"no-layout", Severity::Error},
    {"missing-field", Severity::Error},
    {"unknown-label", Severity::Error},
    {"out-of-order", Severity::Error},
    {"bad-value", Severity::Error},
    {"bad-string", Severity::Error},
    {"too-long", Severity::Error},
    {"bad-text", Severity::Error},
    {"unknown-word", Severity::Error},
    {"bad-count", Severity::Error},
    {"input-ends", Severity::Error},
    {"unread-input", Severity::Error},
    {"not-in-text", Severity::Error},
    {"not-finite", Severity::Warning},
    {"index-range", Severity::Warning},
    {"degenerate-triangle", Severity::Warning},
    {"bounds", Severity::Warning},
    {"stale-lists", Severity::Warning},
    {"unattached", Severity::Warning},
    {"duplicate-name", Severity::Warning},
    {"empty-name", Severity::Warning},
    {"missing-reference", Severity::Warning},
    {"unproven", Severity::Error},
    {"bad-layout", Severity::Error},
    {"loss", Severity::Note},
    {"not-imported", Severity::Warning},
    {"refused", Severity::Error},
};
static_assert(std::size(kCodes) == static_cast<std::size_t>(DiagnosticCode::Refused) + 1);

} // namespace

std::string_view WordOf(DiagnosticCode code) {
    return kCodes[static_cast<std::size_t>(code)].m_Word;
}

std::string_view WordOf(Severity severity) {
    constexpr std::string_view kWords[] = {"note", "warning", "error"};
    return kWords[static_cast<std::size_t>(severity)];
}

Severity SeverityOf(DiagnosticCode code) {
    return kCodes[static_cast<std::size_t>(code)].m_Severity;
}

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

} // namespace Corvid
