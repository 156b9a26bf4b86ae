#pragma once

#include "DirectXEffectMgr/Include/OpenGLEffectMgr.h"

namespace host {

/// The library under test, loaded the way an editor does it: by file name, then its three exports.
class Library {
public:
    /// Loads it at the first use; ends the program with a message if it cannot be loaded.
    static const Library& get();

    CreateEngineFunction create = nullptr;
    DestroyEngineFunction destroy = nullptr;
    SetIsAutoCreateGLContextFunction setAutoCreate = nullptr;
    void* module = nullptr;

private:
    Library();
};

}  // namespace host
