#pragma once

#include <cstddef>
#include <string_view>

namespace bench {

/// The floor under any translator: walks the words, numbers, marks and comments of a text once and
/// does nothing with them.
///
/// @returns the number of tokens
size_t count_tokens(std::string_view text);

}  // namespace bench
