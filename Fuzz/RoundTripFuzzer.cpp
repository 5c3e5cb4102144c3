// Any file through both encodings and back. The first byte of an input names the kind, the rest is the file.
//
// What must hold: a file of the engine's own making is read without a complaint, and saving what was read gives that
// file again. A first pass through text may change an object: decimals are rounded, strings lose what they cannot hold
// there (quotes, line ends, halves of surrogate pairs), and the lists of a mesh come from the values before rounding.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Fuzz/Archives.h"

namespace Corvid::Fuzz {

namespace {

constexpr std::size_t kLargestBinary = 64 * 1024; // beyond that inputs only cost time

std::string Reload(Kind kind, const std::string& file, ArchiveFormat format, int& complaintCount) {
    const std::unique_ptr<KindObject> object = CreateObject(kind);
    complaintCount = Load(file, *object).m_ComplaintCount;
    return Save(*object, format);
}

void GoRound(Kind kind, std::string_view input) {
    const bool isBinary = input.starts_with("BIN");
    const std::unique_ptr<KindObject> object = CreateObject(kind);
    Load(AsFile(input, isBinary ? ArchiveFormat::Binary : ArchiveFormat::Text), *object);
    object->Finish();
    const std::string binary = Save(*object, ArchiveFormat::Binary);
    if (!object->IsThere() || binary.size() > kLargestBinary)
        return;
    const std::string text = Save(*object, ArchiveFormat::Text);
    int complaintCount;

    Require(Reload(kind, binary, ArchiveFormat::Binary, complaintCount) == binary, "binary is a fixed point");
    Require(complaintCount == 0, "own binary is read without a complaint");
    Require(Reload(kind, binary, ArchiveFormat::Text, complaintCount) == text, "binary keeps all that text shows");

    const std::string secondText = Reload(kind, text, ArchiveFormat::Text, complaintCount);
    const bool isRecomputed = kind == Kind::Mesh; // its lists come from the values before they are rounded
    const bool isClean = !isBinary && text.find("\xEF\xBF\xBD") == text.npos;
    Require(!isClean || complaintCount == 0, "own text is read without a complaint");
    Require(!isClean || isRecomputed || secondText == text, "text is a fixed point after the first pass");

    Require(Reload(kind, secondText, ArchiveFormat::Text, complaintCount) == secondText, "text is a fixed point");
    Require(complaintCount == 0, "own text is read without a complaint after the second pass");
}

} // namespace

} // namespace Corvid::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Corvid::Fuzz;
    if (size == 0)
        return 0;
    const std::string_view file(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0]) {
    case 'm':
        GoRound(Corvid::Kind::Mesh, file);
        break;
    case 'p':
        GoRound(Corvid::Kind::Particle, file);
        break;
    case 'b':
        GoRound(Corvid::Kind::Brushes, file);
        break;
    case 'e':
        GoRound(Corvid::Kind::Entity, file);
        break;
    }
    return 0;
}
