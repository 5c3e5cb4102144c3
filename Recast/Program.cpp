#include "Recast/Program.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Engine/Archive/FileArchiveSystem.h"
#include "Engine/String/StringLibrary.h"
#include "Engine/String/Unicode.h"
#include "Kinds/Kind.h"
#include "Recast/BoundedReportSink.h"
#include "Recast/Conversions.h"
#include "Recast/SaveGameCopy.h"

namespace Corvid {

namespace {

constexpr std::size_t kTypeArgument = 1;
constexpr std::size_t kSourceArgument = 2;
constexpr std::size_t kDestinationArgument = 3;
constexpr std::size_t kFormatArgument = 4;
constexpr std::size_t kFewestArguments = 4;

constexpr std::string_view kUsage = "Usage: recast type src dest [format]\n"
                                    "\t-type can be mesh, particle, brushes, entity,saveGame\n"
                                    "\t-format can be txt, bin. defaults to bin and bin only for saveGame\n";

using Conversion = void (*)(FileArchiveSystem& archives, std::u16string_view source, std::u16string_view destination,
                            ArchiveFormat format);

Conversion ConversionOf(Kind kind) {
    switch (kind) {
    case Kind::Mesh:
        return ConvertMesh;
    case Kind::Particle:
        return ConvertParticle;
    case Kind::Brushes:
        return ConvertBrushes;
    case Kind::Entity:
        return ConvertEntity;
    }
    return nullptr;
}

Conversion FindConversion(std::u16string_view type) {
    if (type == u"saveGame")
        return [](FileArchiveSystem&, std::u16string_view source, std::u16string_view destination, ArchiveFormat) {
            CopySaveGame(source, destination);
        };
    const std::optional<Kind> kind = type == u"MESH" ? Kind::Mesh : KindFromWord(ToUtf8(type));
    return kind ? ConversionOf(*kind) : nullptr;
}

// The argument's address, not its text: scripts have come to expect it.
std::string UnknownTypeText(const char16_t* type) {
    char digits[2 * sizeof(std::uintptr_t)];
    const auto end = std::to_chars(digits, digits + sizeof digits, reinterpret_cast<std::uintptr_t>(type), 16).ptr;
    return "0x" + std::string(digits, end) + " is an unknown convert type";
}

} // namespace

int RunProgram(std::span<const char16_t* const> arguments, TextSink& output) {
    if (arguments.size() < kFewestArguments) {
        output.WriteText(kUsage);
        return kExitUsage;
    }
    const std::u16string_view source = arguments[kSourceArgument];
    BoundedReportSink reports(output, source);
    const Reporter reporter(reports);

    const char16_t* const format = arguments.size() > kFormatArgument ? arguments[kFormatArgument] : u"bin";
    const bool isBinary = Compare(format, u"txt") != 0;
    const Conversion convert = FindConversion(arguments[kTypeArgument]);
    if (convert == nullptr) {
        output.WriteText(UnknownTypeText(arguments[kTypeArgument]));
        return kExitUsage;
    }
    FileArchiveSystem archives;
    archives.EnableChecksums(false); // nothing in a run reads them
    RunWithinMemory([&] {
        convert(archives, source, arguments[kDestinationArgument],
                isBinary ? ArchiveFormat::Binary : ArchiveFormat::Text);
    });
    return kExitSuccess;
}

} // namespace Corvid
