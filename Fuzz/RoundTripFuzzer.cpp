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
#include "Fuzz/Kinds.h"

namespace Corvid::Fuzz {

namespace {

constexpr std::size_t kLargestBinary = 64 * 1024; // beyond that inputs only cost time

template <class Kind> std::string Reload(const std::string& file, ArchiveFormat format, int& complaintCount) {
    typename Kind::Object object;
    complaintCount = Load<Kind>(file, object).m_ComplaintCount;
    return Save<Kind>(object, format);
}

template <class Kind> void GoRound(std::string_view input) {
    const bool isBinary = input.starts_with("BIN");
    typename Kind::Object object;
    Load<Kind>(AsFile(input, isBinary ? ArchiveFormat::Binary : ArchiveFormat::Text), object);
    Kind::Finish(object);
    const std::string binary = Save<Kind>(object, ArchiveFormat::Binary);
    if (!Kind::IsThere(object) || binary.size() > kLargestBinary)
        return;
    const std::string text = Save<Kind>(object, ArchiveFormat::Text);
    int complaintCount;

    Require(Reload<Kind>(binary, ArchiveFormat::Binary, complaintCount) == binary, "binary is a fixed point");
    Require(complaintCount == 0, "own binary is read without a complaint");
    Require(Reload<Kind>(binary, ArchiveFormat::Text, complaintCount) == text, "binary keeps all that text shows");

    const std::string secondText = Reload<Kind>(text, ArchiveFormat::Text, complaintCount);
    const bool isClean = !isBinary && text.find("\xEF\xBF\xBD") == text.npos;
    Require(!isClean || complaintCount == 0, "own text is read without a complaint");
    Require(!isClean || Kind::kIsRecomputed || secondText == text, "text is a fixed point after the first pass");

    Require(Reload<Kind>(secondText, ArchiveFormat::Text, complaintCount) == secondText, "text is a fixed point");
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
        GoRound<Mesh>(file);
        break;
    case 'p':
        GoRound<Particle>(file);
        break;
    case 'b':
        GoRound<Brushes>(file);
        break;
    case 'e':
        GoRound<Entity>(file);
        break;
    }
    return 0;
}
