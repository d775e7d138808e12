# benchmarks/*.cpp: one program, ifcore_bench. With IFCORE_BENCHMARK_PEERS the same program holds benchmarks/peers/*.cpp:
# other libraries at the same work. benchmarks/programs/*.cpp: each a program of its own, ifcore_<stem>.
# benchmarks/load/*.cpp: ifcore_load.

file(GLOB bench_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/benchmarks/*.cpp")
if(NOT bench_sources)
    message(STATUS "benchmarks/ holds no sources: the benchmarks are left out")
    return()
endif()

find_package(benchmark REQUIRED)

# What benchmarks and programs share.
set(bench_samples "${PROJECT_SOURCE_DIR}/benchmarks/sampleTable.cpp" "${PROJECT_SOURCE_DIR}/benchmarks/oldArchives.cpp")
list(REMOVE_ITEM bench_sources ${bench_samples})
add_library(ifcore_bench_samples OBJECT ${bench_samples})
ifcore_configure_target(ifcore_bench_samples)
target_link_libraries(ifcore_bench_samples PUBLIC ifcore::ifcore ifcore::host)
target_include_directories(ifcore_bench_samples PUBLIC "${PROJECT_SOURCE_DIR}/benchmarks")

add_executable(ifcore_bench ${bench_sources})
ifcore_configure_target(ifcore_bench)
set_target_properties(ifcore_bench PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/benchmarks")
target_link_libraries(ifcore_bench PRIVATE ifcore_bench_samples benchmark::benchmark)

if(IFCORE_BENCHMARK_PEERS)
    find_package(Protobuf REQUIRED)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(libyang REQUIRED IMPORTED_TARGET libyang)
    find_package(Boost REQUIRED COMPONENTS serialization)
    find_package(cereal REQUIRED)

    # Generated code has warnings that are not ours.
    protobuf_generate_cpp(records_source records_header "${PROJECT_SOURCE_DIR}/benchmarks/peers/records.proto")
    add_library(ifcore_bench_records OBJECT "${records_source}" "${records_header}")
    target_include_directories(ifcore_bench_records SYSTEM PUBLIC "${CMAKE_CURRENT_BINARY_DIR}")
    target_link_libraries(ifcore_bench_records PUBLIC protobuf::libprotobuf)

    file(GLOB peer_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/benchmarks/peers/*.cpp")
    target_sources(ifcore_bench PRIVATE ${peer_sources})
    target_link_libraries(ifcore_bench PRIVATE ifcore_bench_records PkgConfig::libyang Boost::serialization cereal::cereal)
endif()

file(GLOB bench_programs CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/benchmarks/programs/*.cpp")
include(CheckIncludeFileCXX)
check_include_file_cxx("valgrind/callgrind.h" IFCORE_HAVE_CALLGRIND)
if(NOT IFCORE_HAVE_CALLGRIND)
    message(STATUS "valgrind/callgrind.h was not found: ifcore_instructionCounts is left out")
    list(FILTER bench_programs EXCLUDE REGEX "/instructionCounts\\.cpp$")
endif()
foreach(source IN LISTS bench_programs)
    get_filename_component(stem "${source}" NAME_WE)
    add_executable(ifcore_${stem} "${source}")
    ifcore_configure_target(ifcore_${stem})
    set_target_properties(ifcore_${stem} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/benchmarks")
    target_link_libraries(ifcore_${stem} PRIVATE ifcore_bench_samples)
endforeach()

file(GLOB load_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/benchmarks/load/*.cpp")
add_executable(ifcore_load ${load_sources})
ifcore_configure_target(ifcore_load)
set_target_properties(ifcore_load PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/benchmarks")
target_link_libraries(ifcore_load PRIVATE ifcore_bench_samples)
