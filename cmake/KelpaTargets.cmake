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
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsuggest-override
    $<$<BOOL:${KELPA_WARNINGS_ARE_ERRORS}>:-Werror>)
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
                        -Wno-maybe-uninitialized)
    add_link_options(-fsanitize=${KELPA_SANITIZE})
    if(KELPA_SANITIZE MATCHES "undefined")
        # RapidJSON counts the leading zeros of 0 where any count does.
        add_compile_options(-fno-sanitize-recover=undefined -fno-sanitize=builtin)
    endif()
endif()

# kelpa_library(<room> SOURCES … [PUBLIC …] [PRIVATE …] [MOC]): the library kelpa_<room> of one
# folder; MOC where it declares QObjects.
# Headers are included by their path below src/, as in "model/Goal.h".
function(kelpa_library name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "MOC" "" "SOURCES;PUBLIC;PRIVATE")
    add_library(kelpa_${name} STATIC ${ARG_SOURCES})
    target_include_directories(kelpa_${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    set_target_properties(kelpa_${name} PROPERTIES AUTOMOC ${ARG_MOC})
    target_link_libraries(kelpa_${name} PUBLIC ${ARG_PUBLIC} PRIVATE kelpa_options ${ARG_PRIVATE})
endfunction()
