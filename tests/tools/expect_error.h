#pragma once

#include <gtest/gtest.h>

#include <string>

#include "effect-render/tool_error.h"

namespace effect_render {

/// The text of the ToolError that `work` ends in; a failed test and "" if it ends in none.
template <typename Work>
std::string ErrorOf(Work work) {
    try {
        work();
    } catch (const ToolError& error) {
        return error.what();
    }
    ADD_FAILURE() << "no error";
    return "";
}

}  // namespace effect_render
