# cmake -DLIBDIR=... -DCC=... -DFLAGS=... -DEXAMPLES=... -DWORK=... -P pkg_config.cmake
#
# Compiles and links use.c and each example against the installed package as a caller would by hand:
#
#     cc -O2 source.c $(pkg-config --cflags --libs tevs tevcore) -lm
#
# and runs use.c.
set(ENV{PKG_CONFIG_LIBDIR} ${LIBDIR}/pkgconfig)
execute_process(COMMAND pkg-config --cflags --libs tevs tevcore OUTPUT_VARIABLE package OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(package UNIX_COMMAND "${package}")
separate_arguments(flags UNIX_COMMAND "${FLAGS}")
file(MAKE_DIRECTORY ${WORK})

file(GLOB sources ${CMAKE_CURRENT_LIST_DIR}/use.c ${EXAMPLES}/*.c)
foreach(source IN LISTS sources)
    get_filename_component(name ${source} NAME_WE)
    execute_process(COMMAND ${CC} ${flags} -std=c11 -O2 -Wall -Wextra -Werror ${source} -o ${WORK}/${name} ${package} -lm COMMAND_ERROR_IS_FATAL ANY)
endforeach()

set(ENV{LD_LIBRARY_PATH} ${LIBDIR})
execute_process(COMMAND ${WORK}/use COMMAND_ERROR_IS_FATAL ANY)
