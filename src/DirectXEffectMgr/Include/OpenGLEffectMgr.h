#pragma once

/// The three functions that the library exports, undecorated. A host loads the library by name and
/// asks for them with GetProcAddress, or links its import library.

#include <cstdint>

#include "IOpenGLEffect.h"
#include "IOpenGLEffectEngine.h"
#include "OpenGLEffectTypes.h"

extern "C" {

/// Gives the engine of a mode; makes and starts it if there is none. There is at most one engine
/// per mode and no count of its users: a second call gives the same pointer, and its `log_callback`
/// and `external_device` are then ignored.
///
/// @param out_engine       receives the engine, only on success
/// @param log_callback     where messages go from now on; null silences the library
/// @param auto_create      true: threaded mode, false: inline mode (see IOpenGLEffectEngine)
/// @param external_device  a device of the host's to work on, the library adds a reference; null:
///                         the engine makes a hardware device of its own
/// @returns 0; 0x80004003 for a null `out_engine`; 0x8007000E if there is no device. A failed
///          engine stays: destroy is impossible without its pointer, so the mode keeps failing.
/// Any thread; one call of create and destroy runs at a time. Not from inside a task.
int32_t CreateNLEOpenGLEffectEngineInstance(IOpenGLEffectEngine** out_engine,
                                            LogFunction log_callback, bool auto_create,
                                            ID3D11Device* external_device);

/// Ends an engine for all who hold it: stops its threads, drops the tasks that did not start. All
/// its effects must be gone.
///
/// @param engine  null and pointers that are no live engine are ignored
/// @returns 0
/// Any thread but the engine's own.
int32_t DestroyNLEOpenGLEffectEngineInstance(IOpenGLEffectEngine* engine);

/// The same as `SetIsAutoCreateGLContext` of the engine. A null engine is ignored.
void SetIsAutoCreateGLContext(IOpenGLEffectEngine* engine, bool value);

}  // extern "C"

/// Types of the three for GetProcAddress.
using CreateEngineFunction = decltype(&CreateNLEOpenGLEffectEngineInstance);
using DestroyEngineFunction = decltype(&DestroyNLEOpenGLEffectEngineInstance);
using SetIsAutoCreateGLContextFunction = decltype(&SetIsAutoCreateGLContext);

/// File name of the library.
constexpr const char kOpenGLEffectMgrFileName[] = "OrvaneDirectXEffectMgr.dll";
