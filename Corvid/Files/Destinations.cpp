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
std::optional<Collision> FindCollision(const std::vector<ListedFile>& files) {
    std::vector<std::size_t> order(files.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto isBefore = [&](std::size_t a, std::size_t b) { return IsBefore(files[a].m_Name, files[b].m_Name); };
    if (!std::is_sorted(order.begin(), order.end(), isBefore)) // the files of one folder are
        std::stable_sort(order.begin(), order.end(), isBefore);
    std::optional<Collision> found;
    for (std::size_t i = 1, first = 0; i < order.size(); ++i) {
        if (isBefore(order[first], order[i]))
            first = i;
        else if (!files[order[i]].m_IsFolder && (!found || order[i] < found->m_Second))
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

std::string DestinationPlan::PathFor(const ListedFile& file) const {
    return m_IsInPlace ? file.m_Path : m_IsFolder ? m_Output + file.m_Name : m_Output;
}

DestinationPlan PlanInPlace(const FileList& list) {
    DestinationPlan plan;
    plan.m_IsInPlace = true;
    for (const ListedFile& file : list.m_Files) {
        if (file.IsStandardInput())
            plan.m_UsageError = "standard input cannot be converted in place; use -o";
    }
    return plan;
}

DestinationPlan PlanOutput(const FileList& list, const std::string& output) {
    DestinationPlan plan;
    if (output.empty()) {
        plan.m_UsageError = "the destination is empty";
        return plan;
    }
    plan.m_Output = output;
    const std::vector<ListedFile>& files = list.m_Files;
    if (output == kStandardInputPath) {
        plan.m_IsStandardOutput = true;
        if (files.size() > 1)
            plan.m_UsageError =
                "standard output takes the result of one file, and there are " + std::to_string(files.size());
        return plan;
    }
    const std::optional<FileStatus> status = GetFileStatus(output);
    plan.m_IsFolder =
        list.m_HasFolders || IsPathSeparator(output.back()) || (status && status->m_Type == FileType::Folder);
    plan.m_IsNew = plan.m_IsFolder && !status;
    if (!plan.m_IsFolder)
        return plan;
    if (!IsPathSeparator(output.back()))
        plan.m_Output += '/';
    plan.m_UsageError = FolderError(list, output);
    if (!plan.m_UsageError.empty())
        return plan;
    if (std::any_of(files.begin(), files.end(), [](const ListedFile& file) { return file.IsStandardInput(); }))
        plan.m_UsageError = "standard input has no name to have below a folder; give -o a file";
    else if (const std::optional<Collision> collision = FindCollision(files))
        plan.m_UsageError = PrintedPath(files[collision->m_First].m_Path) + " and " +
                            PrintedPath(files[collision->m_Second].m_Path) + " would both become " +
                            PrintedPath(plan.PathFor(files[collision->m_Second]));
    return plan;
}

} // namespace Corvid
