#pragma once

#include <string_view>

namespace Corvid {

// Where the program's words go: standard output, or a test.
class TextSink {
public:
    virtual void WriteText(std::string_view utf8) = 0;

protected:
    ~TextSink() = default;
};

} // namespace Corvid
