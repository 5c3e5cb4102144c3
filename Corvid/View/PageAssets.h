#pragma once

#include <string_view>

namespace Corvid {

// A part of the page that is the same for all pages.
struct PageAsset {
    std::string_view m_Bytes;
    std::string_view m_Sha256; // of the bytes, as 64 hexadecimal digits
};

// The page's own sources and the foreign library that it needs, as the build put them into the program (Page/, and
// EmbedPage.cmake).
struct PageAssets {
    PageAsset m_Template; // HTML with places such as <!-- @data@ -->
    PageAsset m_Style;
    PageAsset m_Script;
    PageAsset m_Library; // three.js, for pages that have a mesh
    PageAsset m_Licence;
};

// Null in a program that was built where three.js was not installed.
const PageAssets* GetPageAssets();

} // namespace Corvid
