#pragma once

/// Which file and line each stretch of an assembled shader came from. Filled only if somebody asks;
/// the library itself never does.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "DirectXEffectMgr/Source/core/shader_file.h"

/// A text that went into an assembled shader.
struct SourceFile {
    std::string name;        // the path as it was opened, or a word in angle brackets
    std::string text;        // as it was read: line ends translated, base64 decoded
    bool generated = false;  // the library's own text: a prelude or the parameters' declarations
};

/// A byte of a SourceFile.
struct SourcePosition {
    uint32_t file = 0;  // index into SourceMap::files
    size_t offset = 0;  // bytes; may be the end of the text
};

/// A position as people name it.
struct SourceLocation {
    std::string_view file;       // name of the file
    std::string_view line_text;  // the whole line, without its newline
    size_t line = 1;             // counts from 1
    size_t column = 1;           // bytes, counts from 1
    bool generated = false;      // no author wrote this line
};

/// A file that did not give the text it was wanted for.
struct SourceProblem {
    ReadStatus status = ReadStatus::kUnreadable;
    std::string path;                     // as it was to be opened
    std::optional<SourcePosition> place;  // the directive that wanted it, if one did
};

/// The origins of one text, as stretches in order. Each stretch is either a copy of a file's bytes
/// or a replacement, all of which comes from one position.
class OriginMap {
public:
    /// The next `length` bytes of the text are those of `file` from `offset` on.
    void append_copy(uint32_t file, size_t offset, size_t length);
    /// The next `length` bytes of the text stand for what is at `offset` of `file`.
    void append_replacement(SourcePosition origin, size_t length);
    /// The next bytes of the text are bytes `begin` to `end` of the text that `from` describes.
    void append_slice(const OriginMap& from, size_t begin, size_t end);

    /// Length of the text in bytes.
    size_t size() const { return size_; }
    /// Where byte `offset` of the text came from. The end of the text lies behind the last byte's
    /// origin. Nothing for an empty map.
    std::optional<SourcePosition> find(size_t offset) const;

private:
    struct Stretch {
        size_t begin;  // in the text
        SourcePosition origin;
        bool copied;
    };

    size_t index_of(size_t offset) const;
    void append(const Stretch& stretch, size_t length);

    std::vector<Stretch> stretches_;  // ascending by begin, none empty
    size_t size_ = 0;
};

/// The map of one assembled stage.
struct SourceMap {
    std::vector<SourceFile> files;
    std::vector<SourceProblem> problems;
    OriginMap origins;  // of the assembled text

    /// @returns the index of the new file
    uint32_t add_file(std::string name, std::string text, bool generated = false);

    /// Names a position of a file.
    SourceLocation locate(SourcePosition position) const;

    /// Names where byte `offset` of the assembled text came from; nothing if the map is empty.
    std::optional<SourceLocation> locate_assembled(size_t offset) const;
};
