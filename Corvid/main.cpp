#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "Corvid/Batch/Interrupt.h"
#include "Corvid/Program.h"
#include "Corvid/Terminal/StandardOutputs.h"
#include "Engine/File/NativePath.h"
#include "Engine/File/StandardStreams.h"
#include "Engine/Render/TextureSystem.h"
#include "Engine/String/Unicode.h"

namespace {

using NativeUnit = Corvid::NativeString::value_type;

std::string ArgumentBytes(const NativeUnit* argument) {
#ifdef _WIN32
    return Corvid::ToUtf8(Corvid::PathFromNative(argument));
#else
    return argument;
#endif
}

Corvid::TerminalFacts FactsOfEnvironment() {
    Corvid::TerminalFacts facts;
    const char* const term = std::getenv("TERM");
    const char* const noColor = std::getenv("NO_COLOR");
    facts.m_IsDumb = term != nullptr && std::string_view(term) == "dumb";
    facts.m_IsColorUnwanted = noColor != nullptr && *noColor != '\0';
    return facts;
}

int Run(int argumentCount, const NativeUnit* const* nativeArguments) {
    Corvid::StandardOutput output(Corvid::StandardStream::Output);
    Corvid::StandardOutput errors(Corvid::StandardStream::Error);
    Corvid::PrepareStandardStreams();
    Corvid::CatchInterrupts();
    std::vector<std::string> arguments;
    for (int i = 1; i < argumentCount; ++i)
        arguments.push_back(ArgumentBytes(nativeArguments[i]));
    Corvid::TextureSystem::SetWorkingDirectory(u""); // no folder table here: textures are never looked up
    int status;
    {
        Corvid::Console console(output, errors, FactsOfEnvironment());
        status = Corvid::RunCorvid(std::move(arguments), console);
    }
    if (Corvid::IsInterrupted())
        Corvid::EndByInterrupt();
    return status;
}

} // namespace

#ifdef _WIN32
extern "C" int wmain(int argumentCount, wchar_t** arguments) {
    return Run(argumentCount, arguments);
}
#else
int main(int argumentCount, char** arguments) {
    return Run(argumentCount, arguments);
}
#endif
