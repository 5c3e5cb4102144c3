#pragma once

namespace Corvid {

// What became of a file that was to be loaded.
enum class LoadResult {
    Loaded,     // as far as its content went; what was wrong with it has been reported
    NotOpened,  // there is no such file, or it is no archive: the object is as it was
    Incomplete, // memory ran out on the way, or the source does not end, which has been reported
};

// What became of a file that was to be written. But for the first, the destination holds what it held before.
enum class SaveResult {
    Saved,
    NotOpened, // the destination cannot be written
    Failed,    // on the way: a full disk, too little memory; has been reported
    NotWhole,  // the object is not what its own file holds, so nothing was tried
};

// The base of what files are loaded into: it knows whether it is whole. What a loading has left incomplete stays so and
// is not saved, so that nobody's file is replaced by a part of it.
class FileObject {
public:
    bool IsWhole() const { return m_IsWhole; }

protected:
    FileObject() = default;
    ~FileObject() = default;

private:
    friend class FileArchiveSystem;

    bool m_IsWhole = true;
};

} // namespace Corvid
