# How every target of the project is built: the language, the warnings, the sanitizers, and one
# static library per folder of src/.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE}")
endif()

# The presets switch it on. Other compilers than the project's own may warn of more.
option(KELPA_WARNINGS_ARE_ERRORS "Whether a warning ends the build" OFF)

add_library(kelpa_options INTERFACE)
target_compile_options(kelpa_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion
    # Where tests are joined, one's constants are not shadowed by another's variables.
    $<IF:$<BOOL:$<TARGET_PROPERTY:KELPA_JOINED_TESTS>>,-Wshadow=local,-Wshadow> -Wsuggest-override
    $<$<BOOL:${KELPA_WARNINGS_ARE_ERRORS}>:-Werror>)
# Some libraries ask for -pthread; a precompiled header fits only sources that are
# compiled with the same option.
target_compile_options(kelpa_options INTERFACE -pthread)
target_compile_definitions(kelpa_options INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT KELPA_SANITIZE)
    # What other people run is hardened as Debian's own programs are, and names no folder of the
    # machine that it was built on.
    add_compile_options(-fstack-protector-strong -Wformat -Werror=format-security
                        -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2
                        "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")
    add_link_options(-Wl,-z,relro,-z,now)
endif()
if(KELPA_SANITIZE)
    # Frames are kept so that a report names its callers. What the sanitizers put in makes the
    # compiler warn of values that it takes for unset.
    add_compile_options(-fsanitize=${KELPA_SANITIZE} -fno-omit-frame-pointer
                        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    add_link_options(-fsanitize=${KELPA_SANITIZE})
    if(KELPA_SANITIZE MATCHES "undefined")
        # RapidJSON adds to a null pointer while its stack is empty, which Clang reports and GCC does
        # not.
        add_compile_options(-fno-sanitize-recover=undefined
                            $<$<OR:$<CXX_COMPILER_ID:Clang>,$<C_COMPILER_ID:Clang>>:-fno-sanitize=pointer-overflow>)
    endif()
endif()
if(KELPA_FUZZ)
    # Counts the edges of all code, by which libFuzzer finds its way.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# A developer waits for the linker after each change, and nobody else runs what it makes.
find_program(KELPA_QUICK_LINKER ld.lld)
if(CMAKE_BUILD_TYPE STREQUAL "Debug" AND KELPA_QUICK_LINKER)
    add_link_options(-fuse-ld=lld)
endif()

# Reading headers is most of a build, so few compilations read them: sources are joined into batches
# (unity builds), and what most of them include is read once for all (a precompiled header).
option(KELPA_FAST_BUILD "Join sources and precompile headers" ON)
set(KELPA_UNITY_BATCH 8 CACHE STRING "How many sources are compiled as one")

# kelpa_fast_build(<target> [PRECOMPILED <owner>]): the target takes part in that. The owner is the
# library whose precompiled header it uses.
function(kelpa_fast_build target)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "PRECOMPILED" "")
    if(NOT KELPA_FAST_BUILD)
        return()
    endif()
    set_target_properties(${target} PROPERTIES
        UNITY_BUILD ON
        UNITY_BUILD_BATCH_SIZE ${KELPA_UNITY_BATCH})
    # Joined sources look to the compiler like headers with unnamed namespaces in them.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
    if(ARG_PRECOMPILED)
        target_precompile_headers(${target} REUSE_FROM ${ARG_PRECOMPILED})
    endif()
endfunction()

# kelpa_precompiled(<name> HEADERS … LINK …): a library that is nothing but a precompiled header.
function(kelpa_precompiled name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "HEADERS;LINK")
    if(NOT KELPA_FAST_BUILD)
        return()
    endif()
    set(source "${PROJECT_BINARY_DIR}/${name}.cpp")
    if(NOT EXISTS "${source}")
        file(WRITE "${source}" "")
    endif()
    add_library(${name} OBJECT "${source}")
    target_link_libraries(${name} PRIVATE kelpa_options ${ARG_LINK})
    target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

# kelpa_library(<folder> SOURCES … [PUBLIC …] [PRIVATE …] [MOC]): the library kelpa_<folder> of one
# folder; MOC where it declares QObjects.
# Headers are included by their path below src/, as in "model/Goal.h".
function(kelpa_library name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "MOC" "" "SOURCES;PUBLIC;PRIVATE")
    add_library(kelpa_${name} STATIC ${ARG_SOURCES})
    target_include_directories(kelpa_${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    set_target_properties(kelpa_${name} PROPERTIES AUTOMOC ${ARG_MOC})
    target_link_libraries(kelpa_${name} PUBLIC ${ARG_PUBLIC} PRIVATE kelpa_options ${ARG_PRIVATE})
    if(TARGET kelpa_layering)
        add_dependencies(kelpa_${name} kelpa_layering)
    endif()
    kelpa_fast_build(kelpa_${name} PRECOMPILED kelpa_precompiled_core)
endfunction()
