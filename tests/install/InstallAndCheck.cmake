# Installs BUILD into the emptied folder PREFIX and checks that all that users rely on is there and runs.

file(REMOVE_RECURSE "${PREFIX}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${PREFIX}"
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

foreach(file IN ITEMS
        "${LIBDIR}/libifcore.so" "${LIBDIR}/libifcore.so.1" "${LIBDIR}/libifcore.so.1.0.0"
        "${LIBDIR}/libifhost.so" "${LIBDIR}/libifhost.so.1" "${LIBDIR}/libifhost.so.1.0.0"
        "${LIBDIR}/cmake/ifcore/ifcoreConfig.cmake" "${LIBDIR}/pkgconfig/ifcore.pc")
    if(NOT EXISTS "${PREFIX}/${file}")
        message(FATAL_ERROR "Not installed: ${file}")
    endif()
endforeach()

# Every header of the tree but the private ones, no other, and none that needs one of those or only compiles behind
# another one.
foreach(pair IN ITEMS "common/ifcore;ifcore" "common/include;ifhost")
    list(GET pair 0 folder)
    list(GET pair 1 installed)
    file(GLOB expected RELATIVE "${SOURCE}/${folder}" "${SOURCE}/${folder}/*.hpp" "${SOURCE}/${folder}/*.def")
    list(FILTER expected EXCLUDE REGEX "^(${PRIVATE_HEADERS})\\.hpp$")
    file(GLOB_RECURSE found RELATIVE "${PREFIX}/include/${installed}" "${PREFIX}/include/${installed}/*")
    list(SORT expected)
    list(SORT found)
    if(NOT expected STREQUAL found)
        message(FATAL_ERROR "include/${installed} holds ${found}\ninstead of ${expected}")
    endif()
    foreach(header IN LISTS expected)
        if(header MATCHES "\\.hpp$")
            file(WRITE "${PREFIX}/header.cpp" "#include <${installed}/${header}>\n")
            execute_process(
                COMMAND "${CXX}" -std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Werror
                    "-I${PREFIX}/include" "-I${PREFIX}/include/ifhost" "${PREFIX}/header.cpp"
                RESULT_VARIABLE status)
            if(NOT status EQUAL 0)
                message(FATAL_ERROR "<${installed}/${header}> does not compile alone")
            endif()
        endif()
    endforeach()
endforeach()
file(REMOVE "${PREFIX}/header.cpp")

if(PROGRAM)
    execute_process(COMMAND "${PREFIX}/bin/ifcore" --version OUTPUT_VARIABLE version COMMAND_ERROR_IS_FATAL ANY)
    if(NOT version MATCHES "1\\.0\\.0")
        message(FATAL_ERROR "ifcore --version says: ${version}")
    endif()
endif()
