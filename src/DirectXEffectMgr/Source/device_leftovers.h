#pragma once

#include <vector>

struct IUnknown;

/// Device objects that nobody needs any more and that are not to be released yet.
///
/// Not copyable; what is left at the end is released.
class DeviceLeftovers {
public:
    DeviceLeftovers() = default;
    DeviceLeftovers(const DeviceLeftovers&) = delete;
    DeviceLeftovers& operator=(const DeviceLeftovers&) = delete;
    ~DeviceLeftovers() { clear(); }

    /// Takes over one reference; null is left out.
    void keep(IUnknown* object);
    /// Releases all of them.
    void clear() noexcept;

private:
    std::vector<IUnknown*> objects_;
};
