# cpack --config Packaging/WindowsZip.cmake: one archive with the programs of both Windows presets, built before.
get_filename_component(root "${CMAKE_CURRENT_LIST_DIR}" DIRECTORY)
include("${root}/build-win64/CPackConfig.cmake")
set(CPACK_INSTALL_CMAKE_PROJECTS
    "${root}/build-win64;Corvid;program;/win64"
    "${root}/build-win64;Corvid;corvid;/win64"
    "${root}/build-win32;Corvid;program;/win32"
    "${root}/build-win32;Corvid;corvid;/win32"
    "${root}/build-win64;Corvid;documents;/")
set(CPACK_PACKAGE_FILE_NAME "recast-${CPACK_PACKAGE_VERSION}-windows")
