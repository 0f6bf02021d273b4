# Adds a ring of the house. A ring that a partial checkout lacks is named, not silently dropped.
function(veldran_add_ring directory)
    if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${directory}/CMakeLists.txt)
        add_subdirectory(${directory})
    else()
        message(STATUS "ring ${directory} is not present")
    endif()
endfunction()

# What every target of the house shares: the include root and the warnings.
function(veldran_target target)
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
    veldran_warnings(${target})
endfunction()

# One test binary per library: veldran_test(<name> SOURCES <file>... LIBS <library>...).
# Each test of the binary is a ctest test of its own, named "<binary>.<Suite>.<Sentence>"; with WHOLE the binary is one
# test, for tests that share something that takes long to make.
# ON_SERVER_TOO: the same tests once more on the T-SQL server for tests, named "server.<binary>.<Suite>.<Sentence>", one
# at a time since they share its database. ON_SERVER_ONLY: there alone.
function(veldran_test name)
    cmake_parse_arguments(ARG "QT_OFFSCREEN;WHOLE;ON_SERVER_TOO;ON_SERVER_ONLY" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    veldran_target(${name})
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gtest GTest::gmock)
    set(properties TIMEOUT 300)
    if(ARG_QT_OFFSCREEN)
        list(APPEND properties ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
    endif()
    if((ARG_ON_SERVER_TOO OR ARG_ON_SERVER_ONLY) AND VELDRAN_WITH_ODBC)
        target_link_libraries(${name} PRIVATE veldran_server_main)
        gtest_discover_tests(${name} TEST_PREFIX "server.${name}." TEST_LIST server_${name} EXTRA_ARGS --server
            DISCOVERY_MODE PRE_TEST PROPERTIES ${properties} TIMEOUT 900 RESOURCE_LOCK server)
    else()
        target_link_libraries(${name} PRIVATE GTest::gtest_main)
    endif()
    if(ARG_WHOLE)
        add_test(NAME ${name} COMMAND ${name})
        list(APPEND properties SKIP_REGULAR_EXPRESSION "PASSED  . 0 tests")
        set_tests_properties(${name} PROPERTIES ${properties})
    elseif(NOT ARG_ON_SERVER_ONLY)
        gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST PROPERTIES ${properties})
    endif()
endfunction()

# Names a place of this checkout to the sources that read files there: veldran_place(<define> <path> <source>...).
# Given to whole targets it would keep every other object from being taken out of the cache of another checkout.
function(veldran_place define path)
    set_property(SOURCE ${ARGN} APPEND PROPERTY COMPILE_DEFINITIONS "${define}=\"${path}\"")
endfunction()
