# The static libraries: archives of the shared ones' objects, which are position-independent. What they need is the caller's to link.
add_library(tevcore_static STATIC $<TARGET_OBJECTS:tevcore>)
set_target_properties(tevcore_static PROPERTIES OUTPUT_NAME tevcore EXPORT_NAME core_static LINKER_LANGUAGE CXX)
target_link_libraries(tevcore_static INTERFACE ${OpenMP_CXX_LIB_NAMES})

add_library(tevs_static STATIC $<TARGET_OBJECTS:tevs> ${TEVS_KERNEL_OBJECTS})
set_target_properties(tevs_static PROPERTIES OUTPUT_NAME tevsq7 LINKER_LANGUAGE CXX)
target_link_libraries(tevs_static INTERFACE tevcore_static ${OpenMP_CXX_LIB_NAMES} m)
add_custom_command(TARGET tevs_static POST_BUILD VERBATIM
                   COMMAND ${CMAKE_COMMAND} -E create_symlink $<TARGET_FILE_NAME:tevs_static> $<TARGET_FILE_DIR:tevs_static>/libtevs.a)

foreach(library tevs tevcore)
    target_include_directories(${library}_static INTERFACE $<TARGET_PROPERTY:${library},INTERFACE_INCLUDE_DIRECTORIES>)
endforeach()
add_library(tevs::tevs_static ALIAS tevs_static)
add_library(tevs::core_static ALIAS tevcore_static)
