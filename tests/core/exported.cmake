# cmake -DNM=... -DREADELF=... -DLIBRARY=... -DSONAME=... -DNAMES=... -P exported.cmake
#
# What the dynamic linker sees of LIBRARY: its soname, no need of the C++ runtime, and as symbols the lines of NAMES.
execute_process(COMMAND ${READELF} -d ${LIBRARY} OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
string(FIND "${dynamic}" "[${SONAME}]" at)
if(at EQUAL -1 OR dynamic MATCHES "NEEDED[^\n]*(libstdc|libgcc_s)")
    message(SEND_ERROR "${LIBRARY} is not named ${SONAME}, or needs the C++ runtime:\n${dynamic}")
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
