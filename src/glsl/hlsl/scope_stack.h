#pragma once

/// The scopes of one translation, innermost last, with the exact meaning of nested
/// glsl::Environments and without their cost: a name is looked up once in a table of all names and
/// then leads straight to its entries.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "glsl/hlsl/environment.h"
#include "glsl/hlsl/small_stack.h"
#include "glsl/hlsl/value.h"

namespace glsl {

/// Hash of a name: a polynomial, so that the hash of a key follows from those of its parts.
constexpr uint32_t hashName(std::string_view name) {
    uint32_t hash = 0;
    for (const char c : name) {
        hash = hash * 0x01000193U + static_cast<unsigned char>(c);
    }
    return hash;
}

/// What a name is kept as. The key of an entry is the name with a text before or behind it, and two
/// keys are the same if their whole texts are: a variable that happens to be called
/// "HAVE_FUNC_f" meets the mark of a function `f`.
enum class KeyFamily : uint8_t {
    plain,           // the name itself
    constantBuffer,  // "MyConstantBuffer_" + name: lives at file scope
    vertexOutput,    // "VertexOutput_" + name
    vertexInput,     // "VertexInput_" + the name as a semantic
    haveFunction,    // "HAVE_FUNC_" + name: takes the hidden arguments
    returnType,      // name + "_RETURN_TYPE"
};
constexpr size_t kKeyFamilyCount = static_cast<size_t>(KeyFamily::returnType) + 1;

/// A key that was met. Made by a ScopeStack, and lives as long as it does.
struct Symbol {
    std::string_view name;  // belongs to the tree, or lives forever
    KeyFamily family;
    uint32_t hash;     // of the whole key
    uint32_t entry;    // of an owner: place of the innermost entry plus one; 0 for none
    Symbol* owner;     // holds the entries: itself, or an older symbol whose key has the same text
    Symbol* variable;  // the plain symbol that a variable of this name goes by, once known
    Symbol* callee;    // the plain symbol that a call of this name goes by, once known
    std::array<Symbol*, kKeyFamilyCount> related;  // owners of the name's other keys, once met
};

/// Not thread-safe; one per translation.
class ScopeStack {
public:
    /// @param parent  the scope around all others; may be null
    /// @param home    memory of the tree that the values' types belong to
    ScopeStack(std::shared_ptr<Environment> parent, arena& home);
    ScopeStack(const ScopeStack&) = delete;
    ScopeStack& operator=(const ScopeStack&) = delete;

    /// The plain symbol of a name.
    ///
    /// @param name  must stay as it is as long as the stack lives
    Symbol& intern(std::string_view name) { return intern(name, hashName(name)); }
    /// The same with hashName(name) at hand.
    Symbol& intern(std::string_view name, uint32_t hash);

    /// Opens a scope inside the current one.
    void push() { scopes_.push(static_cast<uint32_t>(entries_.size())); }
    /// Closes the current scope and forgets its entries.
    void pop();
    /// Closes the current scope; the value that it gives for a key is then set in the scope around.
    void popCarrying(Symbol& symbol, KeyFamily family = KeyFamily::plain);

    // The operations of glsl::Environment on the current scope, for the key that `family` makes of
    // the symbol's name. `symbol` is a plain one.
    [[nodiscard]] bool has(Symbol& symbol, KeyFamily family = KeyFamily::plain) const {
        const Symbol* const owner = find(symbol, family);
        return (owner != nullptr && owner->entry != 0) || hasOutside(symbol, family);
    }
    [[nodiscard]] Value get(Symbol& symbol, KeyFamily family = KeyFamily::plain) const {
        Value value;
        (void)read(symbol, family, value);
        return value;
    }
    /// has() and, if so, get().
    [[nodiscard]] bool read(Symbol& symbol, KeyFamily family, Value& value) const {
        const Symbol* const owner = find(symbol, family);
        if (owner != nullptr && owner->entry != 0) {
            value = entries_[owner->entry - 1].value;
            return true;
        }
        return outer_ != nullptr && readOutside(symbol, family, value);
    }
    void set(Symbol& symbol, KeyFamily family, const Value& value);
    void set(Symbol& symbol, const Value& value) { set(symbol, KeyFamily::plain, value); }
    void define(Symbol& symbol, const Value& value);
    void remove(Symbol& symbol);

private:
    struct Entry {
        Symbol* symbol;  // null once removed
        Value value;
        uint32_t below;  // the next entry outward of the same symbol, plus one; 0 for none
        uint32_t depth;  // number of the scope that holds it
    };

    // A key as the texts that it is put together from.
    struct Key {
        std::string_view prefix, name, suffix;
    };
    static Key keyOf(std::string_view name, KeyFamily family);
    static bool sameText(const Key& a, const Key& b);
    static std::string text(const Key& key);

    // The owner of a key, or null if nobody wrote it.
    [[nodiscard]] Symbol* find(Symbol& symbol, KeyFamily family) const {
        if (family == KeyFamily::plain) {
            return symbol.owner;
        }
        Symbol* const known = symbol.related[static_cast<size_t>(family)];
        return known != nullptr || !hasOddNames_ ? known : search(symbol, family);
    }
    Symbol* search(Symbol& symbol, KeyFamily family) const;
    Symbol& findOrMake(Symbol& symbol, KeyFamily family);
    // The first symbol whose key reads the same, or null with `slot` on the free place for it.
    Symbol* probe(const Key& key, uint32_t hash, size_t& slot) const;
    Symbol& make(std::string_view name, KeyFamily family, uint32_t hash, size_t slot);
    [[nodiscard]] size_t firstSlot(uint32_t hash) const;
    static bool isOdd(std::string_view name);
    bool readOutside(const Symbol& symbol, KeyFamily family, Value& value) const;
    [[nodiscard]] bool hasOutside(const Symbol& symbol, KeyFamily family) const {
        return outer_ != nullptr && outer_->has(text(keyOf(symbol.name, family)));
    }
    void growTable();
    void pushEntry(Symbol& symbol, const Value& value);
    [[nodiscard]] uint32_t depth() const { return static_cast<uint32_t>(scopes_.size()); }

    static constexpr size_t kInlineSymbols = 48;
    static constexpr size_t kInlineSlots = 128;  // a power of two

    std::shared_ptr<Environment> outer_;  // null if nothing can be found there
    arena& home_;
    SmallStack<Entry, 48> entries_;    // oldest first
    SmallStack<uint32_t, 16> scopes_;  // entries_.size() at each opening
    std::array<Symbol*, kInlineSlots> inlineSlots_{};
    std::vector<Symbol*> heapSlots_;
    Symbol** slots_ = inlineSlots_.data();
    size_t slotCount_ = kInlineSlots;  // a power of two
    size_t symbolCount_ = 0;
    // Some name could be read as a key, or two names as one; until then a key that was not made
    // from its own symbol is known to be absent.
    bool hasOddNames_ = false;
    std::array<Symbol, kInlineSymbols> inlineSymbols_;
    std::vector<std::unique_ptr<Symbol[]>> chunks_;  // kInlineSymbols, then twice as many each
    Symbol* nextSymbol_ = inlineSymbols_.data();
    Symbol* endOfChunk_ = inlineSymbols_.data() + kInlineSymbols;
};

}  // namespace glsl
