#pragma once

#include <string_view>

namespace Corvid {

// How a list is compared.
enum class ListStyle {
    Paired,     // element by element, wherever each went
    Summarised, // too many elements for a line each, told apart by their place
    Derived,    // summarised, and computed anew whenever a file is written
};

// By the path of the list's count.
ListStyle ListStyleOf(std::string_view path);

} // namespace Corvid
