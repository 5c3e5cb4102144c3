# What is installed, in two components, each a package of its own: the program, and the library for other programs.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# corvid_install_compressed(<file> <folder> <component>): as the distributions want their documents.
function(corvid_install_compressed file folder component)
    get_filename_component(name ${file} NAME)
    install(CODE "
        execute_process(COMMAND gzip -9nc \"${file}\" OUTPUT_FILE \"${PROJECT_BINARY_DIR}/${name}.gz\"
            COMMAND_ERROR_IS_FATAL ANY)" COMPONENT ${component})
    install(FILES ${PROJECT_BINARY_DIR}/${name}.gz DESTINATION ${folder} COMPONENT ${component})
endfunction()

# The program -----------------------------------------------------------------------------------------------------------

if(WIN32) # no system-wide places: one folder for the program, and the documents for themselves
    set(CMAKE_INSTALL_BINDIR .)
    set(documents .)
    set(documents_component documents)
else()
    set(documents ${CMAKE_INSTALL_DATAROOTDIR}/doc/recast)
    set(documents_component program)
endif()
install(TARGETS recast RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
install(FILES README.md LICENSE DESTINATION ${documents} COMPONENT ${documents_component})
install(DIRECTORY Examples/ DESTINATION ${documents}/examples COMPONENT ${documents_component})

if(TARGET manual)
    corvid_install_compressed(${PROJECT_SOURCE_DIR}/Docs/recast.1 ${CMAKE_INSTALL_MANDIR}/man1 program)
    corvid_install_compressed(${PROJECT_BINARY_DIR}/recast-archive.5 ${CMAKE_INSTALL_MANDIR}/man5 program)
endif()

# The program corvid with its kit; recast stays a package of its own, which depends on nothing.
if(TARGET corvid)
    install(TARGETS corvid RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT corvid)
    if(WIN32)
        install(PROGRAMS Integrations/windows/to-text.cmd Integrations/windows/to-binary.cmd DESTINATION .
            COMPONENT corvid)
        install(DIRECTORY Integrations DESTINATION . COMPONENT documents PATTERN windows EXCLUDE)
    else()
        install(DIRECTORY Integrations/ DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/corvid/integrations COMPONENT corvid
            PATTERN windows EXCLUDE)
        install(FILES Packaging/Layouts/README DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/corvid/layouts COMPONENT corvid)
        if(TARGET corvid-documents)
            corvid_install_compressed(${PROJECT_BINARY_DIR}/corvid.1 ${CMAKE_INSTALL_MANDIR}/man1 corvid)
            corvid_install_compressed(${PROJECT_SOURCE_DIR}/Docs/corvid-layout.5 ${CMAKE_INSTALL_MANDIR}/man5 corvid)
            install(FILES ${PROJECT_BINARY_DIR}/completions/corvid COMPONENT corvid
                DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions)
            install(FILES ${PROJECT_BINARY_DIR}/completions/_corvid COMPONENT corvid
                DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/zsh/vendor-completions)
            install(FILES ${PROJECT_BINARY_DIR}/completions/corvid.fish COMPONENT corvid
                DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/fish/vendor_completions.d)
        endif()
    endif()
    install(DIRECTORY Docs/ DESTINATION ${documents}/docs COMPONENT ${documents_component} FILES_MATCHING PATTERN "*.md")
endif()

# The library -----------------------------------------------------------------------------------------------------------

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Corvid)
target_include_directories(Engine PUBLIC $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/corvid>)
install(TARGETS Engine GS Kinds EXPORT CorvidTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library)
install(DIRECTORY Engine GS Kinds DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/corvid COMPONENT library
    FILES_MATCHING PATTERN "*.h"
    PATTERN Posix EXCLUDE
    PATTERN Windows EXCLUDE)
install(EXPORT CorvidTargets NAMESPACE Corvid:: DESTINATION ${package_folder} COMPONENT library)
configure_package_config_file(cmake/CorvidConfig.cmake.in ${PROJECT_BINARY_DIR}/CorvidConfig.cmake
    INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/CorvidConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/CorvidConfig.cmake ${PROJECT_BINARY_DIR}/CorvidConfigVersion.cmake
    cmake/CorvidConvert.cmake
    DESTINATION ${package_folder} COMPONENT library)

include(Packaging/Packages.cmake)
