# RapidJSON has headers only and is the same for every target. It is reached through a folder of its own, so that a cross
# build never sees the host's other headers.
find_path(RAPIDJSON_INCLUDE_DIR rapidjson/reader.h REQUIRED)
set(third_party ${CMAKE_BINARY_DIR}/third_party)
file(MAKE_DIRECTORY ${third_party})
file(CREATE_LINK ${RAPIDJSON_INCLUDE_DIR}/rapidjson ${third_party}/rapidjson SYMBOLIC)
add_library(rapidjson INTERFACE)
target_include_directories(rapidjson SYSTEM INTERFACE ${third_party})
# A document keeps doubles, and 32-bit processors that load them as one value need them at multiples of eight bytes,
# where RapidJSON's own choice is four.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    target_compile_options(rapidjson INTERFACE "-DRAPIDJSON_ALIGN(x)=(((x)+7u)&~7u)")
endif()
