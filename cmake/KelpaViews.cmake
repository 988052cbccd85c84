# How a folder of src/views is built: a static library and, where QML sees its types, a QML module of
# the same folder.

# kelpa_views_library(<folder> SOURCES … [PUBLIC …] [PRIVATE …]): the library kelpa_views_<folder>.
function(kelpa_views_library folder)
    kelpa_library(views_${folder} ${ARGN} MOC)
endfunction()

# kelpa_views_module(<folder> URI <uri> [IMPORTS <folder>…] [QML …]): the folder's QML module. It may
# import the modules of the folders that IMPORTS names, whose types its own refer to.
#
# Each module's types are registered by a function that ViewTypes.cpp calls: without plugins nothing
# else would keep the linker from dropping them.
function(kelpa_views_module folder)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "URI" "IMPORTS;QML")
    set(target kelpa_views_${folder})
    # The generated registration includes headers by their file name alone.
    target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
    # Compiled ahead in what people run; a developer's build is quicker without.
    if(CMAKE_BUILD_TYPE STREQUAL "Debug")
        set(compilation NO_CACHEGEN)
    endif()
    set(dependencies QtQuick)
    foreach(import ${ARG_IMPORTS})
        get_target_property(uri kelpa_views_${import} QT_QML_MODULE_URI)
        list(APPEND dependencies ${uri})
    endforeach()
    string(REPLACE "." "/" path "${ARG_URI}")
    qt_add_qml_module(${target}
        URI ${ARG_URI}
        VERSION 1.0
        RESOURCE_PREFIX /qt/qml
        OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/qml/${path}"
        IMPORT_PATH "${PROJECT_BINARY_DIR}/qml"
        DEPENDENCIES ${dependencies}
        NO_PLUGIN
        ${compilation}
        QML_FILES ${ARG_QML})
    kelpa_join_compiled_qml(${target})

    # What reads QML reads the type descriptions of all modules that it imports, too.
    foreach(import ${ARG_IMPORTS})
        add_dependencies(${target} kelpa_views_${import}_qmltyperegistration)
    endforeach()
    if(ARG_QML)
        add_dependencies(kelpa_views_qmllint ${target}_qmllint)
    endif()
endfunction()

# The C++ that is made from a module's QML files is compiled as one source: each of them would read
# the same headers again. It is not written for our warnings.
function(kelpa_join_compiled_qml target)
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "/qmlcache/.*_qml\\.cpp$")
    if(NOT sources)
        return()
    endif()
    set(includes)
    foreach(source ${sources})
        string(APPEND includes "#include \"${source}\"\n")
    endforeach()
    set(joined "${CMAKE_CURRENT_BINARY_DIR}/${target}_qml.cpp")
    file(CONFIGURE OUTPUT "${joined}" CONTENT "${includes}" @ONLY)
    set_source_files_properties(${sources} PROPERTIES HEADER_FILE_ONLY ON)
    set_source_files_properties("${joined}" PROPERTIES
        COMPILE_OPTIONS -w
        SKIP_UNITY_BUILD_INCLUSION ON
        SKIP_PRECOMPILE_HEADERS ON
        OBJECT_DEPENDS "${sources}")
    target_sources(${target} PRIVATE "${joined}")
endfunction()
