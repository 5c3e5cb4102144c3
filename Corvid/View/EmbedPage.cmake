# cmake -DOUTPUT=FILE -DTEMPLATE=FILE -DSTYLE=FILE -DLICENCE=FILE -DSCRIPTS="FILE..." -DLIBRARIES="FILE..." -P this file:
# writes a source file with the page's parts as bytes. Scripts, and libraries, are joined in the order given (separated
# by '|').
cmake_minimum_required(VERSION 3.22)

set(definitions "")
set(members "")

# embed(<name> <files...>): the joined bytes, in whatever way a checkout ends lines, with the hash of them.
function(embed name)
    set(joined "${OUTPUT}.${name}")
    file(WRITE "${joined}" "")
    foreach(path IN LISTS ARGN)
        file(READ "${path}" text)
        string(REPLACE "\r\n" "\n" text "${text}")
        file(APPEND "${joined}" "${text}\n")
    endforeach()
    file(READ "${joined}" text)
    if(NOT name STREQUAL "Template" AND text MATCHES "</[sS][cC][rR][iI][pP][tT]|<!--|\r")
        message(FATAL_ERROR "${ARGN}: cannot stand inside a page")
    endif()
    file(SHA256 "${joined}" hash)
    file(READ "${joined}" hex HEX)
    file(REMOVE "${joined}")
    string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${hex}")
    string(APPEND definitions "constexpr char k${name}[] = \"${bytes}\";\n")
    string(APPEND members "    {{k${name}, sizeof k${name} - 1}, \"${hash}\"},\n")
    set(definitions "${definitions}" PARENT_SCOPE)
    set(members "${members}" PARENT_SCOPE)
endfunction()

string(REPLACE "|" ";" SCRIPTS "${SCRIPTS}")
string(REPLACE "|" ";" LIBRARIES "${LIBRARIES}")
embed(Template "${TEMPLATE}")
embed(Style "${STYLE}")
embed(Script ${SCRIPTS})
embed(Library ${LIBRARIES})
embed(Licence "${LICENCE}")

file(WRITE "${OUTPUT}" "// Written by the build.
#include \"Corvid/View/PageAssets.h\"

namespace Corvid {

namespace {

${definitions}
constexpr PageAssets kAssets = {
${members}};

} // namespace

const PageAssets* GetPageAssets() {
    return &kAssets;
}

} // namespace Corvid
")
