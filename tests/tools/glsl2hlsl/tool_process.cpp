#include "tool_process.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#ifndef _WIN32
#include <sys/wait.h>
#endif

namespace {

std::string quoted(const std::string& text) {
    return '"' + text + '"';
}

std::string bytes_of(const std::string& path) {
    std::ifstream stream(std::filesystem::u8path(path), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

// The tests run in the build folder.
#ifdef _WIN32
constexpr const char* kProgram = "bin\\glsl2hlsl.exe";

int run_command(const std::string& command) {
    // The shell takes one pair of quotes off.
    return _wsystem(std::filesystem::u8path(quoted(command)).c_str());
}
#else
constexpr const char* kProgram = "bin/glsl2hlsl";

int run_command(const std::string& command) {
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
#endif

}  // namespace

std::vector<std::string> ToolResult::err_lines() const {
    std::vector<std::string> lines;
    std::istringstream stream(err);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        lines.push_back(line);
    }
    return lines;
}

std::string ToolResult::last_err_line() const {
    const std::vector<std::string> lines = err_lines();
    return lines.empty() ? std::string() : lines.back();
}

ToolResult run_tool(const std::string& folder, const std::vector<std::string>& arguments) {
    const std::string out = folder + "/stdout.bin";
    const std::string err = folder + "/stderr.bin";
    std::string command = quoted(kProgram);
    for (const std::string& argument : arguments) {
        command += ' ' + quoted(argument);
    }
    command += " >" + quoted(out) + " 2>" + quoted(err);
    ToolResult result;
    result.status = run_command(command);
    result.out = bytes_of(out);
    result.err = bytes_of(err);
    return result;
}
