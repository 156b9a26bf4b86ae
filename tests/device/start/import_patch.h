#pragma once

namespace start {

/// Puts another function in the place of one that a loaded module imports, until destruction.
class ImportPatch {
public:
    /// @param module    the module whose import table is changed
    /// @param library   file name of the library that it imports from, in any case
    /// @param function  name of the import
    ImportPatch(void* module, const char* library, const char* function, void* replacement);
    ~ImportPatch();
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;

    /// Whether the import was found.
    bool active() const { return place_ != nullptr; }

private:
    void put(void* function);

    void** place_ = nullptr;
    void* former_ = nullptr;
};

}  // namespace start
