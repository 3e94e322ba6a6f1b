# How every target of the project is compiled, said once.
include(GNUInstallDirs)

# Warnings, and whatever instrumentation the preset asks for. Private: no consumer inherits any of it.
function(zon_compile_strictly target)
    target_compile_features(${target} PRIVATE cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wconversion -Wshadow
        $<$<BOOL:${ZON_WARNINGS_AS_ERRORS}>:-Werror>)
    if(ZON_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${ZON_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${ZON_SANITIZE})
    endif()
    if(ZON_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage)
        target_link_options(${target} PRIVATE --coverage)
    endif()
endfunction()

# Headers that most files of a target include and that take longest to read, read once for all of them. A file still
# includes what it uses: builds without this (ZON_PRECOMPILE=OFF, as the presets dev and clang are) would stop where it does not.
function(zon_precompile target)
    if(ZON_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# A shared library that exports what its headers mark and nothing else, installed with those headers.
#
# The SO version is raised when an exported name that a host can use changes its signature or goes, a released virtual
# operation moves, a public class changes its size, or a member moves that the headers' inline code reads in the host:
# every public field, the text of an ObjectID, the property path of a Path, and in a StoryParser the error flag, the
# error and the story. tests/abi holds them in place. Adding functions does not raise it.
function(zon_shared_library target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "INCLUDE_DIR" "")
    zon_compile_strictly(${target})
    set_target_properties(${target} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "\$ORIGIN")
    target_compile_features(${target} INTERFACE cxx_std_17)
    # A symbol that is unique in the process keeps its library there for ever: a host that unloads a plugin of its own
    # would keep ours, and the compiler makes them of the standard library's templates.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    target_link_options(${target} PRIVATE -Wl,--no-undefined-version -Wl,--as-needed)
    if(NOT ZON_SANITIZE)
        target_link_options(${target} PRIVATE -Wl,--no-undefined -Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)
    endif()
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map)
    target_include_directories(${target} PUBLIC
        $<BUILD_INTERFACE:${arg_INCLUDE_DIR}>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    install(TARGETS ${target} EXPORT zonstoryparserTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library
        NAMELINK_COMPONENT development)
    install(DIRECTORY ${arg_INCLUDE_DIR}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
endfunction()
