#pragma once

#include <cstddef>
#include <string>

namespace trust {

/// What this process holds of the system, for tests that nothing grows.
struct Footprint {
    unsigned long handles = 0;
    size_t private_bytes = 0;  // committed memory that is the process's own
    size_t heap_bytes = 0;     // in use on the process's and the C run-time's heap
};
Footprint footprintNow();

/// "handles 80 -> 80, private 10.0 -> 10.1 MiB, heap 2.0 -> 2.0 MiB"
std::string change(const Footprint& before, const Footprint& after);

}  // namespace trust
