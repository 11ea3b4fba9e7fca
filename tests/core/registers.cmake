# cmake -DOBJDUMP=... -DTEVS=... -DTEVCORE=... -P registers.cmake: no instruction of the 32-bit libraries is on more than 128 bits, whatever the compiler makes of
# copies, of types wider than a register and of the ends of functions. One such, once run, slows the SSE code of the whole process, the caller's own included.
execute_process(COMMAND ${OBJDUMP} -d --no-show-raw-insn ${TEVS} ${TEVCORE}
                COMMAND awk "/>:$/ { name = $2 } /vfmadd.*%xmm/ { ++known } /%[yz]mm|vzero/ && !(name in told) { told[name]; print name $0 } END { if (!known) print \"no code of level 2\" }"
                OUTPUT_VARIABLE wide COMMAND_ERROR_IS_FATAL ANY)
if(wide)
    message(FATAL_ERROR "${wide}")
endif()
