# benchmarks/*.cpp: one program, ifcore_bench.

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
