# Compiles SOURCE with what pkg-config says about the installation in PREFIX, and runs it.

set(ENV{PKG_CONFIG_PATH} "${PREFIX}/${LIBDIR}/pkgconfig")
set(ENV{LD_LIBRARY_PATH} "${PREFIX}/${LIBDIR}")
execute_process(COMMAND pkg-config --cflags --libs ifcore
    OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
execute_process(COMMAND "${CXX}" -std=c++17 -Wall -Wextra -Wpedantic -Werror "${SOURCE}" -o "${OUTPUT}" ${flags}
    COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${OUTPUT}" COMMAND_ERROR_IS_FATAL ANY)
