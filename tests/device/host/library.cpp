#include "host/library.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace host {
namespace {

// By way of memcpy: a cast from FARPROC to another function type is a warning.
template <class Function>
void find(HMODULE module, const char* name, Function& out) {
    const FARPROC found = GetProcAddress(module, name);
    static_assert(sizeof found == sizeof out, "both are function pointers");
    std::memcpy(&out, &found, sizeof out);
    if (out == nullptr) {
        std::fprintf(stderr, "the library does not export %s\n", name);
        std::exit(3);
    }
}

}  // namespace

Library::Library() {
    const HMODULE loaded = LoadLibraryA(kOpenGLEffectMgrFileName);
    if (loaded == nullptr) {
        std::fprintf(stderr, "cannot load %s: error %lu\n", kOpenGLEffectMgrFileName,
                     GetLastError());
        std::exit(3);
    }
    module = loaded;
    find(loaded, "CreateNLEOpenGLEffectEngineInstance", create);
    find(loaded, "DestroyNLEOpenGLEffectEngineInstance", destroy);
    find(loaded, "SetIsAutoCreateGLContext", setAutoCreate);
}

const Library& Library::get() {
    static const Library library;
    return library;
}

}  // namespace host
