#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace transition {

/// Changes to a text, collected and then made at once. Line numbers stay: a replaced stretch
/// keeps its newlines.
class Edits {
public:
    /// Replaces the bytes from `begin` up to `end` by `with`, and the newlines among them.
    void replace(size_t begin, size_t end, std::string with);
    /// Puts `what` in front of byte `at`. Insertions at one place stand in the order of the calls.
    void insert(size_t at, std::string what) { replace(at, at, std::move(what)); }
    bool empty() const { return changes_.empty(); }
    /// The changed text. A change that overlaps an earlier one is left out.
    std::string apply(std::string_view text) const;

private:
    struct Change {
        size_t begin;
        size_t end;
        std::string with;
    };
    std::vector<Change> changes_;
};

}  // namespace transition
