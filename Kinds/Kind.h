#pragma once

#include <optional>
#include <string_view>

namespace Corvid {

// The kinds of data files that are loaded into objects.
enum class Kind { Mesh, Particle, Brushes, Entity };

inline constexpr Kind kKinds[] = {Kind::Mesh, Kind::Particle, Kind::Brushes, Kind::Entity};

// "mesh", "particle", "brushes", "entity": the word for a kind, which is the extension of its files, too.
std::string_view WordOf(Kind kind);
std::optional<Kind> KindFromWord(std::string_view word);

// By the extension of a file's name, in any case.
std::optional<Kind> KindFromFileName(std::u16string_view path);

// The first label that a text file of the kind holds.
std::string_view FirstLabelOf(Kind kind);
std::optional<Kind> KindFromFirstLabel(std::string_view label);

} // namespace Corvid
