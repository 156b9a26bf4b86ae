#include "glsl/symbols.h"

#include <algorithm>

namespace glsl {

namespace {

constexpr std::size_t kFirstSlots = 128;

symbol** makeSlots(arena& memory, std::size_t count) {
    // A slot holds a pointer. NOLINTNEXTLINE(bugprone-sizeof-expression)
    auto* slots = static_cast<symbol**>(memory.allocate(count * sizeof(symbol*)));
    std::fill(slots, slots + count, nullptr);
    return slots;
}

}  // namespace

symbolTable::symbolTable(arena& texts, arena& scratch)
    : texts_(texts),
      scratch_(scratch),
      slots_(makeSlots(scratch, kFirstSlots)),
      slot_count_(kFirstSlots) {}

std::size_t symbolTable::slotFor(std::string_view name, std::uint32_t hash) const {
    std::size_t slot = hash & (slot_count_ - 1);
    while (slots_[slot] != nullptr && (slots_[slot]->hash != hash || slots_[slot]->name != name)) {
        slot = (slot + 1) & (slot_count_ - 1);
    }
    return slot;
}

symbol* symbolTable::enter(std::string_view name, const WordKey& key) {
    std::size_t slot = slotFor(name, key.hash);
    if (slots_[slot] != nullptr) {
        return slots_[slot];
    }
    if (count_ * 4 >= slot_count_ * 3) {
        grow();
        slot = slotFor(name, key.hash);
    }
    symbol* made = scratch_.make<symbol>();
    made->name = texts_.copy(name);
    made->hash = key.hash;
    slots_[slot] = made;
    ++count_;
    return made;
}

symbol* symbolTable::find(std::string_view name) const {
    return slots_[slotFor(name, wordKey(name.data(), name.size()).hash)];
}

void symbolTable::grow() {
    symbol** old = slots_;
    const std::size_t old_count = slot_count_;
    slot_count_ *= 2;
    slots_ = makeSlots(scratch_, slot_count_);
    for (std::size_t i = 0; i < old_count; ++i) {
        if (old[i] == nullptr) {
            continue;
        }
        std::size_t slot = old[i]->hash & (slot_count_ - 1);
        while (slots_[slot] != nullptr) {
            slot = (slot + 1) & (slot_count_ - 1);
        }
        slots_[slot] = old[i];
    }
}

}  // namespace glsl
