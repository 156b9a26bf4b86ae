#pragma once

/// Under which names identifiers appear in HLSL.

#include <array>
#include <string>
#include <string_view>

namespace glsl {

/// A set of first letters: tells most names apart from those of a table.
class InitialSet {
public:
    constexpr explicit InitialSet(std::string_view letters) {
        for (const char letter : letters) {
            has_[static_cast<unsigned char>(letter)] = true;
        }
    }
    [[nodiscard]] constexpr bool hasInitialOf(std::string_view name) const {
        return !name.empty() && has_[static_cast<unsigned char>(name.front())];
    }

private:
    std::array<bool, 256> has_{};
};

/// The name with "AVOID_KEYWORD_CONFLICTS_" in front if it would meet a word of HLSL, else the name
/// itself. Exact and case-sensitive.
///
/// @param isFunctionCall  true for the callee of a call: "cos", "sin", "max" and "min" then stay,
///                        so that calls reach the built-in function
/// @returns `name`, or a text that lives forever
std::string_view avoidKeyword(std::string_view name, bool isFunctionCall);

/// True if the name ends in a digit. Semantics count by such a digit, so a member of `VertexInput`
/// gets "_" behind it.
inline bool needsSemanticMark(std::string_view name) {
    return !name.empty() && name.back() >= '0' && name.back() <= '9';
}

/// The name as a member and semantic of `VertexInput`: "position1" gives "position1_".
std::string semanticName(std::string_view name);

/// The HLSL name of a GLSL built-in that is called differently there, else the name itself.
///
/// @returns `name`, or a text that lives forever
std::string_view renameBuiltin(std::string_view name);

/// True if `name` is `prefix` and nothing but decimal digits behind it: "INPUT", "INPUT12".
bool isNumberedName(std::string_view name, std::string_view prefix);

}  // namespace glsl
