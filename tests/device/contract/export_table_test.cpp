#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "host/library.h"

namespace {

/// The file of the library as it lies on the disk.
class DllFile {
public:
    DllFile() {
        char path[MAX_PATH] = {};
        GetModuleFileNameA(static_cast<HMODULE>(host::Library::get().module), path, MAX_PATH);
        path_ = path;
        std::ifstream in(path_, std::ios::binary);
        bytes_.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    const std::string& path() const { return path_; }
    const IMAGE_NT_HEADERS64& headers() const {
        return *at<IMAGE_NT_HEADERS64>(static_cast<DWORD>(at<IMAGE_DOS_HEADER>(0)->e_lfanew));
    }
    const IMAGE_EXPORT_DIRECTORY& exports() const {
        const IMAGE_DATA_DIRECTORY& entry =
            headers().OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
        return *inMemory<IMAGE_EXPORT_DIRECTORY>(entry.VirtualAddress);
    }
    template <class Type>
    const Type* inMemory(DWORD address) const {
        const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(&headers());
        for (int i = 0; i < headers().FileHeader.NumberOfSections; ++i, ++section) {
            if (address >= section->VirtualAddress &&
                address < section->VirtualAddress + section->SizeOfRawData) {
                return at<Type>(address - section->VirtualAddress + section->PointerToRawData);
            }
        }
        return nullptr;
    }

private:
    template <class Type>
    const Type* at(DWORD offset) const {
        return reinterpret_cast<const Type*>(bytes_.data() + offset);
    }
    std::string path_;
    std::vector<char> bytes_;
};

TEST(ExportTableTest, HoldsExactlyTheThreeNames) {
    const DllFile file;
    const IMAGE_EXPORT_DIRECTORY& exports = file.exports();
    const DWORD* names = file.inMemory<DWORD>(exports.AddressOfNames);
    std::vector<std::string> found;
    for (DWORD i = 0; i < exports.NumberOfNames; ++i) {
        found.emplace_back(file.inMemory<char>(names[i]));
    }
    std::sort(found.begin(), found.end());
    EXPECT_EQ((std::vector<std::string>{"CreateNLEOpenGLEffectEngineInstance",
                                        "DestroyNLEOpenGLEffectEngineInstance",
                                        "SetIsAutoCreateGLContext"}),
              found);
    EXPECT_EQ(3u, exports.NumberOfFunctions);
}

TEST(ExportTableTest, CallsItselfByTheNameOfTheOtherEngine) {
    const DllFile file;
    EXPECT_STREQ("OrvaneOpenGLEffectMgr.dll", file.inMemory<char>(file.exports().Name));
}

TEST(ExportTableTest, IsA64BitLibraryUnderItsOwnFileName) {
    const DllFile file;
    EXPECT_EQ(IMAGE_FILE_MACHINE_AMD64, file.headers().FileHeader.Machine);
    EXPECT_NE(0, file.headers().FileHeader.Characteristics & IMAGE_FILE_DLL);
    EXPECT_NE(std::string::npos, file.path().find("OrvaneDirectXEffectMgr.dll"));
}

}  // namespace
