#pragma once

/// A scope: names with their values, and the scope around it.

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "glsl/hlsl/objects.h"

namespace glsl {

/// A map from name to value with a parent. Names are ordered by their bytes. Scopes are shared by
/// pointer and used by one thread.
class Environment {
public:
    /// @param parent  the scope around this one; may be null
    explicit Environment(std::shared_ptr<Environment> parent = nullptr);

    /// True if this scope or one around it holds the name.
    [[nodiscard]] bool has(std::string_view name) const;
    /// The value from the nearest scope that holds the name; null if none does.
    [[nodiscard]] std::shared_ptr<Object> get(std::string_view name) const;
    /// Writes the nearest scope's entry; where no scope holds the name, makes one in this scope.
    ///
    /// @returns `value`
    std::shared_ptr<Object> set(std::string_view name, std::shared_ptr<Object> value);
    /// Writes this scope's own entry, which hides one of a scope further out.
    void define(std::string_view name, std::shared_ptr<Object> value);
    /// Erases the entry of the outermost scope that holds the name. Scopes further in keep theirs.
    void remove(std::string_view name);

    /// True if neither this scope nor one around it holds anything.
    [[nodiscard]] bool empty() const;

private:
    using Entries = std::map<std::string, std::shared_ptr<Object>, std::less<>>;

    // The nearest scope that holds the name, this one included; null if none does.
    [[nodiscard]] const Environment* holder(std::string_view name) const;

    Entries entries_;
    std::shared_ptr<Environment> parent_;
};

}  // namespace glsl
