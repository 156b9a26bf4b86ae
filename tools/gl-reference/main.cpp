#include <cstdio>
#include <exception>

#include "gl_context.h"
#include "job.h"
#include "renderer.h"

// gl-reference JOB.json...: draws what OpenGL draws from the jobs' shaders. Exit status 0 if all
// were drawn, 1 if any failed (one line each on stderr), 2 for wrong usage.
int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: gl-reference JOB.json...\n", stderr);
        return 2;
    }
    const char* reason = nullptr;
    const auto context = reference::GlContext::create(reason);
    if (context == nullptr) {
        std::fprintf(stderr, "error: %s\n", reason);
        return 1;
    }
    int status = 0;
    for (int i = 1; i < argc; ++i) {
        try {
            reference::render(reference::read_job(argv[i]));
        } catch (const std::exception& error) {
            std::fprintf(stderr, "error: %s: %s\n", argv[i], error.what());
            status = 1;
        }
    }
    return status;
}
