#include "start/import_patch.h"

#include <windows.h>

#include <cstring>

namespace start {
namespace {

class Module {
public:
    explicit Module(void* handle) : base_(static_cast<char*>(handle)) {}

    template <class Type>
    Type* at(size_t offset) const {
        return reinterpret_cast<Type*>(base_ + offset);
    }
    IMAGE_IMPORT_DESCRIPTOR* imports() const {
        const auto* dos = at<IMAGE_DOS_HEADER>(0);
        const auto* headers = at<IMAGE_NT_HEADERS64>(static_cast<size_t>(dos->e_lfanew));
        const IMAGE_DATA_DIRECTORY& entry =
            headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        return at<IMAGE_IMPORT_DESCRIPTOR>(entry.VirtualAddress);
    }

private:
    char* base_;
};

void** findImport(const Module& module, const char* library, const char* function) {
    for (auto* entry = module.imports(); entry->Name != 0; ++entry) {
        if (_stricmp(module.at<char>(entry->Name), library) != 0) {
            continue;
        }
        auto* names = module.at<IMAGE_THUNK_DATA64>(entry->OriginalFirstThunk);
        auto* places = module.at<IMAGE_THUNK_DATA64>(entry->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++places) {
            const auto* by_name = module.at<IMAGE_IMPORT_BY_NAME>(names->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(by_name->Name), function) == 0) {
                return reinterpret_cast<void**>(&places->u1.Function);
            }
        }
    }
    return nullptr;
}

}  // namespace

ImportPatch::ImportPatch(void* module, const char* library, const char* function, void* replacement)
    : place_(findImport(Module(module), library, function)) {
    if (place_ != nullptr) {
        former_ = *place_;
        put(replacement);
    }
}

ImportPatch::~ImportPatch() {
    if (place_ != nullptr) {
        put(former_);
    }
}

void ImportPatch::put(void* function) {
    DWORD protection = 0;
    VirtualProtect(place_, sizeof(void*), PAGE_READWRITE, &protection);
    *place_ = function;
    VirtualProtect(place_, sizeof(void*), protection, &protection);
}

}  // namespace start
