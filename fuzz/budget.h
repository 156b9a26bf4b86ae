#pragma once

#include <cstddef>

namespace fuzz {

/// Holds a stretch of a fuzz target to what the library promises about time and memory. What goes
/// beyond it ends the process, which the fuzzer takes for a finding.
///
/// Time is that of the thread, so that other work on the machine does not count. Memory is the
/// highest sum of what was allocated and not yet freed, which the sanitizer's run time tells; in a
/// build without it memory is not looked at. One object at a time.
class Budget {
public:
    /// @param input_bytes  what the work is measured by
    explicit Budget(std::size_t input_bytes);
    ~Budget();
    Budget(const Budget&) = delete;
    Budget& operator=(const Budget&) = delete;

private:
    std::size_t input_bytes_;
    double started_;
};

/// Bytes of heap that a byte of input may cost, and bytes that the work may take besides.
constexpr std::size_t kBytesPerByte = 200;
constexpr std::size_t kBytesBesides = std::size_t{32} << 20;

/// Ends the process with a message if the condition does not hold.
void require(bool condition, const char* what);

}  // namespace fuzz
