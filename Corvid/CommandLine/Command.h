#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "Corvid/CommandLine/CommandDeclaration.h"

namespace Corvid {

class Console;

// One command with its options, ready to be declared, parsed and run.
class Command {
public:
    virtual ~Command() = default;
    virtual void Declare(CommandDeclaration& declaration) = 0;
    virtual int Run(Console& console) const = 0; // the exit status
};

// A command is a plain struct of options and two functions beside it:
//     void DeclareCommand(CommandDeclaration& declaration, CheckOptions& options);
//     int RunCommand(const CheckOptions& options, Console& console);
template <class Options> class CommandWith final : public Command {
public:
    void Declare(CommandDeclaration& declaration) override { DeclareCommand(declaration, m_Options); }
    int Run(Console& console) const override { return RunCommand(m_Options, console); }

private:
    Options m_Options;
};

struct CommandRow {
    std::string_view m_Name; // one word, or two where a command has commands of its own
    std::unique_ptr<Command> (*m_Make)();
};

template <class Options> constexpr CommandRow RowFor(std::string_view name) {
    return {name, [] { return std::unique_ptr<Command>(std::make_unique<CommandWith<Options>>()); }};
}

} // namespace Corvid
