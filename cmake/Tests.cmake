include(GoogleTest)

# Every test program with the label "unit" or "views", for scripts/test.sh --sanitize.
add_custom_target(unit_and_view_tests)

# quorvin_test_program(NAME LABEL label SOURCES file... USES target... [PROPERTIES property value...])
#
# One test program; every test in it becomes a test of ctest with this label. Several sources are
# compiled as one, which takes a third of the time: what they keep for themselves needs names that
# differ. PROPERTIES are those of its tests.
function(quorvin_test_program name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "LABEL" "SOURCES;USES;PROPERTIES")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_USES})
    target_precompile_headers(${name} REUSE_FROM quorvin_test_precompiled)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 6)
    gtest_discover_tests(${name}
        TEST_PREFIX "${name}."
        PROPERTIES LABELS ${arg_LABEL} TIMEOUT 60 ${arg_PROPERTIES}
        DISCOVERY_TIMEOUT 60
        NO_PRETTY_VALUES)
    if(arg_LABEL MATCHES "^(unit|views)$")
        add_dependencies(unit_and_view_tests ${name})
    endif()
endfunction()

# quorvin_unit_test(NAME SOURCES file... USES target...)
function(quorvin_unit_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES")
    quorvin_test_program(${name} LABEL unit
        SOURCES ${arg_SOURCES} USES ${arg_USES} quorvin_test_support)
endfunction()
