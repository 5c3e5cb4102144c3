#include "Corvid/Commands/DiffPair.h"

#include <algorithm>
#include <future>
#include <new>

#include "Corvid/Compare/DifferenceJson.h"
#include "Corvid/Compare/DifferenceText.h"
#include "Corvid/Compare/LoadedComparison.h"
#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/PrintedPath.h"
#include "Corvid/Load/LoadedFile.h"
#include "Corvid/Load/StreamedLoad.h"

namespace Corvid {

namespace {

// One line of the data in its colour.
void AppendLine(std::string& data, Change change, std::string_view line, const DiffStyle& style) {
    if (style.m_IsFileOnLines)
        data += PrintedPath(style.m_File) + ": ";
    if (!style.m_HasColor) {
        data.append(line).append("\n");
        return;
    }
    constexpr std::string_view kColors[] = {"", "\x1b[32m", "\x1b[31m", "\x1b[36m"};
    const std::string_view color = kColors[static_cast<std::size_t>(change)];
    data.append(color).append(line).append(color.empty() ? "" : "\x1b[0m").append("\n");
}

class DiffSink final : public DifferenceSink {
public:
    DiffSink(std::string& data, const DiffOptions& options, const DiffStyle& style)
        : m_Data(data), m_Options(options), m_Style(style) {}

    void Take(const Difference& difference) override {
        m_HasDifferences = true;
        if (m_Options.m_Look.m_IsQuiet)
            return;
        if (m_Options.m_Format == DiffFormat::Json) {
            AppendDifferenceJson(m_Data, m_Style.m_File, difference);
            return;
        }
        std::string line;
        AppendDifferenceText(line, difference);
        AppendLine(m_Data, difference.m_Change, line, m_Style);
    }
    bool IsDone() const override { return m_HasDifferences && m_Options.m_Look.m_IsQuiet; }

    bool HasDifferences() const { return m_HasDifferences; }

private:
    std::string& m_Data;
    const DiffOptions& m_Options;
    const DiffStyle& m_Style;
    bool m_HasDifferences = false;
};

struct ReadSide {
    FileOutcome m_Outcome;
    std::optional<std::string> m_Bytes;
    std::optional<LoadedFile> m_Loaded;
};

// Whether both are so large that they are better not held in memory, and differ: then each is loaded for itself.
bool AreLargeAndDiffer(const DiffSide& before, const DiffSide& after) {
    const auto isLarge = [](const DiffSide& side) {
        return side.m_File.m_Size >= kLeastStreamedSize && side.m_ShownPath == side.m_File.m_Path;
    };
    return isLarge(before) && isLarge(after) &&
           (before.m_File.m_Size != after.m_File.m_Size || !HoldSameBytes(before.m_File.m_Path, after.m_File.m_Path));
}

void Load(ReadSide& read, const DiffSide& side, const DiffOptions& options) {
    LoadOptions load;
    load.m_Kind = options.m_Kind;
    options.m_Layouts.ApplyTo(load);
    if (!read.m_Bytes) {
        read.m_Loaded = LoadListedFile(side.m_File, load, read.m_Outcome);
        return;
    }
    const bool isNamed = !side.m_File.IsStandardInput();
    LoadedFile loaded =
        LoadFromBytes(std::move(*read.m_Bytes), isNamed ? EnginePath(side.m_ShownPath) : std::u16string(), load);
    if (loaded.m_IsMemoryShort) {
        AddFailure(read.m_Outcome, DiagnosticCode::CannotRead, "there is not enough memory");
        return;
    }
    read.m_Outcome.m_Log = std::move(loaded.m_Log);
    read.m_Loaded = std::move(loaded);
}

void TellDiagnostics(DiffOutcome& outcome, const ReadSide& read, const DiffSide& side, const DiffOptions& options,
                     const DiffStyle& style) {
    DiagnosticLimits limits;
    limits.m_MostLines = options.m_MostLines;
    if (options.m_Look.m_IsQuiet)
        limits.m_Least = Severity::Error;
    for (const ShownDiagnostic& shown : SelectShown(read.m_Outcome.m_Log, limits))
        AppendDiagnostic(outcome.m_Errors, side.m_ShownPath, PrintedPath(side.m_ShownPath), shown,
                         {DiagnosticFormat::Text, style.m_HasErrorColor});
    const int found = read.m_Outcome.m_Log.HasErrors() ? kExitFindings : kExitDone;
    outcome.m_Status = std::max({outcome.m_Status, read.m_Outcome.m_Status, found});
    outcome.m_Bytes += read.m_Outcome.m_Bytes;
}

} // namespace

DiffOutcome DiffTwoFiles(const DiffSide& before, const DiffSide& after, const DiffOptions& options,
                         const DiffStyle& style) {
    DiffOutcome outcome;
    ReadSide beforeRead;
    ReadSide afterRead;
    const bool areStreamed = AreLargeAndDiffer(before, after);
    if (!areStreamed) {
        beforeRead.m_Bytes = ReadListedFile(before.m_File, beforeRead.m_Outcome);
        afterRead.m_Bytes = ReadListedFile(after.m_File, afterRead.m_Outcome);
    }
    // What is the same to the byte is read once, for its errors.
    const bool isSame =
        beforeRead.m_Bytes && beforeRead.m_Bytes == afterRead.m_Bytes &&
        KindFromFileName(EnginePath(before.m_ShownPath)) == KindFromFileName(EnginePath(after.m_ShownPath));
    const bool isAlone = style.m_IsOneOfMany || options.m_Jobs == 1;
    // Where the system gives no thread, the second part waits for the first.
    const std::launch launch = isAlone ? std::launch::deferred : std::launch::async | std::launch::deferred;
    std::future<void> other;
    if (areStreamed || (afterRead.m_Bytes && !isSame))
        other = std::async(launch, [&] { Load(afterRead, after, options); });
    if (areStreamed || beforeRead.m_Bytes)
        Load(beforeRead, before, options);
    if (other.valid())
        other.get();
    TellDiagnostics(outcome, beforeRead, before, options, style);
    TellDiagnostics(outcome, afterRead, after, options, style);
    if (!beforeRead.m_Loaded || (!isSame && !afterRead.m_Loaded) || (isSame && beforeRead.m_Loaded->m_Kind))
        return outcome;

    DiffSink sink(outcome.m_Data, options, style);
    const LoadedFile& beforeLoaded = *beforeRead.m_Loaded;
    const LoadedFile& afterLoaded = isSame ? beforeLoaded : *afterRead.m_Loaded;
    const std::string obstacle = CompareLoaded(beforeLoaded, afterLoaded, options.m_Compare, launch, sink);
    if (!obstacle.empty()) {
        if (beforeLoaded.m_Kind && afterLoaded.m_Kind) // else it has been told what is wrong
            outcome.m_Errors += PrintedPath(after.m_ShownPath) + ": error: " + obstacle + "\n";
        outcome.m_Status = std::max(outcome.m_Status, style.m_IsOneOfMany ? kExitFindings : kExitCouldNotRun);
    }
    if (sink.HasDifferences())
        outcome.m_Status = std::max(outcome.m_Status, kExitFindings);
    return outcome;
}

void TellFileChange(DiffOutcome& outcome, Change change, const DiffOptions& options, const DiffStyle& style,
                    const std::string& from) {
    outcome.m_Status = std::max(outcome.m_Status, kExitFindings);
    if (options.m_Look.m_IsQuiet)
        return;
    if (options.m_Format == DiffFormat::Json) {
        AppendFileChangeJson(outcome.m_Data, style.m_File, change, from);
        return;
    }
    DiffStyle plain = style;
    plain.m_IsFileOnLines = false;
    const std::string path = PrintedPath(style.m_File);
    const std::string line = change == Change::Moved   ? PrintedPath(from) + " -> " + path + " moved"
                             : change == Change::Added ? "+ " + path
                                                       : "- " + path;
    AppendLine(outcome.m_Data, change, line, plain);
}

} // namespace Corvid
