#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "glsl/arena.h"
#include "glsl/ast.h"
#include "glsl/word.h"

namespace glsl {

/// One identifier of a source, with all that a parser looks up by name. In each field the first
/// entry stands: a later variable, structure or function of the same name does not replace it.
struct symbol {
    std::string_view name;  // lives as long as the tree
    std::uint32_t hash = 0;
    std::uint32_t localScope = 0;             // number of the scope that `local` belongs to
    astVariable* global = nullptr;            // of the outermost scope
    astVariable* local = nullptr;             // of the function scope `localScope`
    astStruct* structure = nullptr;           // of the unit's structures
    astFunction* function = nullptr;          // of the unit's functions
    const std::string_view* macro = nullptr;  // replacement text; null if it is no macro
};

/// All identifiers of one source, each once.
class symbolTable {
public:
    /// Names are copied to `texts`; the table itself lies in `scratch`.
    symbolTable(arena& texts, arena& scratch);

    /// The entry for `name`, made if there is none.
    symbol* enter(std::string_view name, const WordKey& key);
    /// The entry for `name`, or null.
    symbol* find(std::string_view name) const;

private:
    void grow();
    std::size_t slotFor(std::string_view name, std::uint32_t hash) const;

    arena& texts_;
    arena& scratch_;
    symbol** slots_;
    std::size_t slot_count_;  // a power of two
    std::size_t count_ = 0;
};

}  // namespace glsl
