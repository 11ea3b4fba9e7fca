# tevs_kernels(<target> <source.kern.cpp> TOP <level> [FMA])
#
# Compiles a kernel source once for each level from the ABI's base up to TOP (or the highest that the ABI has) and adds the objects to <target>.
# FMA lets level 2 use fused multiply-add where the source writes fma(); only for families whose results may differ in rounding between levels.
set(TEVS_KERNEL_OPTIMIZATION -O3 CACHE STRING "Optimisation of the kernel sources; the sanitizer presets take -O1, which builds in a fraction of the time")
set(TEVS_KERNEL_FLAGS ${TEVS_KERNEL_OPTIMIZATION} -fno-tree-vectorize -fno-trapping-math)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Predictive commoning turns unrolled filter loops into spills; the copy loops of short tails are better than a call of memcpy.
    list(APPEND TEVS_KERNEL_FLAGS -fno-predictive-commoning -fno-tree-loop-distribute-patterns -Wno-psabi -Wno-maybe-uninitialized)
endif()

set(TEVS_LEVEL0_FLAGS -msse3)
set(TEVS_LEVEL1_FLAGS -msse4.1)
set(TEVS_LEVEL2_FLAGS -mavx2 -mbmi -mbmi2 -mf16c)
set(TEVS_LEVEL3_FLAGS -mavx512f -mavx512bw -mavx512dq -mavx512vl -mbmi -mbmi2 -mfma -mf16c)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    list(APPEND TEVS_LEVEL3_FLAGS -Wno-uninitialized)   # of the compiler's own intrinsics
endif()

if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(TEVS_LEVELS 0 1)
else()
    set(TEVS_LEVELS 1 2 3)
endif()

function(tevs_kernels target source)
    cmake_parse_arguments(PARSE_ARGV 2 arg "FMA" "TOP" "")
    get_filename_component(name ${source} NAME_WE)
    foreach(level IN LISTS TEVS_LEVELS)
        if(level GREATER arg_TOP)
            continue()
        endif()
        set(object ${target}_${name}_level${level})
        add_library(${object} OBJECT ${source})
        target_compile_definitions(${object} PRIVATE TEVS_LEVEL=${level})
        target_compile_options(${object} PRIVATE ${TEVS_FLOAT_FLAGS} ${TEVS_KERNEL_FLAGS} ${TEVS_LEVEL${level}_FLAGS})
        if(arg_FMA AND level EQUAL 2)
            target_compile_options(${object} PRIVATE -mfma)
        endif()
        target_include_directories(${object} PRIVATE ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
        target_sources(${target} PRIVATE $<TARGET_OBJECTS:${object}>)
        set_property(GLOBAL APPEND PROPERTY TEVS_KERNEL_OBJECTS $<TARGET_OBJECTS:${object}>)
    endforeach()
endfunction()
