# cmake -DNM=... -DREADELF=... -DLIBRARY=... -DSONAME=... -DNAMES=... -P exported.cmake
#
# What the dynamic linker sees of LIBRARY: its soname, no need of the C++ runtime, and as symbols the lines of NAMES.
execute_process(COMMAND ${READELF} -d ${LIBRARY} OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
string(FIND "${dynamic}" "[${SONAME}]" at)
if(at EQUAL -1 OR dynamic MATCHES "NEEDED[^\n]*(libstdc|libgcc_s)")
    message(SEND_ERROR "${LIBRARY} is not named ${SONAME}, or needs the C++ runtime:\n${dynamic}")
endif()

# Thread-local data that the loader does not keep in every thread is allocated by a thread's first call, and the process ends where there is no memory for it.
execute_process(COMMAND ${NM} -D --undefined-only ${LIBRARY} OUTPUT_VARIABLE undefined COMMAND_ERROR_IS_FATAL ANY)
if(undefined MATCHES "tls_get_addr" AND NOT undefined MATCHES "__[at]san_")
    message(SEND_ERROR "${LIBRARY} takes memory for thread-local data")
endif()

execute_process(COMMAND ${NM} -D --defined-only ${LIBRARY} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[0-9a-f]+ [A-Za-z] [^\n]+" lines "${output}")
list(FILTER lines EXCLUDE REGEX "^[0-9a-f]+ A ")   # the version node
list(TRANSFORM lines REPLACE "^[0-9a-f]+ [A-Za-z] " "")
list(TRANSFORM lines REPLACE "@.*$" "" OUTPUT_VARIABLE exported)
file(STRINGS ${NAMES} declared)

set(missing ${declared})
list(REMOVE_ITEM missing ${exported})
set(stray ${exported})
list(REMOVE_ITEM stray ${declared})
if(missing OR stray)
    message(FATAL_ERROR "${LIBRARY}\ndeclared, not exported: ${missing}\nexported, not declared: ${stray}")
endif()
