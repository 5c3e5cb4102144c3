#pragma once

#include "Corvid/Terminal/TextOutput.h"

namespace Corvid {

enum class StandardStream { Output, Error };

// A standard stream of the process.
class StandardOutput final : public TextOutput {
public:
    // Before the standard streams are prepared: of one that is closed, nothing is to be seen afterwards.
    explicit StandardOutput(StandardStream stream) : m_Stream(stream), m_IsClosed(IsClosed(stream)) {}

    std::string Write(std::string_view bytes) override;
    bool HasLostReader() const override { return m_HasLostReader; }
    bool IsTerminal() const override; // of a kind that takes colours and moves its cursor
    int GetColumns() const override;

private:
    static bool IsClosed(StandardStream stream);

    StandardStream m_Stream;
    bool m_IsClosed;
    bool m_HasLostReader = false;
};

} // namespace Corvid
