#pragma once

#include <string>
#include <string_view>

namespace Corvid {

// Where text goes: a stream of the process, or a test.
class TextOutput {
public:
    virtual ~TextOutput() = default;

    // Empty, or what the system says about the failure.
    virtual std::string Write(std::string_view bytes) = 0;

    // After a failure: whether whoever read the other end went away.
    virtual bool HasLostReader() const = 0;

    virtual bool IsTerminal() const { return false; }
    virtual int GetColumns() const { return 80; } // of a terminal
};

} // namespace Corvid
