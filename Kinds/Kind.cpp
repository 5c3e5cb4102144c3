#include "Kinds/Kind.h"

#include <algorithm>
#include <iterator>

#include "Engine/File/PathParts.h"

namespace Corvid {

namespace {

struct KindRow {
    std::string_view m_Word;
    std::string_view m_FirstLabel;
};

// In the order of the enumeration.
constexpr KindRow kRows[] = {
    {"mesh", "MeshData"},
    {"particle", "ParticleSimulation"},
    {"brushes", "onlyLoadOnDemand"},
    {"entity", "entityType"},
};
static_assert(std::size(kRows) == std::size(kKinds));

const KindRow& RowOf(Kind kind) {
    return kRows[static_cast<std::size_t>(kind)];
}

template <class Matches> std::optional<Kind> FindKind(Matches matches) {
    const auto found = std::find_if(std::begin(kKinds), std::end(kKinds), matches);
    return found != std::end(kKinds) ? std::optional(*found) : std::nullopt;
}

bool IsSameWithoutCase(std::u16string_view text, std::string_view lowerCase) {
    return std::equal(text.begin(), text.end(), lowerCase.begin(), lowerCase.end(), [](char16_t a, char b) {
        return (a >= u'A' && a <= u'Z' ? static_cast<char16_t>(a - u'A' + u'a') : a) == static_cast<char16_t>(b);
    });
}

} // namespace

std::string_view WordOf(Kind kind) {
    return RowOf(kind).m_Word;
}

std::optional<Kind> KindFromWord(std::string_view word) {
    return FindKind([&](Kind kind) { return RowOf(kind).m_Word == word; });
}

std::optional<Kind> KindFromFileName(std::u16string_view path) {
    std::u16string_view extension = SplitPath(path).m_Extension;
    if (extension.empty())
        return std::nullopt;
    extension.remove_prefix(1); // the dot
    return FindKind([&](Kind kind) { return IsSameWithoutCase(extension, RowOf(kind).m_Word); });
}

std::string_view FirstLabelOf(Kind kind) {
    return RowOf(kind).m_FirstLabel;
}

std::optional<Kind> KindFromFirstLabel(std::string_view label) {
    return FindKind([&](Kind kind) { return RowOf(kind).m_FirstLabel == label; });
}

} // namespace Corvid
