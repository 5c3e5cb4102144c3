# cpack in the build folder of the preset "package" makes the Debian packages; for Windows see WindowsZip.cmake.
set(CPACK_PACKAGE_NAME recast)
set(CPACK_PACKAGE_VENDOR "The recast developers")
set(CPACK_PACKAGE_CONTACT "The recast developers <recast@example.org>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_COMPONENTS_ALL program library)
if(TARGET corvid)
    list(APPEND CPACK_COMPONENTS_ALL corvid)
endif()
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_COMPONENTS_ALL program corvid documents)
else()
    set(CPACK_GENERATOR DEB)
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(CPACK_DEB_COMPONENT_INSTALL ON)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
    set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
        WORLD_READ WORLD_EXECUTE)

    set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME recast)
    set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION utils)
    set(CPACK_DEBIAN_PROGRAM_DESCRIPTION
        "Converts meshes, particle effects, brush sets and entity definitions between
the text encoding that people edit and the binary encoding that the engine
loads. This package holds the program.")

    set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libcorvid-dev)
    set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libdevel)
    set(CPACK_DEBIAN_LIBRARY_DESCRIPTION
        "Loads and saves meshes, particle effects, brush sets and entity definitions in
the text and the binary encoding. This package holds the library for other
programs, with headers and a CMake package: Corvid.")

    set(CPACK_DEBIAN_CORVID_PACKAGE_NAME corvid)
    set(CPACK_DEBIAN_CORVID_PACKAGE_SECTION utils)
    set(CPACK_DEBIAN_CORVID_PACKAGE_RECOMMENDS recast)
    set(CPACK_DEBIAN_CORVID_DESCRIPTION
        "Converts, checks, compares and shows whole folders of meshes, particle
effects, brush sets and entity definitions, with exact numbers and errors that
say where. This package holds the program and its integrations with git, CI and
editors.")

    # What a Debian package carries beside its files.
    if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
        foreach(component program library corvid)
            string(TOUPPER ${component} upper)
            set(folder ${CMAKE_INSTALL_DATAROOTDIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
            install(FILES Packaging/copyright DESTINATION ${folder} COMPONENT ${component})
            corvid_install_compressed(${PROJECT_SOURCE_DIR}/Packaging/changelog ${folder} ${component})
        endforeach()
        install(FILES Packaging/lintian-overrides-corvid RENAME corvid COMPONENT corvid
            DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides)
        install(FILES Packaging/lintian-overrides RENAME recast COMPONENT program
            DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides)
    endif()
endif()

include(CPack)
