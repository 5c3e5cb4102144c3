#include "Corvid/Commands/View.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <map>
#include <mutex>
#include <new>
#include <utility>

#include "Corvid/Commands/FileRun.h"
#include "Corvid/Content/ContentChecks.h"
#include "Corvid/Files/FailureLine.h"
#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/View/PageWriter.h"

namespace Corvid {

namespace {

// Entries on their way from the threads that make them to the page, which takes them in order.
class ReadyEntries {
public:
    void Put(const ListedFile& file, ViewEntry entry) {
        const std::scoped_lock lock(m_Mutex);
        m_Entries.insert_or_assign(&file, std::move(entry));
    }

    ViewEntry Take(const ListedFile& file) {
        const std::scoped_lock lock(m_Mutex);
        const auto node = m_Entries.extract(&file);
        return node.empty() ? ViewEntry() : std::move(node.mapped());
    }

private:
    std::mutex m_Mutex;
    std::map<const ListedFile*, ViewEntry> m_Entries;
};

FileOutcome MakeListedEntry(const ListedFile& file, const ViewOptions& options, ReadyEntries& entries) {
    FileOutcome outcome;
    LoadOptions load;
    load.m_Kind = options.m_Kind;
    options.m_Layouts.ApplyTo(load);
    std::optional<LoadedFile> loaded = LoadListedFile(file, load, outcome);
    if (!loaded)
        return outcome;
    DiagnosticLog shown = outcome.m_Log; // the page tells of the content as well, as `check` does
    if (loaded->GetBest() != nullptr)
        CheckContent(*loaded->GetBest(), shown);
    std::string modelError;
    entries.Put(file, MakeViewEntry(file.m_Path, *loaded, shown, modelError));
    if (!modelError.empty())
        AddFailure(outcome, DiagnosticCode::CannotWrite, "no model of the mesh: " + modelError);
    return outcome;
}

// Whether the page would take the place of a file that it shows.
const ListedFile* FindShownFile(const FileList& list, const std::string& page) {
    const std::optional<FileStatus> status = GetFileStatus(page);
    if (!status || status->m_Type != FileType::File)
        return nullptr;
    for (const ListedFile& file : list.m_Files) {
        const std::optional<FileStatus> other = GetFileStatus(file.m_Path);
        if (other && other->m_Identity == status->m_Identity)
            return &file;
    }
    return nullptr;
}

std::string SizeText(std::uint64_t bytes) {
    if (bytes < 1024)
        return CountOf(bytes, "byte");
    const bool isLarge = bytes >= 1024 * 1024;
    const std::uint64_t tenths = bytes * 10 / (isLarge ? 1024 * 1024 : 1024);
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + (isLarge ? " MB" : " KB");
}

int RefuseToWrite(Console& console, const std::string& message) {
    console.PrintError("corvid view: " + message + "; nothing was written\n");
    return kExitCouldNotRun;
}

bool DeliverPage(const std::string& path, const std::string& page, Console& console) {
    if (path == "-") {
        console.Print(page);
        return true;
    }
    const std::string error = WriteFileBytes(path, page, false);
    if (!error.empty())
        console.PrintError(FailureLine(path, DiagnosticCode::CannotWrite, error));
    return error.empty();
}

} // namespace

std::optional<std::uint64_t> SizeFromText(const std::string& text) {
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    const std::string_view unit(rest, end);
    const int shift = unit == "K" || unit == "k" ? 10 : unit == "M" || unit == "m" ? 20 : 0;
    if (error != std::errc() || (shift == 0 && !unit.empty()) || number == 0 ||
        number > std::numeric_limits<std::uint64_t>::max() >> shift)
        return std::nullopt;
    return number << shift;
}

void DeclareCommand(CommandDeclaration& declaration, ViewOptions& options) {
    declaration.Describe("Writes one HTML page on which meshes turn in 3D, brushes are drawn to scale, and effects and "
                         "definitions are tables.",
                         "[OPTION]... PATH... -o PAGE.html");
    declaration.Explain(
        "The page stands for itself: it needs no network and no other file, and opens in a browser by a "
        "double click. It tells what is wrong with the files, and shows what could be read of them.");
    DeclareFiles(declaration, options.m_Batch.m_Files);
    declaration.Text("-o,--output", "PAGE.html", options.m_Page, "the page; '-' is standard output", ValueRole::File);
    declaration.Require();
    declaration.Take(
        "--max-size", "BYTES",
        [&options](const std::string& text) {
            const std::optional<std::uint64_t> size = SizeFromText(text);
            options.m_MaxSize = size.value_or(options.m_MaxSize);
            return size ? std::string()
                        : "'" + text + "' is no size: a number of bytes, or one with K or M, such as 50M";
        },
        "write no page that is larger (default: 200M; K and M are 1,024 and its square)");
    DeclareKind(declaration, options.m_Kind);
    DeclareLayouts(declaration, options.m_Layouts);
    DeclareJobs(declaration, options.m_Batch.m_Jobs);
    DeclareDiagnostics(declaration, options.m_Diagnostics);
    DeclareLook(declaration, options.m_Look);
    declaration.Example("corvid view Examples -o examples.html", "a page of all files below the folder");
    declaration.Example("corvid view Examples/Mesh --max-size 20M -o meshes.html", "or none, if it would be larger");
}

int RunCommand(const ViewOptions& options, Console& console) {
    const auto& paths = options.m_Batch.m_Files.m_Paths;
    if (std::ranges::find(paths, kStandardInputPath) != paths.end())
        return console.PrintUsageError("view", "standard input ('-') cannot be viewed; write it to a file first");
    const PageAssets* const assets = GetPageAssets();
    if (assets == nullptr)
        return RefuseToWrite(console, "this program was built without three.js, which draws the models; install it "
                                      "(Debian: apt-get install libjs-three) and build again");
    const FileList list = FindFiles(options.m_Batch.m_Files, {}, options.m_Batch.m_Jobs);
    if (const int status = CheckFileList(list, "view", console); status != kExitDone)
        return status;
    if (options.m_Page.empty())
        return console.PrintUsageError("view", "the destination is empty");
    if (const ListedFile* file = FindShownFile(list, options.m_Page))
        return console.PrintUsageError("view", "the page would take the place of '" + PrintedPath(file->m_Path) +
                                                   "', which it shows; give another name to -o");
    DiagnosticPrinting printing;
    printing.m_Style = {options.m_Diagnostics.m_Format, console.HasColor(options.m_Look.m_Color, true)};
    printing.m_Limits.m_MostLines = options.m_Diagnostics.m_MostLines;
    if (options.m_Look.m_IsQuiet)
        printing.m_Limits.m_Least = Severity::Error;

    std::string page;
    bool isMemoryShort = false;
    PageWriter writer(*assets, options.m_MaxSize, [&](std::string_view bytes) {
        try {
            page += bytes;
        } catch (const std::bad_alloc&) {
            isMemoryShort = true;
        }
        return !isMemoryShort;
    });
    ReadyEntries entries;
    std::uint64_t brokenCount = 0;
    const FileRunResult result = RunOverFiles(
        list, options.m_Batch.m_Jobs, options.m_Look, printing, console,
        [&](const ListedFile& file) { return MakeListedEntry(file, options, entries); },
        [&](const ListedFile& file, const FileOutcome& outcome) {
            brokenCount += outcome.m_Log.HasErrors();
            try {
                ViewEntry entry = entries.Take(file);
                if (entry.m_Path.empty()) { // it could not be read
                    entry.m_Path = file.m_Path;
                    AddDiagnostics(entry, outcome.m_Log);
                }
                writer.Add(entry);
            } catch (const std::bad_alloc&) {
                isMemoryShort = true;
            }
        });
    if (IsInterrupted()) {
        console.PrintError(InterruptionText(result) + "no page was written\n");
        return result.m_Status;
    }
    writer.Finish();
    if (isMemoryShort)
        return RefuseToWrite(console, "there is not enough memory for the page; give fewer files");
    if (writer.IsTooLarge())
        return RefuseToWrite(console, "the page would have " + SizeText(writer.GetSize()) + ", which is more than " +
                                          SizeText(options.m_MaxSize) + "; give fewer files, or more to --max-size");
    if (!DeliverPage(options.m_Page, page, console))
        return kExitCouldNotRun;
    if (!options.m_Look.m_IsQuiet && options.m_Diagnostics.m_Format == DiagnosticFormat::Text)
        console.PrintError(CountOf(result.m_FileCount, "file") + ", " + std::to_string(brokenCount) +
                           " with errors, on a page of " + SizeText(page.size()) + "\n");
    return result.m_Status;
}

} // namespace Corvid
