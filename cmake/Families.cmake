# The families, found by their files.
#
#   src/<folder>/*.cpp                    belongs to libtevsq7
#   src/<folder>/<family>.table.h         a family with kernels: a line TEVS_KERNEL_TABLE(<type>, <table>, <2 or 3>[, FMA]) for each table
#   src/<folder>/<family>.kern.cpp        the kernels of a family's table; where it has several tables, <table>.kern.cpp defines each
#
# A kernel source is compiled once for each level from the ABI's base up to the table's highest (or the ABI's).
set(TEVS_KERNEL_OPTIMIZATION -O3 CACHE STRING "Optimisation of the kernel sources; the sanitizer presets take -O1, which builds in a fraction of the time")
set(TEVS_KERNEL_FLAGS ${TEVS_KERNEL_OPTIMIZATION} -fno-tree-vectorize -fno-trapping-math)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # A loop of twenty bytes takes up to 1.8 times as long where it crosses a line of the cache.
    list(APPEND TEVS_KERNEL_FLAGS -falign-loops=32)
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
    set(TEVS_LEVELS 0 1 2)
    # No instruction of 256 bits: it would slow down whatever the process runs in SSE encoding. Copies of 32 bytes are a compiler's first idea of one.
    list(APPEND TEVS_LEVEL2_FLAGS -mprefer-vector-width=128)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        list(APPEND TEVS_LEVEL2_FLAGS -mmove-max=128 -mstore-max=128)
    endif()
else()
    set(TEVS_LEVELS 1 2 3)
endif()

file(GLOB_RECURSE TEVS_SOURCES CONFIGURE_DEPENDS src/*.cpp)
list(FILTER TEVS_SOURCES EXCLUDE REGEX "\\.kern\\.cpp$|/src/tevcore/")

file(GLOB TEVS_KERNEL_TABLES CONFIGURE_DEPENDS src/*/*.table.h)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${TEVS_KERNEL_TABLES})
file(GLOB unclaimed CONFIGURE_DEPENDS src/*/*.kern.cpp)
set(TEVS_KERNEL_OBJECTS)
set(includes)
set(families)

# Compiles <source> at each level up to <top>. FMA lets level 2 use fused multiply-add where the source writes fma().
function(tevs_kernels source top fma)
    get_filename_component(name ${source} NAME_WE)
    foreach(level IN LISTS TEVS_LEVELS)
        if(level GREATER top)
            break()
        endif()
        set(object tevs_${name}_level${level})
        add_library(${object} OBJECT ${source})
        target_compile_definitions(${object} PRIVATE TEVS_LEVEL=${level})
        target_compile_options(${object} PRIVATE ${TEVS_FLOAT_FLAGS} ${TEVS_KERNEL_FLAGS} ${TEVS_LEVEL${level}_FLAGS})
        if(fma AND level EQUAL 2)
            target_compile_options(${object} PRIVATE -mfma)
        endif()
        target_include_directories(${object} PRIVATE include src)
        list(APPEND TEVS_KERNEL_OBJECTS $<TARGET_OBJECTS:${object}>)
    endforeach()
    set(TEVS_KERNEL_OBJECTS ${TEVS_KERNEL_OBJECTS} PARENT_SCOPE)
endfunction()

foreach(header IN LISTS TEVS_KERNEL_TABLES)
    string(REPLACE .table.h .kern.cpp family_source ${header})
    get_filename_component(folder ${header} DIRECTORY)
    file(RELATIVE_PATH include ${PROJECT_SOURCE_DIR}/src ${header})
    string(APPEND includes "#include \"${include}\"\n")
    file(STRINGS ${header} tables REGEX "^TEVS_KERNEL_TABLE")
    foreach(table IN LISTS tables)
        if(NOT table MATCHES "^TEVS_KERNEL_TABLE\\((.+), ([A-Za-z0-9_]+), ([23])(, FMA)?\\)$")
            message(FATAL_ERROR "${header}: not TEVS_KERNEL_TABLE(<type>, <table>, <2 or 3>[, FMA]): ${table}")
        endif()
        set(type ${CMAKE_MATCH_1})
        set(name ${CMAKE_MATCH_2})
        set(top ${CMAKE_MATCH_3})
        set(fma ${CMAKE_MATCH_4})
        set(source ${folder}/${name}.kern.cpp)
        if(NOT source IN_LIST unclaimed)
            set(source ${family_source})
        endif()
        list(REMOVE_ITEM unclaimed ${source})
        tevs_kernels(${source} ${top} "${fma}")
        string(APPEND families " \\\n    X(${type}, ${name})")
    endforeach()
endforeach()
if(unclaimed)
    message(FATAL_ERROR "Kernel sources that no TEVS_KERNEL_TABLE in a *.table.h beside them stands for: ${unclaimed}")
endif()

# What dispatch.cpp walks.
set(TEVS_GENERATED_DIR ${PROJECT_BINARY_DIR}/generated)
file(CONFIGURE OUTPUT ${TEVS_GENERATED_DIR}/core/simd/families.h @ONLY CONTENT
"// Made by cmake/Families.cmake: every kernel table, and the list of them all.
#pragma once

@includes@
#define TEVS_FAMILIES(X)@families@
")
