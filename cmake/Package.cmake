# What `cmake --install` lays out, and `./run package` puts into a zip:
#
#   README.md docs/ effects/ licenses/    as in this tree, so that links between them hold
#   bin/                                  the library, the DLLs that it needs, the tools
#   include/                              the host headers
#   lib/                                  the import library and the CMake package
#
# d3dcompiler_47.dll is not among them: it is a part of Windows.
include(CMakePackageConfigHelpers)

set(package_cmake_dir lib/cmake/OrvaneDirectXEffectMgr)

target_include_directories(OrvaneDirectXEffectMgr INTERFACE $<INSTALL_INTERFACE:include>)
target_compile_features(OrvaneDirectXEffectMgr INTERFACE cxx_std_17)
install(TARGETS OrvaneDirectXEffectMgr EXPORT OrvaneDirectXEffectMgrTargets
    RUNTIME DESTINATION bin
    ARCHIVE DESTINATION lib)
install(EXPORT OrvaneDirectXEffectMgrTargets NAMESPACE Orvane:: DESTINATION ${package_cmake_dir})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/OrvaneDirectXEffectMgrConfig.cmake.in
    ${CMAKE_BINARY_DIR}/package/OrvaneDirectXEffectMgrConfig.cmake
    INSTALL_DESTINATION ${package_cmake_dir}
    PATH_VARS CMAKE_INSTALL_PREFIX)
write_basic_package_version_file(
    ${CMAKE_BINARY_DIR}/package/OrvaneDirectXEffectMgrConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${CMAKE_BINARY_DIR}/package/OrvaneDirectXEffectMgrConfig.cmake
    ${CMAKE_BINARY_DIR}/package/OrvaneDirectXEffectMgrConfigVersion.cmake
    DESTINATION ${package_cmake_dir})

install(TARGETS effect-render glsl2hlsl RUNTIME DESTINATION bin)
install(DIRECTORY src/DirectXEffectMgr/Include DESTINATION include/DirectXEffectMgr
    FILES_MATCHING PATTERN "*.h")
install(FILES README.md DESTINATION .)
install(DIRECTORY docs effects DESTINATION . FILES_MATCHING
    PATTERN "*"
    PATTERN CMakeLists.txt EXCLUDE
    PATTERN "*.py" EXCLUDE
    PATTERN "*.sh" EXCLUDE)

# What lies beside the library, and under which terms. RUNTIME_DLLS and BUNDLED_LICENSES are set
# where the dependencies are found.
install(FILES ${RUNTIME_DLLS} DESTINATION bin)
if(MINGW)
    # The compiler's own DLLs come with debug information of ten times their size.
    install(CODE "
        file(GLOB dlls \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin/lib*.dll\")
        execute_process(COMMAND ${CMAKE_STRIP} --strip-debug \${dlls} COMMAND_ERROR_IS_FATAL ANY)")
endif()
foreach(row IN LISTS BUNDLED_LICENSES)
    string(REGEX MATCH "^([^=]+)=(.+)$" matched "${row}")
    install(FILES ${CMAKE_MATCH_2} DESTINATION licenses RENAME ${CMAKE_MATCH_1}.txt)
endforeach()
