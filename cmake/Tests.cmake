include(GoogleTest)

# Every test program with the label "unit" or "views", for scripts/test.sh --sanitize.
add_custom_target(unit_and_view_tests)

# quorvin_unit_test(NAME SOURCES file... USES target...)
#
# One test program; every test in it becomes a test of ctest with the label "unit".
function(quorvin_unit_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES")
    add_executable(${name} ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_link_libraries(${name} PRIVATE ${arg_USES} quorvin_test_support)
    add_dependencies(unit_and_view_tests ${name})
    gtest_discover_tests(${name}
        TEST_PREFIX "${name}."
        PROPERTIES LABELS unit TIMEOUT 60
        DISCOVERY_TIMEOUT 60
        NO_PRETTY_VALUES)
endfunction()
