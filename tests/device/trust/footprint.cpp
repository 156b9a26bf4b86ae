#include "trust/footprint.h"

#include <windows.h>

#include <malloc.h>
#include <psapi.h>

#include <cstdio>
#include <vector>

namespace trust {
namespace {

size_t busyBytes(HANDLE heap) {
    size_t sum = 0;
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry) != 0) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
            sum += entry.cbData;
        }
    }
    HeapUnlock(heap);
    return sum;
}

struct SystemHandle {
    ULONG owner;
    BYTE type;
    BYTE flags;
    USHORT value;
    PVOID object;
    ULONG access;
};
struct SystemHandles {
    ULONG count;
    SystemHandle handles[1];
};
constexpr ULONG kSystemHandleInformation = 16;
using QuerySystem = LONG(WINAPI*)(ULONG what, PVOID into, ULONG bytes, PULONG needed);

// Counted in the system's own table: Wine answers GetProcessHandleCount() with 0.
unsigned long countHandles() {
    static const auto query = reinterpret_cast<QuerySystem>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("ntdll.dll"), "NtQuerySystemInformation")));
    std::vector<char> table(size_t{1} << 16);
    ULONG needed = 0;
    while (query(kSystemHandleInformation, table.data(), static_cast<ULONG>(table.size()),
                 &needed) < 0) {
        if (table.size() > (size_t{64} << 20)) {
            return 0;
        }
        table.resize(table.size() * 2);
    }
    const auto* const all = reinterpret_cast<const SystemHandles*>(table.data());
    unsigned long count = 0;
    for (ULONG i = 0; i < all->count; ++i) {
        count += all->handles[i].owner == GetCurrentProcessId() ? 1 : 0;
    }
    return count;
}

double mebibytes(size_t bytes) {
    return static_cast<double>(bytes) / (1 << 20);
}

}  // namespace

Footprint footprintNow() {
    Footprint now;
    now.handles = countHandles();
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    now.private_bytes = counters.PagefileUsage;
    const HANDLE process_heap = GetProcessHeap();
    const auto own_heap = reinterpret_cast<HANDLE>(_get_heap_handle());
    now.heap_bytes = busyBytes(process_heap);
    now.heap_bytes += own_heap == process_heap ? 0 : busyBytes(own_heap);
    return now;
}

std::string change(const Footprint& before, const Footprint& after) {
    char text[160];
    std::snprintf(
        text, sizeof text, "handles %lu -> %lu, private %.1f -> %.1f MiB, heap %.1f -> %.1f MiB",
        before.handles, after.handles, mebibytes(before.private_bytes),
        mebibytes(after.private_bytes), mebibytes(before.heap_bytes), mebibytes(after.heap_bytes));
    return text;
}

}  // namespace trust
