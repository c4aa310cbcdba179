# corvala_add_test(NAME SOURCES ... LIBS ... [OWN_MAIN])
# One GoogleTest executable registered as one CTest test. Tests run with the
# offscreen Qt platform so that UI tests need no display. With OWN_MAIN the
# sources bring their main (to create a Qt application first).
if(NOT CORVALA_FUZZ)
    find_package(GTest REQUIRED)
endif()

function(corvala_add_test name)
    cmake_parse_arguments(ARG "OWN_MAIN" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    if(ARG_OWN_MAIN)
        target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gmock GTest::gtest)
    else()
        target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gmock GTest::gtest_main)
    endif()
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/tests)
    target_compile_definitions(${name} PRIVATE
        CORVALA_TEST_DATA_DIR="${PROJECT_SOURCE_DIR}/tests/data")
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;UBSAN_OPTIONS=print_stacktrace=1")
endfunction()
