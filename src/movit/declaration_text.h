#pragma once

/// The lines of shader text that declare parameters, one function per form. Each appends its line
/// or lines, newline included, to `out`; names may have any length.

#include <string>

#include "movit/param_tables.h"

namespace movit {

/// "uniform TYPE PREFIX(NAME);"
void append_uniform(std::string& out, ParamType type, const std::string& name);

/// "uniform TYPE PREFIX(NAME[COUNT]);"
void append_uniform_array(std::string& out, ParamType type, const std::string& name, int32_t count);

/// "#define NAME VALUE", a line per entry.
void append_defines(std::string& out, const std::map<std::string, std::string>& defines);

/// An instance parameter as an attribute that the vertex stage takes in and passes on.
void append_instance_attribute(std::string& out, ParamType type, const std::string& name);

/// The same parameter where the fragment stage receives it.
void append_instance_varying(std::string& out, ParamType type, const std::string& name);

}  // namespace movit
