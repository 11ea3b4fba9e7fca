# Headers, both libraries, the CMake package and the pkg-config files. Everything is found relative to where it lies: a tree can be moved.
include(CMakePackageConfigHelpers)

install(TARGETS tevs tevcore EXPORT tevsTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES include/tevs.h include/tevcore.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/tevs DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/tevs)
install(EXPORT tevsTargets NAMESPACE tevs:: DESTINATION ${package_dir})
configure_package_config_file(cmake/tevsConfig.cmake.in ${PROJECT_BINARY_DIR}/tevsConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tevsConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tevsConfig.cmake ${PROJECT_BINARY_DIR}/tevsConfigVersion.cmake DESTINATION ${package_dir})

# The way from <libdir>/pkgconfig back to the prefix, unless a directory was given as an absolute path.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
    set(TEVS_PC_PREFIX ${CMAKE_INSTALL_PREFIX})
    set(TEVS_PC_LIBDIR ${CMAKE_INSTALL_FULL_LIBDIR})
    set(TEVS_PC_INCLUDEDIR ${CMAKE_INSTALL_FULL_INCLUDEDIR})
else()
    file(RELATIVE_PATH up /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
    string(REGEX REPLACE "/$" "" up ${up})
    set(TEVS_PC_PREFIX "\${pcfiledir}/${up}")
    set(TEVS_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
    set(TEVS_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
foreach(name tevs tevcore)
    configure_file(cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
