# GoogleTest is built from its sources so that both tool chains and the sanitizers can use it.
set(GOOGLETEST_ROOT /usr/src/googletest CACHE PATH "GoogleTest sources")
set(INSTALL_GTEST OFF)
set(gtest_force_shared_crt ON)
add_subdirectory(${GOOGLETEST_ROOT} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
