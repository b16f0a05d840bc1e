# quorvin_library(NAME SOURCES file... [USES target...] [NEEDS target...])
#
# One static library: the folder it is declared in. USES lists the targets that its headers expose,
# NEEDS those that only its sources use.
#
# Headers are included by their path below src/ ("platform/Scheduler.h"). A target can include the
# headers of its own folder and of what it lists, and of nothing else: each folder exports a
# directory of links to just its own headers, so an include that climbs a layer does not compile.
function(quorvin_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES;NEEDS")
    quorvin_export_headers(export_dir)
    add_library(${name} STATIC ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_include_directories(${name} PUBLIC "${export_dir}")
    target_link_libraries(${name} PUBLIC ${arg_USES} PRIVATE ${arg_NEEDS})
    target_precompile_headers(${name} REUSE_FROM quorvin_precompiled)
endfunction()

# quorvin_export_headers(RESULT [SUBFOLDER...])
#
# Makes the directory of links for the headers of the current folder, and of those below it that
# belong to the same target, and returns its path.
function(quorvin_export_headers result)
    file(RELATIVE_PATH folder "${CMAKE_SOURCE_DIR}/src" "${CMAKE_CURRENT_SOURCE_DIR}")
    string(REPLACE "/" "-" flat "${folder}")
    set(export_dir "${CMAKE_BINARY_DIR}/include/${flat}")
    file(REMOVE_RECURSE "${export_dir}")
    file(MAKE_DIRECTORY "${export_dir}/${folder}")
    list(TRANSFORM ARGN APPEND "/*.h" OUTPUT_VARIABLE patterns)
    file(GLOB headers CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" *.h ${patterns})
    foreach(header IN LISTS headers)
        get_filename_component(subfolder "${header}" DIRECTORY)
        file(MAKE_DIRECTORY "${export_dir}/${folder}/${subfolder}")
        file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}/${header}" "${export_dir}/${folder}/${header}"
             SYMBOLIC)
    endforeach()
    set(${result} "${export_dir}" PARENT_SCOPE)
endfunction()
