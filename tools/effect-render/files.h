#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace effect_render {

// Paths are UTF-8 on every platform. A function that cannot do its work throws a ToolError that
// names the path.

/// All bytes of a file.
std::vector<uint8_t> ReadBytes(const std::string& path);

/// A text file; line ends read as "\n" whatever the file holds.
std::string ReadText(const std::string& path);

/// Little-endian 32-bit floats, as an audio input takes them.
std::vector<float> ReadFloats(const std::string& path);

/// Replaces the file's content.
void WriteBytes(const std::string& path, const std::vector<uint8_t>& bytes);

bool IsFolder(const std::string& path);
bool IsFile(const std::string& path);

/// `path` as seen from `folder`; an absolute `path` stays as it is. Separators are "/".
std::string PathIn(const std::string& folder, const std::string& path);

}  // namespace effect_render
