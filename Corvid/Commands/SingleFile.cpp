#include "Corvid/Commands/SingleFile.h"

#include <algorithm>

#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/PrintedPath.h"

namespace Corvid {

bool HasExtension(std::string_view path, std::string_view extension) {
    const auto lower = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    };
    // An extension alone is a name without one.
    return path.size() > extension.size() && !IsPathSeparator(path[path.size() - extension.size() - 1]) &&
           std::equal(extension.begin(), extension.end(), path.end() - static_cast<std::ptrdiff_t>(extension.size()),
                      [&](char a, char b) { return a == lower(b); });
}

int RunOnSingleFile(std::string_view command, const std::string& path, const std::string& output,
                    const DiagnosticOptions& diagnostics, const LookOptions& look, Console& console,
                    const std::function<void(const ListedFile&, FileOutcome&)>& work) {
    if (path == kStandardInputPath)
        return console.PrintUsageError(command, "standard input has no place here; name a file");
    FileList list;
    ListedFile& file = list.m_Files.emplace_back();
    file.m_Path = path;
    const std::optional<FileStatus> source = GetFileStatus(path);
    const std::optional<FileStatus> destination = GetFileStatus(output);
    if (source && destination && source->m_Identity == destination->m_Identity)
        return console.PrintUsageError(command, "OUT is the file that is read");
    if (source)
        file.m_Size = source->m_Size;

    DiagnosticPrinting printing;
    printing.m_Style = {diagnostics.m_Format, console.HasColor(look.m_Color, true)};
    printing.m_Limits.m_MostLines = diagnostics.m_MostLines;
    if (look.m_IsQuiet)
        printing.m_Limits.m_Least = Severity::Error;
    return RunOverFiles(
               list, 1, look, printing, console,
               [&](const ListedFile& each) {
                   FileOutcome outcome;
                   work(each, outcome);
                   return outcome;
               },
               [](const ListedFile&, const FileOutcome&) {})
        .m_Status;
}

void DeliverSingleFile(const std::string& output, std::string_view bytes, FileOutcome& outcome) {
    const std::string error = WriteFileBytes(output, bytes, false);
    if (!error.empty())
        AddFailure(outcome, DiagnosticCode::CannotWrite, PrintedPath(output) + ": " + error);
}

} // namespace Corvid
