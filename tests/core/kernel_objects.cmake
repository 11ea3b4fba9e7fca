# cmake -DNM=... -DLIST=... -P kernel_objects.cmake: no object named in LIST defines a weak or unique symbol. The linker keeps one copy of such a
# function; if that is the one built for AVX, base code that calls it dies on an older machine.
file(STRINGS ${LIST} objects)
if(NOT objects)
    message(FATAL_ERROR "${LIST} names no kernel object")
endif()
foreach(object IN LISTS objects)
    execute_process(COMMAND ${NM} ${object} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "[^\n]+" lines "${output}")
    # The compiler's own helper that fetches the program counter in i386 code has no vector code in it.
    list(FILTER lines EXCLUDE REGEX "__x86\\.get_pc_thunk\\.")
    list(FILTER lines INCLUDE REGEX " [WVu] ")
    if(lines)
        list(JOIN lines "\n" lines)
        message(SEND_ERROR "${object} defines weak symbols:\n${lines}")
    endif()
endforeach()
