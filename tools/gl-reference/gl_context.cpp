#include "gl_context.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

namespace reference {

namespace {

EGLDisplay surfaceless_display() {
    const auto get_display = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
        eglGetProcAddress("eglGetPlatformDisplayEXT"));
    if (get_display == nullptr) {
        return EGL_NO_DISPLAY;
    }
    return get_display(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
}

EGLContext core_context(EGLDisplay display) {
    const EGLint config_attributes[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    eglChooseConfig(display, config_attributes, &config, 1, &count);
    const EGLint context_attributes[] = {EGL_CONTEXT_MAJOR_VERSION,
                                         3,
                                         EGL_CONTEXT_MINOR_VERSION,
                                         3,
                                         EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                         EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                         EGL_NONE};
    return eglCreateContext(display, count > 0 ? config : nullptr, EGL_NO_CONTEXT,
                            context_attributes);
}

}  // namespace

std::unique_ptr<GlContext> GlContext::create(const char*& error) {
    std::unique_ptr<GlContext> result(new GlContext);
    const EGLDisplay display = surfaceless_display();
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr)) {
        error = "no EGL display without a surface";
        return nullptr;
    }
    result->display_ = display;
    if (!eglBindAPI(EGL_OPENGL_API)) {
        error = "EGL has no desktop OpenGL";
        return nullptr;
    }
    result->context_ = core_context(display);
    if (result->context_ == EGL_NO_CONTEXT) {
        error = "no OpenGL 3.3 core context";
        return nullptr;
    }
    if (!eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, result->context_)) {
        error = "the context cannot be made current without a surface";
        return nullptr;
    }
    return result;
}

GlContext::~GlContext() {
    if (display_ == nullptr) {
        return;
    }
    eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (context_ != nullptr) {
        eglDestroyContext(display_, context_);
    }
    eglTerminate(display_);
}

}  // namespace reference
