# corvid_convert(TARGET <name> FILES <file>... TO bin|txt OUTPUT <folder> [OPTIONS <option>...])
#
# Converts data files as part of a build: the target <name>, which is part of ALL, makes each file's result below
# <folder>, at the file's path relative to the current source folder. Each file is a step of its own, so that a build
# converts what has changed and a parallel one converts side by side. A file with an error fails the build with the
# error's line. OPTIONS are handed on to "corvid convert", such as --floats six.
#
# The program is found on the PATH, or beside this package; CORVID_EXECUTABLE names another one.
include_guard(GLOBAL)
get_filename_component(_corvid_convert_prefix "${CMAKE_CURRENT_LIST_DIR}/../../../.." ABSOLUTE)

function(corvid_convert)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "TARGET;TO;OUTPUT" "FILES;OPTIONS")
    foreach(word TARGET TO OUTPUT)
        if(NOT arg_${word})
            message(FATAL_ERROR "corvid_convert: ${word} is missing")
        endif()
    endforeach()
    if(NOT arg_TO MATCHES "^(bin|txt)$")
        message(FATAL_ERROR "corvid_convert: TO is bin or txt, not '${arg_TO}'")
    endif()
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "corvid_convert: unknown: ${arg_UNPARSED_ARGUMENTS}")
    endif()
    find_program(CORVID_EXECUTABLE corvid HINTS "${_corvid_convert_prefix}/bin" DOC "The program that converts data files")
    if(NOT CORVID_EXECUTABLE)
        message(FATAL_ERROR "corvid_convert: the program corvid is not on the PATH; set CORVID_EXECUTABLE to it")
    endif()

    get_filename_component(folder "${arg_OUTPUT}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_BINARY_DIR}")
    set(results "")
    foreach(file IN LISTS arg_FILES)
        get_filename_component(source "${file}" ABSOLUTE)
        file(RELATIVE_PATH relative "${CMAKE_CURRENT_SOURCE_DIR}" "${source}")
        if(relative MATCHES "^\\.\\./")
            get_filename_component(relative "${source}" NAME)
        endif()
        set(result "${folder}/${relative}")
        if(result IN_LIST results)
            message(FATAL_ERROR "corvid_convert: two files become ${result}")
        endif()
        # A result that is the same already is not written: its time would stay behind the source's for good.
        get_filename_component(result_folder "${result}" DIRECTORY)
        add_custom_command(OUTPUT "${result}"
            COMMAND "${CMAKE_COMMAND}" -E make_directory "${result_folder}"
            COMMAND "${CORVID_EXECUTABLE}" convert -q --to ${arg_TO} ${arg_OPTIONS} -o "${result}" -- "${source}"
            COMMAND "${CMAKE_COMMAND}" -E touch_nocreate "${result}"
            DEPENDS "${source}" "${CORVID_EXECUTABLE}"
            COMMENT "Converting ${relative}"
            VERBATIM)
        list(APPEND results "${result}")
    endforeach()
    add_custom_target(${arg_TARGET} ALL DEPENDS ${results})
    set_target_properties(${arg_TARGET} PROPERTIES CORVID_RESULTS "${results}")
endfunction()
