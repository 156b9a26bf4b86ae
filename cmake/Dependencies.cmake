# GoogleTest is built from its sources so that both tool chains and the sanitizers can use it.
set(GOOGLETEST_ROOT /usr/src/googletest CACHE PATH "GoogleTest sources")
set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
set(INSTALL_GTEST OFF)
set(gtest_force_shared_crt ON)
add_subdirectory(${GOOGLETEST_ROOT} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)

include(cmake/ToolHeaders.cmake)
if(WIN32)
    include(cmake/WindowsDependencies.cmake)
endif()
