# corvid_target(<target>): the language level, warnings and code generation that every target of this project shares.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-march=x86-64-v2 CORVID_HAS_X86_64_V2)

function(corvid_target target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wshadow -Wconversion
        # Assertions name their source file from the project's root, wherever it was built.
        -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
    # GCC 12 finds overlapping copies in its own std::string where there are none.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
    if(CORVID_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()

    # How code is generated is public: whoever uses the library compiles its inline functions, too, and the linker keeps
    # one version of each. Float results are part of the file format: no fused operations, on any processor.
    target_compile_options(${target} PUBLIC -ffp-contract=off)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$" AND CMAKE_SIZEOF_VOID_P EQUAL 8
       AND CORVID_HAS_X86_64_V2 AND NOT CORVID_BASELINE_CPU)
        target_compile_options(${target} PUBLIC -march=x86-64-v2)
    elseif(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "86")
        target_compile_options(${target} PUBLIC -msse2 -mfpmath=sse)
        if(NOT WIN32) # files of 2 GB and more
            target_compile_definitions(${target} PUBLIC _FILE_OFFSET_BITS=64)
        endif()
    endif()
    if(CORVID_SANITIZERS)
        target_compile_options(${target} PRIVATE -fsanitize=${CORVID_SANITIZERS} -fno-sanitize-recover=all
            -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=${CORVID_SANITIZERS})
    endif()
endfunction()
