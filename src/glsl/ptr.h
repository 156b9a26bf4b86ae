#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "glsl/arena.h"

/// How the syntax tree is held.
///
/// All nodes of a tree lie in one arena. Inside the tree nodes refer to one another through
/// `link<T>` and `list<T>`, which cost nothing to copy and own nothing. From outside, the tree is
/// held through `ptr<T>`: as long as one `ptr` to any node of it lives, the whole tree lives.
/// Whoever only walks a tree that somebody else holds passes links or plain pointers.
namespace glsl {

/// A shared owner of a tree that points to one node of it, or null. Count and tree belong to one
/// thread.
template <class T>
class ptr {
public:
    ptr() = default;
    ptr(std::nullptr_t) {}  // NOLINT(google-explicit-constructor): as for any smart pointer
    /// Takes a reference of its own on `home`, in whose memory `node` lies.
    ptr(T* node, arena* home) : node_(node), home_(home) { retain(); }
    /// Points to `node` and keeps the tree of `owner`, of which `node` is a part.
    template <class U>
    ptr(T* node, const ptr<U>& owner) : node_(node), home_(owner.home()) {
        retain();
    }
    ptr(const ptr& other) : node_(other.node_), home_(other.home_) { retain(); }
    ptr(ptr&& other) noexcept
        : node_(std::exchange(other.node_, nullptr)), home_(std::exchange(other.home_, nullptr)) {}
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    ptr(const ptr<U>& other)  // NOLINT(google-explicit-constructor): derived to base
        : node_(other.get()), home_(other.home()) {
        retain();
    }
    ~ptr() {
        if (home_ != nullptr) {
            home_->release();
        }
    }
    ptr& operator=(ptr other) noexcept {
        std::swap(node_, other.node_);
        std::swap(home_, other.home_);
        return *this;
    }

    T* get() const { return node_; }
    T* operator->() const { return node_; }
    T& operator*() const { return *node_; }
    explicit operator bool() const { return node_ != nullptr; }
    /// The arena of the tree, null for a null pointer. New nodes of the tree are made there.
    arena* home() const { return home_; }

private:
    void retain() {
        if (home_ != nullptr) {
            home_->retain();
        }
    }

    T* node_ = nullptr;
    arena* home_ = nullptr;
};

template <class T, class U>
bool operator==(const ptr<T>& a, const ptr<U>& b) {
    return a.get() == b.get();
}
template <class T, class U>
bool operator!=(const ptr<T>& a, const ptr<U>& b) {
    return a.get() != b.get();
}
template <class T>
bool operator==(const ptr<T>& a, std::nullptr_t) {
    return a.get() == nullptr;
}
template <class T>
bool operator!=(const ptr<T>& a, std::nullptr_t) {
    return a.get() != nullptr;
}

/// A field of a node that refers to another node of the same tree; null until it is set. Owns
/// nothing and turns into a plain pointer wherever one is wanted, so links compare like pointers.
template <class T>
class link {
public:
    link() = default;
    link(T* node) : node_(node) {}  // NOLINT(google-explicit-constructor)
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    link(link<U> other) : node_(other.get()) {}  // NOLINT(google-explicit-constructor)

    T* get() const { return node_; }
    T* operator->() const { return node_; }
    operator T*() const { return node_; }  // NOLINT(google-explicit-constructor)

private:
    T* node_ = nullptr;
};

/// Static downcast; the caller knows the class, from `kind` or otherwise. Null stays null.
template <class T, class U>
T* as(link<U> node) {
    return static_cast<T*>(node.get());
}
template <class T, class U>
T* as(U* node) {
    return static_cast<T*>(node);
}
template <class T, class U>
const T* as(const U* node) {
    return static_cast<const T*>(node);
}

/// Growable array of links whose cells lie in an arena. Copies share the cells: an element once
/// put in is never written over, and a copy that grows takes cells of its own.
template <class T>
class list {
public:
    using value_type = link<T>;
    using const_iterator = const link<T>*;

    list() = default;
    /// `count` ready cells, which stay where they are and are never written again.
    list(const link<T>* cells, std::size_t count)
        : cells_(const_cast<link<T>*>(cells)), size_(static_cast<std::uint32_t>(count)) {}
    list(const list& other) : cells_(other.cells_), size_(other.size_) {}
    // Assigned to itself a list keeps its elements.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
    list& operator=(const list& other) {
        cells_ = other.cells_;
        size_ = other.size_;
        capacity_ = 0;
        return *this;
    }

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    const link<T>& operator[](std::size_t index) const { return cells_[index]; }
    const link<T>& front() const { return cells_[0]; }
    const link<T>& back() const { return cells_[size_ - 1]; }
    const_iterator begin() const { return cells_; }
    const_iterator end() const { return cells_ + size_; }

    void push_back(arena& home, link<T> node) {
        if (size_ >= capacity_) {
            const std::uint32_t wanted = size_ == 0 ? 2 : size_ * 2;
            moveToOwnCells(home, wanted);
        }
        cells_[size_] = node;
        ++size_;
    }
    /// Puts `node` before the element at `index`.
    void insert(arena& home, std::size_t index, link<T> node) {
        push_back(home, nullptr);
        moveToOwnCells(home, size_);
        for (std::size_t i = size_ - 1; i > index; --i) {
            cells_[i] = cells_[i - 1];
        }
        cells_[index] = node;
    }
    void erase(arena& home, std::size_t index) {
        moveToOwnCells(home, size_);
        for (std::size_t i = index; i + 1 < size_; ++i) {
            cells_[i] = cells_[i + 1];
        }
        --size_;
    }
    /// Keeps the first `count` elements, all of them if there are fewer.
    void truncate(std::size_t count) {
        if (count < size_) {
            size_ = static_cast<std::uint32_t>(count);
            capacity_ = 0;
        }
    }

private:
    void moveToOwnCells(arena& home, std::uint32_t capacity) {
        auto* cells = static_cast<link<T>*>(home.allocate(capacity * sizeof(link<T>)));
        if (size_ != 0) {
            std::memcpy(static_cast<void*>(cells), cells_, size_ * sizeof(link<T>));
        }
        cells_ = cells;
        capacity_ = capacity;
    }

    link<T>* cells_ = nullptr;
    std::uint32_t size_ = 0;
    std::uint32_t capacity_ = 0;  // cells that this list may write; 0 for a copy
};

}  // namespace glsl
