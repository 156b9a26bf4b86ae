#pragma once

/// A tree of files in memory, which also notes what was asked for.

#include <map>
#include <string>
#include <vector>

#include "DirectXEffectMgr/Source/core/shader_file.h"

struct MemoryFiles : FileSource {
    std::map<std::string, std::string> files;
    std::vector<std::string> asked;

    MemoryFiles() = default;
    explicit MemoryFiles(std::map<std::string, std::string> tree) : files(std::move(tree)) {}

    bool read(const std::string& path, std::string& bytes) override {
        asked.push_back(path);
        const auto found = files.find(path);
        bytes = found == files.end() ? std::string() : found->second;
        return found != files.end();
    }
};
