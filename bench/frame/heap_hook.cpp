#include "frame/heap_hook.h"

#include <windows.h>

#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <string_view>

namespace bench {
namespace {

std::atomic<uint64_t> allocations{0};
std::atomic<int64_t> bytes_in_use{0};

void* count_block(void* block) {
    if (block != nullptr) {
        allocations.fetch_add(1, std::memory_order_relaxed);
        bytes_in_use.fetch_add(static_cast<int64_t>(_msize(block)), std::memory_order_relaxed);
    }
    return block;
}

void count_end(void* block) {
    if (block != nullptr) {
        bytes_in_use.fetch_sub(static_cast<int64_t>(_msize(block)), std::memory_order_relaxed);
    }
}

void* counting_malloc(size_t size) {
    return count_block(std::malloc(size));
}

void* counting_calloc(size_t count, size_t size) {
    return count_block(std::calloc(count, size));
}

void* counting_realloc(void* block, size_t size) {
    count_end(block);
    return count_block(std::realloc(block, size));
}

void counting_free(void* block) {
    count_end(block);
    std::free(block);
}

struct Redirection {
    std::string_view name;
    void* to;
};

// The address that an import holds is one of the C run-time's functions or something else.
void* redirected(std::string_view name) {
    const Redirection rows[] = {
        {"malloc", reinterpret_cast<void*>(&counting_malloc)},
        {"calloc", reinterpret_cast<void*>(&counting_calloc)},
        {"realloc", reinterpret_cast<void*>(&counting_realloc)},
        {"free", reinterpret_cast<void*>(&counting_free)},
    };
    for (const Redirection& row : rows) {
        if (row.name == name) {
            return row.to;
        }
    }
    return nullptr;
}

void write_pointer(ULONGLONG* place, void* value) {
    DWORD before = 0;
    VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before);
    *place = reinterpret_cast<ULONGLONG>(value);
    VirtualProtect(place, sizeof *place, before, &before);
}

template <class T>
T* at(HMODULE module, DWORD offset) {
    return reinterpret_cast<T*>(reinterpret_cast<char*>(module) + offset);
}

// Walks one imported library's names beside the addresses that were filled in for them.
size_t redirect_imports(HMODULE module, const IMAGE_IMPORT_DESCRIPTOR& from) {
    size_t count = 0;
    const auto* name = at<IMAGE_THUNK_DATA64>(module, from.OriginalFirstThunk);
    auto* address = at<IMAGE_THUNK_DATA64>(module, from.FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++address) {
        if (IMAGE_SNAP_BY_ORDINAL64(name->u1.Ordinal)) {
            continue;
        }
        const auto* entry =
            at<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(name->u1.AddressOfData));
        void* to = redirected(reinterpret_cast<const char*>(entry->Name));
        if (to != nullptr) {
            write_pointer(&address->u1.Function, to);
            ++count;
        }
    }
    return count;
}

size_t redirect_module(HMODULE module) {
    const auto* dos = at<IMAGE_DOS_HEADER>(module, 0);
    const auto* headers = at<IMAGE_NT_HEADERS64>(module, static_cast<DWORD>(dos->e_lfanew));
    const IMAGE_DATA_DIRECTORY& directory =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    size_t count = 0;
    if (directory.VirtualAddress == 0) {
        return 0;
    }
    for (const auto* from = at<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress);
         from->Name != 0; ++from) {
        count += redirect_imports(module, *from);
    }
    return count;
}

}  // namespace

size_t hook_heap_of(const std::vector<std::string>& modules) {
    size_t count = 0;
    for (const std::string& name : modules) {
        const HMODULE module = GetModuleHandleA(name.c_str());
        if (module != nullptr) {
            count += redirect_module(module);
        }
    }
    return count;
}

HookedHeap hooked_heap() {
    return {allocations.load(), bytes_in_use.load()};
}

}  // namespace bench
