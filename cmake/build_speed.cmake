# What makes building faster, and changes nothing of what is built.

# Compiling again what was compiled before is left to ccache where it is installed. It has to be told that precompiled
# headers are to be trusted.
find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(launcher ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
    set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif()
# It needs this option, which stands in the debugging information: equal bytes come with and without ccache.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-fpch-preprocess>)
endif()

# GCC collects its garbage more often than the memory of today's machines asks for: a sixth of its time goes there.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    add_compile_options(--param=ggc-min-heapsize=524288 --param=ggc-min-expand=1000)
endif()

# The headers of the standard library take longer to read than most sources: they are read once for all static libraries.
set(standard_headers
    <algorithm>
    <array>
    <bit>
    <charconv>
    <cstdint>
    <cstring>
    <filesystem>
    <fstream>
    <functional>
    <map>
    <memory>
    <optional>
    <set>
    <span>
    <stdexcept>
    <string>
    <string_view>
    <utility>
    <variant>
    <vector>
)
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/standard_headers.cpp CONTENT "")
add_library(standard_headers STATIC ${CMAKE_BINARY_DIR}/standard_headers.cpp)
target_precompile_headers(standard_headers PRIVATE ${standard_headers})

# With precompiled headers, and when it optimises, the compiler sees overruns in the standard library's own strings where
# there are none.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    set(no_false_warnings
        -Wno-array-bounds
        -Wno-maybe-uninitialized
        -Wno-restrict
        -Wno-stringop-overflow
        -Wno-stringop-overread
    )
endif()

# bsp_use_standard_headers(TARGETS...)
# The sources of these static libraries find the standard library read already.
function(bsp_use_standard_headers)
    foreach(target ${ARGN})
        target_precompile_headers(${target} REUSE_FROM standard_headers)
        target_compile_options(${target} PRIVATE ${no_false_warnings})
    endforeach()
endfunction()

# bsp_precompile_headers(TARGET HEADERS...)
# The sources of this static library find the standard library and these headers read already. It pays for a header that
# most of them need and that takes long to read.
function(bsp_precompile_headers target)
    target_precompile_headers(${target} PRIVATE ${standard_headers} ${ARGN})
    target_compile_options(${target} PRIVATE ${no_false_warnings})
endfunction()
