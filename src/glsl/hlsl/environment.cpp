#include "glsl/hlsl/environment.h"

#include <utility>

namespace glsl {

Environment::Environment(std::shared_ptr<Environment> parent) : parent_(std::move(parent)) {}

const Environment* Environment::holder(std::string_view name) const {
    const Environment* scope = this;
    while (scope != nullptr && scope->entries_.find(name) == scope->entries_.end()) {
        scope = scope->parent_.get();
    }
    return scope;
}

bool Environment::has(std::string_view name) const {
    return holder(name) != nullptr;
}

std::shared_ptr<Object> Environment::get(std::string_view name) const {
    const Environment* const scope = holder(name);
    return scope != nullptr ? scope->entries_.find(name)->second : nullptr;
}

std::shared_ptr<Object> Environment::set(std::string_view name, std::shared_ptr<Object> value) {
    Environment* scope = this;
    while (scope != nullptr) {
        const auto found = scope->entries_.find(name);
        if (found != scope->entries_.end()) {
            return found->second = std::move(value);
        }
        scope = scope->parent_.get();
    }
    return entries_.emplace(name, std::move(value)).first->second;
}

void Environment::define(std::string_view name, std::shared_ptr<Object> value) {
    const auto found = entries_.find(name);
    if (found != entries_.end()) {
        found->second = std::move(value);
    } else {
        entries_.emplace(name, std::move(value));
    }
}

void Environment::remove(std::string_view name) {
    Environment* outermost = nullptr;
    for (Environment* scope = this; scope != nullptr; scope = scope->parent_.get()) {
        if (scope->entries_.find(name) != scope->entries_.end()) {
            outermost = scope;
        }
    }
    if (outermost != nullptr) {
        outermost->entries_.erase(outermost->entries_.find(name));
    }
}

bool Environment::empty() const {
    const Environment* scope = this;
    while (scope != nullptr && scope->entries_.empty()) {
        scope = scope->parent_.get();
    }
    return scope == nullptr;
}

}  // namespace glsl
