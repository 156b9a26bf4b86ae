# add_suite(TARGET [NAME name] [SHARDS n] [SECONDS n] [LABELS ...] [ARGUMENTS ...])
#
# Registers a GoogleTest program as one ctest test, or as n tests that share its cases out. A
# Windows program runs under Wine. Each run leaves the report BUILD/reports/NAME.xml, and
# `./run test` counts the cases in these reports. What has the label "threads" also runs under the
# thread sanitizer.
add_custom_target(thread_suites)

function(add_suite target)
    cmake_parse_arguments(SUITE "" "NAME;SHARDS;SECONDS" "ARGUMENTS;LABELS" ${ARGN})
    if("threads" IN_LIST SUITE_LABELS)
        add_dependencies(thread_suites ${target})
    endif()
    # The test library's headers cost more than most test files: they are read once per program, and
    # test code is optimised little.
    if(TARGET ${target} AND NOT MSVC)
        target_compile_options(${target} PRIVATE -O1 -g0)
        target_precompile_headers(${target} PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
    endif()
    if(NOT SUITE_NAME)
        set(SUITE_NAME ${target})
    endif()
    if(NOT SUITE_SHARDS)
        set(SUITE_SHARDS 1)
    endif()
    if(NOT SUITE_SECONDS)
        set(SUITE_SECONDS 600)
    endif()
    math(EXPR last "${SUITE_SHARDS} - 1")
    foreach(shard RANGE ${last})
        add_suite_shard(${target} ${SUITE_NAME} ${shard} ${SUITE_SHARDS} ${SUITE_SECONDS}
            "${SUITE_ARGUMENTS}" "${SUITE_LABELS}")
    endforeach()
endfunction()

function(add_suite_shard target name shard shards seconds arguments labels)
    set(launcher)
    if(WIN32 AND CMAKE_CROSSCOMPILING)
        set(launcher bash ${PROJECT_SOURCE_DIR}/cmake/wine.sh)
    endif()
    if(shards GREATER 1)
        string(APPEND name "-${shard}")
    endif()
    # Relative, because an absolute path of the machine is none to a program under Wine.
    add_test(NAME ${name}
        COMMAND ${launcher} $<TARGET_FILE:${target}> --gtest_output=xml:reports/${name}.xml
            --gtest_brief=1 ${arguments}
        WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
    set(environment ORVANE_WINE_PREFIX=${CMAKE_BINARY_DIR}/wine ORVANE_WINE_SECONDS=${seconds})
    if(shards GREATER 1)
        list(APPEND environment GTEST_TOTAL_SHARDS=${shards} GTEST_SHARD_INDEX=${shard})
    endif()
    math(EXPR limit "${seconds} + 60")
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "${environment}" TIMEOUT ${limit} LABELS "${labels}")
endfunction()

# add_program_test(NAME.py TARGET): registers a Python script of this folder that calls the program
# TARGET, through Wine where it is a Windows program. The script gets the source folder and the
# words that start the program.
find_package(Python3 COMPONENTS Interpreter REQUIRED)

function(add_program_test script target)
    set(launcher)
    if(WIN32 AND CMAKE_CROSSCOMPILING)
        set(launcher ${PROJECT_SOURCE_DIR}/cmake/wine.sh)
    endif()
    get_filename_component(name ${script} NAME_WE)
    add_test(NAME ${target}_${name}
        COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_SOURCE_DIR}/${script} ${PROJECT_SOURCE_DIR}
            ${launcher} $<TARGET_FILE:${target}>)
    set_tests_properties(${target}_${name} PROPERTIES TIMEOUT 600
        ENVIRONMENT "ORVANE_WINE_PREFIX=${CMAKE_BINARY_DIR}/wine;PYTHONDONTWRITEBYTECODE=1")
endfunction()

# The name that Windows suites are registered by; the same as add_suite().
function(add_wine_test name target)
    add_suite(${target} NAME ${name} ${ARGN})
endfunction()
