# benchmarks/*.cpp: one program, ifcore_bench. benchmarks/load/*.cpp: another one, ifcore_load.

file(GLOB bench_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/benchmarks/*.cpp")
if(NOT bench_sources)
    message(STATUS "benchmarks/ holds no sources: the benchmarks are left out")
    return()
endif()

find_package(benchmark REQUIRED)
add_executable(ifcore_bench ${bench_sources})
ifcore_configure_target(ifcore_bench)
set_target_properties(ifcore_bench PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/benchmarks")
target_link_libraries(ifcore_bench PRIVATE ifcore::ifcore ifcore::host benchmark::benchmark benchmark::benchmark_main)

file(GLOB load_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/benchmarks/load/*.cpp")
add_executable(ifcore_load ${load_sources} "${PROJECT_SOURCE_DIR}/benchmarks/sampleTable.cpp")
ifcore_configure_target(ifcore_load)
set_target_properties(ifcore_load PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/benchmarks")
target_link_libraries(ifcore_load PRIVATE ifcore::ifcore ifcore::host)
