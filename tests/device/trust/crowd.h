#pragma once

#include <chrono>

#include "host/fake_host.h"

namespace trust {

/// Eight host threads with fifty effects between them, each made, used, resized, read back and
/// dropped at random until the time is over.
///
/// @param draws_unindexed  see RandomHost
/// @returns how many calls were made
int runCrowd(IOpenGLEffectEngine* engine, std::chrono::seconds length, bool draws_unindexed);

/// How long a stress test runs: ORVANE_STRESS_SECONDS of the environment, or a few seconds.
std::chrono::seconds stressLength();

}  // namespace trust
