#pragma once

/// Random sources that the parser takes, for comparing two printers.

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace glsl {

/// Writes one source per object. Nothing is checked but what the parser checks, so types meet in
/// every combination.
class RandomSource {
public:
    RandomSource(uint32_t seed, bool isVertex) : random_(seed), isVertex_(isVertex) {}

    std::string source();

private:
    uint32_t below(uint32_t count) { return static_cast<uint32_t>(random_() % count); }
    bool oneIn(uint32_t count) { return below(count) == 0; }
    template <size_t kCount>
    std::string pick(const char* const (&table)[kCount]) {
        return table[below(kCount)];
    }
    std::string pick(const std::vector<std::string>& table) {
        return table[below(static_cast<uint32_t>(table.size()))];
    }

    std::string globals();
    std::string function(const std::string& name);
    std::string block(int depth);
    std::string statement(int depth);
    std::string declaration();
    std::string initialValue();
    std::string forLoop(int depth);
    std::string expression(int depth);
    std::string primary(int depth);
    std::string call(int depth);
    std::string constructor(int depth);
    std::string arguments(uint32_t count, int depth);
    std::string target();
    std::string literal();

    std::mt19937 random_;
    bool isVertex_;
    std::vector<std::string> names_;      // that an expression may use
    std::vector<std::string> targets_;    // of them, those that may be assigned to
    std::vector<std::string> functions_;  // that were defined so far
};

}  // namespace glsl
