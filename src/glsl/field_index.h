#pragma once

#include <string_view>
#include <unordered_map>

#include "glsl/ast.h"

namespace glsl {

/// Finds the fields of structures by name, also where a structure has thousands of them and each is
/// asked for. The lists that it was asked about stay as they are while it lives.
class FieldIndex {
public:
    /// The first field called `name`; null if there is none. Null elements of the list are passed.
    /// Throws std::bad_alloc.
    astVariable* find(const list<astVariable>& fields, std::string_view name);

private:
    using ByName = std::unordered_map<std::string_view, astVariable*>;

    // Of the long lists only.
    std::unordered_map<const list<astVariable>*, ByName> long_lists_;
};

}  // namespace glsl
