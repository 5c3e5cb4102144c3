#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "Corvid/Files/FileStatus.h"
#include "Engine/File/ByteSink.h"
#include "Engine/File/DestinationFile.h"
#include "Engine/File/SourceFile.h"

namespace Corvid {

// The bytes of one result on their way to its destination, without ever being held as a whole: as long as they are
// those that the destination holds, nothing is written. As with every destination it is all or nothing.
class ResultFile final : public ByteSink {
public:
    enum class Use { Compare, Write };
    enum class Fate {
        Unchanged, // the destination holds these bytes, and was not touched
        Changed,   // it now holds them, or would
        Failed     // it holds what it held
    };

    // `makesFolders`: those above the path, if need be. `isNew`: nothing bears the name, and no look is taken.
    ResultFile(std::string path, Use use, bool makesFolders, bool isNew = false);

    void WriteBlock(const char* bytes, std::size_t count) override;

    // Once, behind the last block.
    Fate Finish();

    // What the system says of a failure.
    const std::string& GetError() const { return m_Error; }

private:
    enum class State { Comparing, Differing, Writing, Failed };

    bool IsHeldNext(const char* bytes, std::size_t count);
    void Differ();
    void BeginWriting();
    void Write(const char* bytes, std::size_t count);
    void Fail(std::string error);

    std::string m_Path;
    Use m_Use;
    bool m_MakesFolders;
    State m_State = State::Comparing;
    std::optional<FileStatus> m_HeldStatus; // when comparing began
    SourceFile m_Held;
    std::uint64_t m_HeldBytes = 0; // that have come so far
    DestinationFile m_Destination;
    std::string m_Error;
};

} // namespace Corvid
