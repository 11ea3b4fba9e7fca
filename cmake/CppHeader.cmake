# tevs.hpp, made of the C headers. Without Python there is the C interface alone.
find_package(Python3 COMPONENTS Interpreter)
if(NOT Python3_FOUND)
    message(STATUS "No Python: the C++ header tevs.hpp is not built")
    return()
endif()
set(TEVS_CPP_HEADER ${TEVS_GENERATED_DIR}/cpp/tevs.hpp)
file(GLOB headers CONFIGURE_DEPENDS include/tevs.h include/tevs/*.h)
add_custom_command(OUTPUT ${TEVS_CPP_HEADER} DEPENDS scripts/cpp_header.py ${headers} VERBATIM
                   COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/scripts/cpp_header.py ${PROJECT_SOURCE_DIR}/include ${TEVS_CPP_HEADER})
add_custom_target(tevs_cpp_header ALL DEPENDS ${TEVS_CPP_HEADER})
add_dependencies(tevs tevs_cpp_header)
target_include_directories(tevs INTERFACE $<BUILD_INTERFACE:${TEVS_GENERATED_DIR}/cpp>)
