# Fuzz targets: fuzz/*.cpp, each one input of the project. IFCORE_FUZZ_TARGETS lists their names, the stems in lower case.
#
# ifcore_add_fuzz_program(<program> <name> [<source>...]): a target and what runs it. With IFCORE_BUILD_FUZZERS that is
# libFuzzer, in programs fuzz_<name> that the target `fuzzers` builds; the tests replay files (fuzz/replay).

file(GLOB fuzz_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/fuzz/*.cpp")
file(GLOB fuzz_support CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/fuzz/support/*.cpp"
    "${PROJECT_SOURCE_DIR}/tests/support/tableRules.cpp" # what holds of every table
    "${PROJECT_SOURCE_DIR}/tests/support/fatal/fatalEnding.cpp")
set(IFCORE_FUZZ_TARGETS "")
if(NOT fuzz_sources)
    message(STATUS "fuzz/ holds no sources: the fuzz targets are left out")
    return()
endif()

# Linked statically, so that the library's `exit` can be replaced: tests/support/fatal.
add_library(fuzz_support STATIC ${fuzz_support})
ifcore_configure_target(fuzz_support)
target_include_directories(fuzz_support
    PUBLIC "${PROJECT_SOURCE_DIR}/fuzz/support" "${PROJECT_SOURCE_DIR}/tests/support/fatal"
    PRIVATE "${PROJECT_SOURCE_DIR}/tests/support" "${PROJECT_SOURCE_DIR}/common/ifcore")
target_link_libraries(fuzz_support PUBLIC ifcore_static ifcore::host)
target_link_options(fuzz_support INTERFACE LINKER:--wrap=exit)

if(COMMAND ifcore_add_tool_parts)
    ifcore_add_tool_parts(ifcore_tool_parts_static ifcore_static)
endif()

foreach(source IN LISTS fuzz_sources)
    get_filename_component(name "${source}" NAME_WE)
    string(TOLOWER "${name}" name)
    if(name STREQUAL "programfile" AND NOT TARGET ifcore_tool_parts_static)
        continue()
    endif()
    list(APPEND IFCORE_FUZZ_TARGETS ${name})
    set(fuzz_source_${name} "${source}")
endforeach()

function(ifcore_add_fuzz_program program name)
    add_executable(${program} "${fuzz_source_${name}}" ${ARGN})
    ifcore_configure_target(${program})
    set_target_properties(${program} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/fuzzers")
    if(name STREQUAL "programfile")
        target_link_libraries(${program} PRIVATE ifcore_tool_parts_static)
    endif()
    target_link_libraries(${program} PRIVATE fuzz_support)
endfunction()

if(IFCORE_BUILD_FUZZERS)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR "The fuzz targets need clang: use the preset `fuzz`")
    endif()
    add_custom_target(fuzzers)
    foreach(name IN LISTS IFCORE_FUZZ_TARGETS)
        ifcore_add_fuzz_program(fuzz_${name} ${name})
        target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
        add_dependencies(fuzzers fuzz_${name})
    endforeach()
endif()
