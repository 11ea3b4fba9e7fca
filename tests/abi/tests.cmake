# Programs built with the committed interface run with this one: abidiff compares two libraries made of the descriptions, of the ABI of this build. That the real libraries
# export what the headers declare is for core/*.exports to say.
find_package(Python3 COMPONENTS Interpreter)
find_program(TEVS_ABIDIFF abidiff)
mark_as_advanced(TEVS_ABIDIFF)
add_test(NAME core/abi COMMAND ${CMAKE_COMMAND} "-DABIDIFF=${TEVS_ABIDIFF}" "-DPYTHON=${Python3_EXECUTABLE}" -DCC=${CMAKE_C_COMPILER} -DINCLUDE=${PROJECT_SOURCE_DIR}/include
         -DWORK=${CMAKE_CURRENT_BINARY_DIR}/abi -DBITS=$<IF:$<EQUAL:${CMAKE_SIZEOF_VOID_P},4>,32,64> -P ${CMAKE_CURRENT_LIST_DIR}/abi.cmake)
set_tests_properties(core/abi PROPERTIES SKIP_REGULAR_EXPRESSION "^skipped: ")
