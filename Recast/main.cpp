#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "Engine/File/NativePath.h"
#include "Engine/File/StandardStreams.h"
#include "Engine/Render/TextureSystem.h"
#include "Recast/Program.h"

namespace {

class StandardOutput final : public Corvid::TextSink {
public:
    void WriteText(std::string_view utf8) override { Corvid::WriteStandardOutput(utf8.data(), utf8.size()); }
};

int Run(int argumentCount, const Corvid::NativeString::value_type* const* nativeArguments) {
    Corvid::PrepareStandardStreams();
    std::vector<std::u16string> texts;
    for (int i = 0; i < argumentCount; ++i)
        texts.push_back(Corvid::PathFromNative(nativeArguments[i]));
    std::vector<const char16_t*> arguments;
    for (const std::u16string& text : texts)
        arguments.push_back(text.c_str());

    // No folder table here: textures are never looked up.
    Corvid::TextureSystem::SetWorkingDirectory(u"");
    StandardOutput output;
    return Corvid::RunProgram(arguments, output);
}

// Memory may run out before a run can tell of it in its own way.
int RunOrTellOfMemory(int argumentCount, const Corvid::NativeString::value_type* const* nativeArguments) {
    try {
        return Run(argumentCount, nativeArguments);
    } catch (const std::bad_alloc&) {
        constexpr std::string_view kText = "There is not enough memory to run.\n";
        Corvid::WriteStandardOutput(kText.data(), kText.size());
        return Corvid::kExitSuccess; // the status tells of the command line alone
    }
}

} // namespace

#ifdef _WIN32
extern "C" int wmain(int argumentCount, wchar_t** arguments) {
    return RunOrTellOfMemory(argumentCount, arguments);
}
#else
int main(int argumentCount, char** arguments) {
    return RunOrTellOfMemory(argumentCount, arguments);
}
#endif
