# Each setting of TEVS_LEVEL: below the base, each level, above all, and no number at all.
add_executable(core_dispatch_test core/dispatch_test.cpp $<TARGET_OBJECTS:tevs> ${TEVS_KERNEL_OBJECTS})
target_include_directories(core_dispatch_test PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/include ${TEVS_GENERATED_DIR})
target_link_libraries(core_dispatch_test PRIVATE tevcore tevs_gtest OpenMP::OpenMP_CXX)
add_test(NAME core/dispatch COMMAND ${CMAKE_COMMAND} -E env --unset=TEVS_LEVEL $<TARGET_FILE:core_dispatch_test>)
foreach(setting 0 1 2 3 9 11 x)
    add_test(NAME core/dispatch.${setting} COMMAND ${CMAKE_COMMAND} -E env TEVS_LEVEL=${setting} $<TARGET_FILE:core_dispatch_test>)
endforeach()
