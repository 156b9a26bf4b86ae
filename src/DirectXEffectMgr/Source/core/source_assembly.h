#pragma once

/// The steps from an effect's files to the GLSL text that the parser gets.

#include <string>
#include <string_view>

#include "DirectXEffectMgr/Source/core/shader_file.h"
#include "DirectXEffectMgr/Source/core/source_map.h"

/// The word that `PREFIX(x)` puts before `x`, with an underscore between.
inline constexpr std::string_view kPrefixWord = "PREFIX";

/// Where included texts come from, and who wants to know about it.
struct AssemblyContext {
    FileSource& files = disk_files();
    bool base64 = false;       // files are base64 text
    SourceMap* map = nullptr;  // if not null, receives every file that is read, and problems
};

/// Limits of ExpandIncludes. A text that passes one of them is refused, so a file that includes
/// itself ends in an error.
constexpr size_t kMaxIncludeDepth = 64;                 // files open in one another
constexpr size_t kMaxIncludes = 4096;                   // directives in one text, in all
constexpr size_t kMaxIncludedBytes = size_t{64} << 20;  // of all included files together

/// Replaces each line part `#include "name"` of `text` by the file `name` from the folder of
/// `path`. The file's own directives are replaced likewise, relative to the same folder. Directives
/// in comments stay, as does one without a newline behind it; quotes protect nothing. A file that
/// cannot be read is replaced by nothing. Takes time linear in the result.
///
/// @param path     file that `text` stands for; only its folder is used
/// @param origins  if not null: receives (appended) the map of the result
/// @param file     index of `text` in the context's map, if that is asked for
/// @returns false if a limit was passed, which is logged; `text` is then as far as it came
[[nodiscard]] bool ExpandIncludes(const std::string& path, std::string& text,
                                  const AssemblyContext& context, OriginMap* origins = nullptr,
                                  uint32_t file = 0);

/// Replaces each `PREFIX(x)` by `prefix`, "_" and `x`, where `x` reaches to the matching closing
/// parenthesis, or to the end of the text. `PREFIX(iResolution)` and `PREFIX(iResolutionOrig)`
/// become the plain name. What stands inside is not looked at again.
///
/// @param from, to  if not null: the map of `text`, and what receives that of the result (appended)
std::string ExpandPrefix(std::string_view text, std::string_view prefix,
                         const OriginMap* from = nullptr, OriginMap* to = nullptr);

/// The same for `PREFIX_DRAW_INSTANCE(x)`, with no name excepted.
std::string ExpandDrawInstance(std::string_view text, std::string_view prefix,
                               const OriginMap* from = nullptr, OriginMap* to = nullptr);
