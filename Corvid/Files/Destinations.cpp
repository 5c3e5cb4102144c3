#include "Corvid/Files/Destinations.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "Corvid/Files/FileStatus.h"
#include "Corvid/Files/PrintedPath.h"

namespace Corvid {

namespace {

// On Windows, names that differ in case name one file.
std::string NameOfFile(std::string path) {
#ifdef _WIN32
    std::transform(path.begin(), path.end(), path.begin(), [](char unit) {
        return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit == '\\' ? '/' : unit;
    });
#endif
    return path;
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
    std::unordered_map<std::string, const ListedFile*> owners(list.m_Files.size());
    plan.m_Paths.reserve(list.m_Files.size());
    for (const ListedFile& file : list.m_Files) {
        plan.m_Paths.push_back(prefix + file.m_Name);
        if (file.IsStandardInput()) {
            plan.m_UsageError = "standard input has no name to have below a folder; give -o a file";
            return plan;
        }
        const auto [owner, isFirst] = owners.emplace(NameOfFile(plan.m_Paths.back()), &file);
        if (!isFirst && !file.m_IsFolder) {
            plan.m_UsageError = PrintedPath(owner->second->m_Path) + " and " + PrintedPath(file.m_Path) +
                                " would both become " + PrintedPath(plan.m_Paths.back());
            return plan;
        }
    }
    return plan;
}

} // namespace Corvid
