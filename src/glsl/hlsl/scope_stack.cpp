#include "glsl/hlsl/scope_stack.h"

#include <utility>

#include "glsl/hlsl/naming.h"

namespace glsl {

namespace {

constexpr uint32_t kBase = hashName(std::string_view("\1\0", 2));
static_assert(hashName("ab") == 'a' * kBase + 'b', "hashes are polynomials in kBase");

constexpr size_t kPowers = 64;

constexpr std::array<uint32_t, kPowers> powersOfBase() {
    std::array<uint32_t, kPowers> powers{};
    uint32_t power = 1;
    for (uint32_t& entry : powers) {
        entry = power;
        power *= kBase;
    }
    return powers;
}
constexpr std::array<uint32_t, kPowers> kPowerOfBase = powersOfBase();

uint32_t powerOfBase(size_t exponent) {
    uint32_t power = 1;
    for (; exponent >= kPowers; exponent -= kPowers - 1) {
        power *= kPowerOfBase[kPowers - 1];
    }
    return power * kPowerOfBase[exponent];
}

// A text of fixed content around a name.
struct Affix {
    constexpr Affix(std::string_view affix) : text(affix), hash(hashName(affix)) {}
    std::string_view text;
    uint32_t hash;
};

// By KeyFamily.
constexpr Affix kPrefixes[] = {Affix(""),
                               Affix("MyConstantBuffer_"),
                               Affix("VertexOutput_"),
                               Affix("VertexInput_"),
                               Affix("HAVE_FUNC_"),
                               Affix("")};
static_assert(std::size(kPrefixes) == kKeyFamilyCount, "one prefix for each family");

constexpr Affix kNoSuffix("");
constexpr Affix kSemanticMark("_");
constexpr Affix kReturnType("_RETURN_TYPE");

const Affix& prefixOf(KeyFamily family) {
    return kPrefixes[static_cast<size_t>(family)];
}

const Affix& suffixOf(std::string_view name, KeyFamily family) {
    if (family == KeyFamily::returnType) {
        return kReturnType;
    }
    return family == KeyFamily::vertexInput && needsSemanticMark(name) ? kSemanticMark : kNoSuffix;
}

// The hash of prefix + name + suffix, from the name's.
uint32_t keyHash(std::string_view name, uint32_t nameHash, KeyFamily family) {
    const Affix& suffix = suffixOf(name, family);
    const uint32_t head = prefixOf(family).hash * powerOfBase(name.size()) + nameHash;
    return head * kPowerOfBase[suffix.text.size()] + suffix.hash;
}

}  // namespace

ScopeStack::ScopeStack(std::shared_ptr<Environment> parent, arena& home)
    : outer_(parent != nullptr && !parent->empty() ? std::move(parent) : nullptr), home_(home) {}

ScopeStack::Key ScopeStack::keyOf(std::string_view name, KeyFamily family) {
    return {prefixOf(family).text, name, suffixOf(name, family).text};
}

std::string ScopeStack::text(const Key& key) {
    std::string result(key.prefix);
    result.append(key.name).append(key.suffix);
    return result;
}

bool ScopeStack::sameText(const Key& a, const Key& b) {
    if (a.prefix == b.prefix && a.suffix == b.suffix) {
        return a.name == b.name;
    }
    const auto length = [](const Key& key) {
        return key.prefix.size() + key.name.size() + key.suffix.size();
    };
    return length(a) == length(b) && text(a) == text(b);
}

size_t ScopeStack::firstSlot(uint32_t hash) const {
    constexpr uint32_t kSpread = 0x9E3779B1U;  // moves what differs in the low bits everywhere
    return ((hash * kSpread) >> 7) & (slotCount_ - 1);
}

Symbol* ScopeStack::probe(const Key& key, uint32_t hash, size_t& slot) const {
    for (slot = firstSlot(hash); slots_[slot] != nullptr; slot = (slot + 1) & (slotCount_ - 1)) {
        Symbol* const symbol = slots_[slot];
        if (symbol->hash == hash && sameText(keyOf(symbol->name, symbol->family), key)) {
            return symbol;
        }
    }
    return nullptr;
}

Symbol& ScopeStack::intern(std::string_view name, uint32_t hash) {
    const Key key = keyOf(name, KeyFamily::plain);
    Symbol* sameKey = nullptr;
    size_t slot = firstSlot(hash);
    for (; slots_[slot] != nullptr; slot = (slot + 1) & (slotCount_ - 1)) {
        Symbol* const symbol = slots_[slot];
        if (symbol->hash == hash && sameText(keyOf(symbol->name, symbol->family), key)) {
            if (symbol->family == KeyFamily::plain) {
                return *symbol;
            }
            sameKey = symbol->owner;
        }
    }
    hasOddNames_ = hasOddNames_ || isOdd(name);
    Symbol& made = make(name, KeyFamily::plain, hash, slot);
    if (sameKey != nullptr) {
        made.owner = sameKey;
    }
    return made;
}

// Names that begin like a key, end like one, or end in what marks a semantic.
bool ScopeStack::isOdd(std::string_view name) {
    if (name.empty() || name.back() == '_' || name.back() == 'E') {
        return true;
    }
    for (const Affix& prefix : kPrefixes) {
        const size_t length = prefix.text.size();
        if (length != 0 && name.front() == prefix.text.front() &&
            name.substr(0, length - 1) == prefix.text.substr(0, length - 1)) {
            return true;
        }
    }
    return false;
}

Symbol* ScopeStack::search(Symbol& symbol, KeyFamily family) const {
    size_t slot = 0;
    Symbol* const found =
        probe(keyOf(symbol.name, family), keyHash(symbol.name, symbol.hash, family), slot);
    if (found == nullptr) {
        return nullptr;
    }
    return symbol.related[static_cast<size_t>(family)] = found->owner;
}

Symbol& ScopeStack::findOrMake(Symbol& symbol, KeyFamily family) {
    Symbol* const known = find(symbol, family);
    if (known != nullptr) {
        return *known;
    }
    const uint32_t hash = keyHash(symbol.name, symbol.hash, family);
    size_t slot = 0;
    probe(keyOf(symbol.name, family), hash, slot);
    Symbol& made = make(symbol.name, family, hash, slot);
    symbol.related[static_cast<size_t>(family)] = &made;
    return made;
}

Symbol& ScopeStack::make(std::string_view name, KeyFamily family, uint32_t hash, size_t slot) {
    if (nextSymbol_ == endOfChunk_) {
        const size_t count = kInlineSymbols << (chunks_.size() + 1);
        chunks_.push_back(std::make_unique<Symbol[]>(count));
        nextSymbol_ = chunks_.back().get();
        endOfChunk_ = nextSymbol_ + count;
    }
    Symbol& symbol = *nextSymbol_++;
    symbol = Symbol{name, family, hash, 0, &symbol, nullptr, nullptr, {}};
    slots_[slot] = &symbol;
    if (++symbolCount_ * 2 > slotCount_) {
        growTable();
    }
    return symbol;
}

void ScopeStack::growTable() {
    std::vector<Symbol*> larger(slotCount_ * 2);
    Symbol* const* const old = slots_;
    const size_t oldCount = slotCount_;
    slotCount_ = larger.size();
    for (size_t i = 0; i < oldCount; ++i) {
        if (old[i] != nullptr) {
            size_t slot = firstSlot(old[i]->hash);
            while (larger[slot] != nullptr) {
                slot = (slot + 1) & (slotCount_ - 1);
            }
            larger[slot] = old[i];
        }
    }
    heapSlots_.swap(larger);
    slots_ = heapSlots_.data();
}

void ScopeStack::pop() {
    const uint32_t bottom = scopes_.back();
    for (size_t i = entries_.size(); i > bottom; --i) {
        const Entry& entry = entries_[i - 1];
        if (entry.symbol != nullptr) {
            entry.symbol->entry = entry.below;
        }
    }
    entries_.truncate(bottom);
    scopes_.truncate(scopes_.size() - 1);
}

void ScopeStack::popCarrying(Symbol& symbol, KeyFamily family) {
    const Symbol* const owner = find(symbol, family);
    if (owner == nullptr || owner->entry == 0) {
        pop();  // what lies outside all of these scopes stays as it is
        return;
    }
    const Value carried = entries_[owner->entry - 1].value;
    pop();
    set(symbol, family, carried);
}

void ScopeStack::pushEntry(Symbol& owner, const Value& value) {
    entries_.push({&owner, value, owner.entry, depth()});
    owner.entry = static_cast<uint32_t>(entries_.size());
}

bool ScopeStack::readOutside(const Symbol& symbol, KeyFamily family, Value& value) const {
    const std::string key = text(keyOf(symbol.name, family));
    if (!outer_->has(key)) {
        return false;
    }
    value = fromObject(outer_->get(key));
    return true;
}

void ScopeStack::set(Symbol& symbol, KeyFamily family, const Value& value) {
    Symbol& owner = findOrMake(symbol, family);
    if (owner.entry != 0) {
        entries_[owner.entry - 1].value = value;
    } else if (hasOutside(symbol, family)) {
        outer_->set(text(keyOf(symbol.name, family)), toObject(value, home_));
    } else {
        pushEntry(owner, value);
    }
}

void ScopeStack::define(Symbol& symbol, const Value& value) {
    Symbol& owner = *symbol.owner;
    if (owner.entry != 0 && entries_[owner.entry - 1].depth == depth()) {
        entries_[owner.entry - 1].value = value;
    } else {
        pushEntry(owner, value);
    }
}

void ScopeStack::remove(Symbol& symbol) {
    if (hasOutside(symbol, KeyFamily::plain)) {
        outer_->remove(text(keyOf(symbol.name, KeyFamily::plain)));
        return;
    }
    uint32_t* link = &symbol.owner->entry;
    while (*link != 0 && entries_[*link - 1].below != 0) {
        link = &entries_[*link - 1].below;
    }
    if (*link != 0) {
        entries_[*link - 1].symbol = nullptr;
        *link = 0;
    }
}

}  // namespace glsl
