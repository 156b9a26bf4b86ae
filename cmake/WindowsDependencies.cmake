# Targets for Windows builds: opencv (core and imgproc), glew (shared glew32.dll), and what has to
# lie beside the programs when they run. With MinGW they come from the folder that
# cmake/deps/setup.sh fills; with MSVC from the package manager (vcpkg.json).

if(MSVC)
    find_package(OpenCV REQUIRED COMPONENTS core imgproc)
    find_package(GLEW REQUIRED)
    add_library(opencv INTERFACE)
    target_link_libraries(opencv INTERFACE opencv_core opencv_imgproc)
    add_library(glew INTERFACE)
    target_link_libraries(glew INTERFACE GLEW::GLEW opengl32)
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

# RUNTIME_DLLS: what every program of ours needs beside it, d3dcompiler_47.dll not counted,
# which is there for tests and demos only.
set(RUNTIME_DLLS ${glew_root}/bin/glew32.dll)
foreach(name libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    find_runtime_dll(${name} path)
    list(APPEND RUNTIME_DLLS ${path})
endforeach()
file(COPY ${RUNTIME_DLLS} ${d3dcompiler_root}/d3dcompiler_47.dll
    DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
