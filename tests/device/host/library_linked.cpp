// The library linked into the program instead of loaded, for tests that replace its allocator or
// look behind its interfaces.

#include "host/library.h"

namespace host {

Library::Library() {
    create = CreateNLEOpenGLEffectEngineInstance;
    destroy = DestroyNLEOpenGLEffectEngineInstance;
    setAutoCreate = SetIsAutoCreateGLContext;
}

const Library& Library::get() {
    static const Library library;
    return library;
}

}  // namespace host
