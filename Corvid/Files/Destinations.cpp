#include "Corvid/Files/Destinations.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/PrintedPath.h"

namespace Corvid {

namespace {

// On Windows, names that differ in case name one file.
bool IsBefore(const std::string& a, const std::string& b) {
#ifdef _WIN32
    const auto folded = [](char unit) {
        return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit == '\\' ? '/' : unit;
    };
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [&](char x, char y) { return folded(x) < folded(y); });
#else
    return a < b;
#endif
}

// Two files with one result, by their places in the list.
struct Collision {
    std::size_t m_First = 0;
    std::size_t m_Second = 0;
};

// The one whose second file comes first; a folder that cannot be searched has no result.
std::optional<Collision> FindCollision(const FileList& list, const std::vector<std::string>& paths) {
    std::vector<std::size_t> order(paths.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto isBefore = [&](std::size_t a, std::size_t b) { return IsBefore(paths[a], paths[b]); };
    if (!std::is_sorted(order.begin(), order.end(), isBefore)) // the files of one folder are
        std::stable_sort(order.begin(), order.end(), isBefore);
    std::optional<Collision> found;
    for (std::size_t i = 1, first = 0; i < order.size(); ++i) {
        if (isBefore(order[first], order[i]))
            first = i;
        else if (!list.m_Files[order[i]].m_IsFolder && (!found || order[i] < found->m_Second))
            found = {order[first], order[i]};
    }
    return found;
}

std::string FolderError(const FileList& list, const std::string& output) {
    const std::optional<FileStatus> status = GetFileStatus(output);
    if (status && status->m_Type != FileType::Folder)
        return PrintedPath(output) + " is a file, and the results need a folder";
    if (!list.m_ClimbingPath.empty())
        return PrintedPath(list.m_ClimbingPath) + " leaves the working folder, so it has no place below " +
               PrintedPath(output);
    for (const std::string& folder : list.m_Folders) {
        const std::optional<FileStatus> given = GetFileStatus(folder);
        if (status && given && given->m_Identity == status->m_Identity)
            return "the destination " + PrintedPath(output) + " is the folder given; use -i to convert it in place";
    }
    return {};
}

} // namespace

DestinationPlan PlanInPlace(const FileList& list) {
    DestinationPlan plan;
    for (const ListedFile& file : list.m_Files) {
        if (file.IsStandardInput())
            plan.m_UsageError = "standard input cannot be converted in place; use -o";
        plan.m_Paths.push_back(file.m_Path);
    }
    return plan;
}

DestinationPlan PlanOutput(const FileList& list, const std::string& output) {
    DestinationPlan plan;
    if (output.empty()) {
        plan.m_UsageError = "the destination is empty";
        return plan;
    }
    if (output == kStandardInputPath) {
        plan.m_IsStandardOutput = true;
        plan.m_Paths.assign(list.m_Files.size(), output);
        if (list.m_Files.size() > 1)
            plan.m_UsageError =
                "standard output takes the result of one file, and there are " + std::to_string(list.m_Files.size());
        return plan;
    }
    const std::optional<FileStatus> status = GetFileStatus(output);
    plan.m_IsFolder =
        list.m_HasFolders || IsPathSeparator(output.back()) || (status && status->m_Type == FileType::Folder);
    plan.m_IsNew = plan.m_IsFolder && !status;
    if (!plan.m_IsFolder) {
        plan.m_Paths.assign(list.m_Files.size(), output);
        return plan;
    }
    plan.m_UsageError = FolderError(list, output);
    if (!plan.m_UsageError.empty())
        return plan;
    const std::string prefix = IsPathSeparator(output.back()) ? output : output + "/";
    plan.m_Paths.reserve(list.m_Files.size());
    for (const ListedFile& file : list.m_Files) {
        plan.m_Paths.push_back(prefix + file.m_Name);
        if (file.IsStandardInput()) {
            plan.m_UsageError = "standard input has no name to have below a folder; give -o a file";
            return plan;
        }
    }
    if (const std::optional<Collision> collision = FindCollision(list, plan.m_Paths))
        plan.m_UsageError = PrintedPath(list.m_Files[collision->m_First].m_Path) + " and " +
                            PrintedPath(list.m_Files[collision->m_Second].m_Path) + " would both become " +
                            PrintedPath(plan.m_Paths[collision->m_Second]);
    return plan;
}

} // namespace Corvid
