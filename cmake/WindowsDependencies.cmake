# Targets for Windows builds: opencv (core and imgproc), glew (shared glew32.dll), and
# RUNTIME_DLLS, what has to lie beside the programs when they run, d3dcompiler_47.dll not counted.

# HLSL_COMPILER_LIBRARY: the import library of d3dcompiler_47.dll, by each tool chain's name.
set(HLSL_COMPILER_LIBRARY d3dcompiler_47)
if(MSVC)
    set(HLSL_COMPILER_LIBRARY d3dcompiler)
endif()

# ORVANE_OWN_DEPENDENCIES: they come from the folder that cmake/deps/setup.sh fills. Otherwise they
# are what find_package finds, for instance in a vcpkg tree (vcpkg.json).
option(ORVANE_OWN_DEPENDENCIES "take the dependencies that ./run setup makes" ${MINGW})

if(NOT ORVANE_OWN_DEPENDENCIES)
    find_package(OpenCV REQUIRED COMPONENTS core imgproc)
    find_package(GLEW REQUIRED)
    add_library(opencv INTERFACE)
    target_include_directories(opencv SYSTEM INTERFACE ${OpenCV_INCLUDE_DIRS})
    target_link_libraries(opencv INTERFACE ${OpenCV_LIBS})
    add_library(glew INTERFACE)
    target_link_libraries(glew INTERFACE GLEW::GLEW opengl32)
    set(RUNTIME_DLLS $<TARGET_RUNTIME_DLLS:OrvaneDirectXEffectMgr>)
    return()
endif()

# Sets `result` to the folder of a dependency that setup.sh has made.
function(find_made_dependency name result)
    execute_process(
        COMMAND bash ${PROJECT_SOURCE_DIR}/cmake/deps/setup.sh where ${name}
        OUTPUT_VARIABLE folder OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${name} is missing: call ./run setup first")
    endif()
    set(${result} ${folder} PARENT_SCOPE)
endfunction()

find_made_dependency(opencv opencv_root)
find_made_dependency(glew glew_root)
find_made_dependency(d3dcompiler d3dcompiler_root)

add_library(opencv INTERFACE)
target_include_directories(opencv SYSTEM INTERFACE ${opencv_root}/include/opencv4)
file(GLOB opencv_imgproc ${opencv_root}/lib/libopencv_imgproc*.a)
file(GLOB opencv_core ${opencv_root}/lib/libopencv_core*.a)
target_link_libraries(opencv INTERFACE
    ${opencv_imgproc} ${opencv_core} /usr/x86_64-w64-mingw32/lib/libz.a)

add_library(glew SHARED IMPORTED)
set_target_properties(glew PROPERTIES
    IMPORTED_LOCATION ${glew_root}/bin/glew32.dll
    IMPORTED_IMPLIB ${glew_root}/lib/libglew32.dll.a
    INTERFACE_INCLUDE_DIRECTORIES ${glew_root}/include
    INTERFACE_COMPILE_DEFINITIONS GLEW_NO_GLU
    INTERFACE_LINK_LIBRARIES opengl32)

# Sets `result` to the path of one of the compiler's run-time DLLs.
function(find_runtime_dll name result)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
        OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
    get_filename_component(path ${path} REALPATH)
    set(${result} ${path} PARENT_SCOPE)
endfunction()

set(RUNTIME_DLLS ${glew_root}/bin/glew32.dll)
foreach(name libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    find_runtime_dll(${name} path)
    list(APPEND RUNTIME_DLLS ${path})
endforeach()
# The HLSL compiler is there for tests and demos only.
file(COPY ${RUNTIME_DLLS} ${d3dcompiler_root}/d3dcompiler_47.dll
    DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})

# NAME=FILE: the terms of what is inside our files or lies beside them. GLEW states its own at the
# head of its header.
file(READ ${glew_root}/include/GL/glew.h glew_terms LIMIT 16384)
string(FIND "${glew_terms}" "\n#" glew_terms_length)
string(SUBSTRING "${glew_terms}" 0 ${glew_terms_length} glew_terms)
file(WRITE ${CMAKE_BINARY_DIR}/package/glew.txt "${glew_terms}\n")
set(BUNDLED_LICENSES
    cli11=/usr/share/doc/libcli11-dev/copyright
    gcc-runtime=/usr/share/doc/gcc-mingw-w64-x86-64-posix-runtime/copyright
    glew=${CMAKE_BINARY_DIR}/package/glew.txt
    mingw-w64=/usr/share/doc/mingw-w64-x86-64-dev/copyright
    nlohmann-json=/usr/share/doc/nlohmann-json3-dev/copyright
    opencv=${opencv_root}/LICENSE
    opencv-softfloat=${opencv_root}/share/licenses/opencv4/SoftFloat-COPYING.txt
    stb=/usr/share/doc/libstb-dev/copyright
    zlib=/usr/share/doc/libz-mingw-w64-dev/copyright)
