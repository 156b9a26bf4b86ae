# Target tool_headers: the header-only libraries of the tools (CLI11, nlohmann-json, stb image).
#
# A cross build must not see the machine's own system headers, so the three folders are linked
# into the build tree and only that folder is searched.
add_library(tool_headers INTERFACE)
if(CMAKE_CROSSCOMPILING)
    set(tool_headers_dir ${CMAKE_BINARY_DIR}/tool-headers)
    file(MAKE_DIRECTORY ${tool_headers_dir})
    foreach(folder CLI nlohmann stb)
        file(CREATE_LINK /usr/include/${folder} ${tool_headers_dir}/${folder} SYMBOLIC)
    endforeach()
    target_include_directories(tool_headers SYSTEM INTERFACE ${tool_headers_dir})
elseif(MSVC)
    find_path(CLI11_INCLUDE_DIR CLI/CLI.hpp REQUIRED)
    find_path(NLOHMANN_JSON_INCLUDE_DIR nlohmann/json.hpp REQUIRED)
    find_path(STB_INCLUDE_DIR stb/stb_image.h PATH_SUFFIXES stb REQUIRED)
    target_include_directories(tool_headers SYSTEM INTERFACE
        ${CLI11_INCLUDE_DIR} ${NLOHMANN_JSON_INCLUDE_DIR} ${STB_INCLUDE_DIR})
endif()
