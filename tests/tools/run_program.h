#pragma once

#include <string>
#include <vector>

namespace effect_render {

struct ProgramResult {
    int status = -1;      // exit status; -1 if the program could not be started
    std::string output;   // what it wrote on standard output
    std::string message;  // what it wrote on standard error
};

/// Runs a program that lies beside the test, and waits for its end.
///
/// @param name       file name, "effect-render.exe"
/// @param arguments  UTF-8, without double quotes in them
ProgramResult RunProgram(const std::string& name, const std::vector<std::string>& arguments);

}  // namespace effect_render
