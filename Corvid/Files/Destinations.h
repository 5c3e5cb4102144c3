#pragma once

#include <string>

#include "Corvid/Files/FileList.h"

namespace Corvid {

// Where the results of a run go: judged over all files, those of other shards, too, so that every shard comes to the
// same end.
struct DestinationPlan {
    std::string m_UsageError; // not empty: nothing may be written
    bool m_IsStandardOutput = false;
    bool m_IsInPlace = false;
    bool m_IsFolder = false; // folders below it are made as needed
    bool m_IsNew = false;    // nothing bore the name of that folder when the run began
    std::string m_Output;    // "-", one file, or a folder with its last separator

    std::string PathFor(const ListedFile& file) const;
};

// Every result takes the place of its source.
DestinationPlan PlanInPlace(const FileList& list);

// "-" is standard output. Several files, a folder given, a list, an existing folder or a slash at the end make `output`
// a folder, which gets the tree below each folder that was given.
DestinationPlan PlanOutput(const FileList& list, const std::string& output);

} // namespace Corvid
