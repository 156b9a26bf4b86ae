#pragma once

/// Runs glsl2hlsl as a user would.

#include <string>
#include <vector>

struct ToolResult {
    int status = -1;
    std::string out;  // bytes of standard output
    std::string err;  // bytes of standard error

    /// Lines of standard error, their ends (also "\r\n") dropped.
    std::vector<std::string> err_lines() const;
    /// The last of them; empty if there are none.
    std::string last_err_line() const;
};

/// @param folder     where both streams are kept meanwhile
/// @param arguments  UTF-8; without quotes and backslashes
ToolResult run_tool(const std::string& folder, const std::vector<std::string>& arguments);
