#pragma once

#include <string>
#include <string_view>

namespace host {

/// A folder of its own for the files of one test; removed with everything in it.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    /// Writes a file, making folders on the way, and gives its path (UTF-8, "/" between).
    std::string write(const std::string& name, std::string_view bytes) const;

    /// Path of a name in the folder, there or not.
    std::string path(const std::string& name) const { return root_ + "/" + name; }

private:
    std::string root_;
};

}  // namespace host
