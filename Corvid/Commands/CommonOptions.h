#pragma once

#include <optional>

#include "Corvid/Batch/Batch.h"
#include "Corvid/CommandLine/CommandDeclaration.h"
#include "Corvid/Diagnostics/DiagnosticRendering.h"
#include "Corvid/Files/FileList.h"
#include "Corvid/Terminal/Console.h"
#include "Kinds/Kind.h"

namespace Corvid {

// Options that several commands share, each group declared once.

struct LookOptions {
    Look m_Color = Look::Auto;
    Look m_Progress = Look::Auto;
    bool m_IsQuiet = false;
};

struct DiagnosticOptions {
    DiagnosticFormat m_Format = DiagnosticFormat::Text;
    std::uint64_t m_MostLines = DiagnosticLimits::kDefaultLines;
};

struct BatchOptions {
    FileSelection m_Files;
    int m_Jobs = DefaultJobs();
};

void DeclareFiles(CommandDeclaration& declaration, FileSelection& files); // PATH..., --files-from, -0, --shard
void DeclareJobs(CommandDeclaration& declaration, int& jobs);
void DeclareKind(CommandDeclaration& declaration, std::optional<Kind>& kind); // --type
void DeclareDiagnostics(CommandDeclaration& declaration, DiagnosticOptions& options);
void DeclareMostLines(CommandDeclaration& declaration, std::uint64_t& mostLines); // --max-errors
void DeclareLook(CommandDeclaration& declaration, LookOptions& options);
void DeclareColor(CommandDeclaration& declaration, Look& color);
void DeclareProgress(CommandDeclaration& declaration, Look& progress);

} // namespace Corvid
