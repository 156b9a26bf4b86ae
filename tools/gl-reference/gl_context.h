#pragma once

#include <memory>

namespace reference {

/// An OpenGL 3.3 core context without a window, current on the thread that made it.
class GlContext {
public:
    /// @returns null if the machine has no EGL that gives such a context; `error` then says why
    static std::unique_ptr<GlContext> create(const char*& error);
    ~GlContext();
    GlContext(const GlContext&) = delete;
    GlContext& operator=(const GlContext&) = delete;

private:
    GlContext() = default;
    void* display_ = nullptr;
    void* context_ = nullptr;
};

}  // namespace reference
