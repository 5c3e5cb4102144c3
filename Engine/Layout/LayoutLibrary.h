#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "Engine/Layout/LayoutBlocks.h"
#include "Engine/Layout/LayoutLine.h"
#include "Engine/Layout/RecordPlan.h"

namespace Corvid {

// A layout file that was looked up.
struct LibraryLayout {
    std::u16string m_Path;
    std::vector<LayoutError> m_Errors;
    std::shared_ptr<const RecordPlan> m_Plan; // null where there are errors
};

// Where layouts of entity types come from. Any number of threads may ask.
class LayoutSource {
public:
    // Null: there is none. `typeWord` is one of the table of types, or at least nothing that leads out of a folder.
    virtual std::shared_ptr<const LibraryLayout> Find(std::string_view typeWord) const = 0;

protected:
    ~LayoutSource() = default;
};

// Layouts in folders, one file per type: FOLDER/TypeWord.layout. They are read when they are first asked for, once.
class LayoutLibrary final : public LayoutSource {
public:
    // The first folder that has a file for a type gives it, sound or not. `blocks` is first called for one, since most
    // runs need none.
    LayoutLibrary(std::vector<std::u16string> folders, const LayoutBlocks& (*blocks)())
        : m_Folders(std::move(folders)), m_Blocks(blocks) {}

    std::shared_ptr<const LibraryLayout> Find(std::string_view typeWord) const override;

    // One file, whatever its name. Where it cannot be read, that is the error, at line 0.
    static std::shared_ptr<const LibraryLayout> Read(std::u16string path, const LayoutBlocks& blocks);

    const std::vector<std::u16string>& GetFolders() const { return m_Folders; }

private:
    std::shared_ptr<const LibraryLayout> Load(std::string_view typeWord) const;

    std::vector<std::u16string> m_Folders;
    const LayoutBlocks& (*m_Blocks)();
    mutable std::mutex m_Mutex;
    mutable std::map<std::string, std::shared_ptr<const LibraryLayout>, std::less<>> m_Found; // null: there is none
};

} // namespace Corvid
