# The library within another project's build: as it comes, and with all that is built on its own.
set(package_options -DCMAKE_C_COMPILER=${CMAKE_C_COMPILER} -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER} "-DCMAKE_C_FLAGS=${CMAKE_C_FLAGS}"
                    "-DCMAKE_CXX_FLAGS=${CMAKE_CXX_FLAGS}")
foreach(full OFF ON)
    add_test(NAME package/parent.${full} COMMAND ${CMAKE_CTEST_COMMAND} --build-and-test ${CMAKE_CURRENT_LIST_DIR}/parent ${PROJECT_BINARY_DIR}/parent.${full}
             --build-generator ${CMAKE_GENERATOR} --build-target companion
             --build-options -DTEVS=${PROJECT_SOURCE_DIR} -DFULL=${full} -DTEVS_GTEST_SOURCE=${TEVS_GTEST_SOURCE} ${package_options}
             --test-command ${CMAKE_CTEST_COMMAND} --output-on-failure -R "^(optimised|companion)$")
endforeach()
if(NOT TEVS_INSTALL)
    return()
endif()

# The installed package, proven from outside: installs into a prefix of its own, moves it, and uses it through CMake and by hand.
set(package_work ${PROJECT_BINARY_DIR}/package)
set(package_prefix ${package_work}/moved)

add_test(NAME package/install COMMAND ${CMAKE_COMMAND} -DBUILD=${PROJECT_BINARY_DIR} -DWORK=${package_work} -DPREFIX=${package_prefix}
         -P ${CMAKE_CURRENT_LIST_DIR}/install.cmake)
set_tests_properties(package/install PROPERTIES FIXTURES_SETUP package)

add_test(NAME package/find_package COMMAND ${CMAKE_CTEST_COMMAND} --build-and-test ${CMAKE_CURRENT_LIST_DIR} ${package_work}/build
         --build-generator ${CMAKE_GENERATOR}
         --build-options -DCMAKE_PREFIX_PATH=${package_prefix} ${package_options}
         --test-command ${CMAKE_CTEST_COMMAND} --output-on-failure)

add_test(NAME package/by_hand COMMAND ${CMAKE_COMMAND} -DPREFIX=${package_prefix} -DLIBDIR=${package_prefix}/${CMAKE_INSTALL_LIBDIR} -DCC=${CMAKE_C_COMPILER}
         "-DFLAGS=${CMAKE_C_FLAGS}" -DSOURCE=${PROJECT_SOURCE_DIR} -DWORK=${package_work}/by_hand -P ${CMAKE_CURRENT_LIST_DIR}/by_hand.cmake)
set_tests_properties(package/find_package package/by_hand PROPERTIES FIXTURES_REQUIRED package TIMEOUT 900)
