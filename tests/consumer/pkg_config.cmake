# Copyright (c) 2026 the qxdraw authors
# SPDX-License-Identifier: MIT

# Compiles SOURCE into PROGRAM with nothing but what pkg-config answers about the installed library
# in LIBRARY_DIR, and has CHECK_OUTPUT look at what the program prints.

set(ENV{PKG_CONFIG_PATH} ${LIBRARY_DIR}/pkgconfig)
execute_process(COMMAND ${PKG_CONFIG} --cflags --libs qxdraw
  OUTPUT_VARIABLE answer OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(answer UNIX_COMMAND "${answer}")
separate_arguments(flags UNIX_COMMAND "${CXX_FLAGS}")

execute_process(COMMAND ${CXX} -std=c++20 ${flags} ${SOURCE} -o ${PROGRAM} ${answer}
  COMMAND_ERROR_IS_FATAL ANY)
set(ENV{LD_LIBRARY_PATH} ${LIBRARY_DIR})
execute_process(COMMAND ${CHECK_OUTPUT} ${PROGRAM} COMMAND_ERROR_IS_FATAL ANY)
