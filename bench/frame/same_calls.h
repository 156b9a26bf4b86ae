#pragma once

/// Whether two frames are the same to the device.

#include <functional>

#include "fake/world.h"

namespace bench {

/// Draws each frame twice, the second time with the device's log on, and compares call by call:
/// object, method, every argument and description, and the bytes that went in. Objects are the same
/// if they appear at the same places.
///
/// @throws std::runtime_error with both lists if the frames differ
void expect_same_calls(fake::World& world, const std::function<void()>& ours,
                       const std::function<void()>& by_hand);

}  // namespace bench
