# The two interfaces as a whole: every declared function links from C, the libraries export what is declared and nothing else, every header is named where
# a reader looks, no kernel object holds a symbol that could stand in for code of another level, and no 32-bit code is on more than 128 bits.
set(exports_dir ${CMAKE_CURRENT_LIST_DIR})
set(exports_work ${CMAKE_CURRENT_BINARY_DIR}/exports)
file(GLOB public_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/*.h ${PROJECT_SOURCE_DIR}/include/tevs/*.h)

set(tevs_soname libtevsq7.so.5)
set(tevcore_soname libtevcore.so.5)
foreach(library tevs tevcore)
    set(names ${exports_work}/${library}.names)
    set(source ${exports_work}/${library}_links.c)
    set(functions ${exports_work}/${library}_functions.cpp)
    add_custom_command(OUTPUT ${names} ${source} ${functions}
                       COMMAND ${CMAKE_COMMAND} -DCC=${CMAKE_C_COMPILER} -DINCLUDE=${PROJECT_SOURCE_DIR}/include -DHEADER=${library}.h -DNAMES=${names}
                               -DSOURCE=${source} -DFUNCTIONS=${functions} -P ${exports_dir}/declared.cmake
                       DEPENDS ${exports_dir}/declared.cmake ${public_headers} VERBATIM)
    add_executable(core_${library}_links ${source})
    target_link_libraries(core_${library}_links PRIVATE ${library})
    add_test(NAME core/${library}.links COMMAND core_${library}_links)

    add_test(NAME core/${library}.exports COMMAND ${CMAKE_COMMAND} -DNM=${CMAKE_NM} -DREADELF=${CMAKE_READELF} -DLIBRARY=$<TARGET_FILE:${library}>
             -DSONAME=${${library}_soname} -DNAMES=${names} -P ${exports_dir}/exported.cmake)
endforeach()

# A table of some hundred types of functions, which takes the compiler minutes where each of its instructions is optimised or watched.
add_library(tevs_functions OBJECT EXCLUDE_FROM_ALL ${exports_work}/tevs_functions.cpp)
target_include_directories(tevs_functions PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(tevs_functions PRIVATE tevs tevs_gtest)
foreach(test core_environment_test core_record_test)
    target_link_libraries(${test} PRIVATE tevs_functions)
endforeach()
set_source_files_properties(${exports_work}/tevs_functions.cpp PROPERTIES COMPILE_OPTIONS "-O1;-fno-sanitize=all")

file(GENERATE OUTPUT ${exports_work}/kernel_objects.txt CONTENT "$<JOIN:${TEVS_KERNEL_OBJECTS},\n>\n")
add_test(NAME core/kernel_objects COMMAND ${CMAKE_COMMAND} -DNM=${CMAKE_NM} -DLIST=${exports_work}/kernel_objects.txt -P ${exports_dir}/kernel_objects.cmake)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    add_test(NAME core/registers COMMAND ${CMAKE_COMMAND} -DOBJDUMP=${CMAKE_OBJDUMP} -DTEVS=$<TARGET_FILE:tevs> -DTEVCORE=$<TARGET_FILE:tevcore>
             -P ${exports_dir}/registers.cmake)
endif()

add_test(NAME core/listed COMMAND ${CMAKE_COMMAND} -DSOURCE=${PROJECT_SOURCE_DIR} -P ${exports_dir}/listed.cmake)
