#include <algorithm>
#include <vector>

#include "DirectXEffectMgr/Source/core/source_assembly.h"
#include "DirectXEffectMgr/Source/logging/logging.h"

namespace {

constexpr std::string_view kDirective = "#include";

// The part of a path that its file lies in, with the separator.
std::string folder_of(const std::string& path) {
    const size_t separator = path.find_last_of("/\\");
    return separator == std::string::npos ? std::string() : path.substr(0, separator + 1);
}

// Replaces directives as if each file's text were put in its place and looked at from its first
// character on, but copies every byte once: what is left to look at is a stack of texts, the
// innermost file on top. A text below the top continues at the newline behind its directive, so
// nothing but a block comment can reach from one text into the next.
class IncludeExpander {
public:
    IncludeExpander(const std::string& path, const AssemblyContext& context, OriginMap* origins)
        : folder_(folder_of(path)), context_(context), origins_(origins) {}

    bool run(std::string text, uint32_t file) {
        levels_.push_back(Level{std::move(text), file});
        while (!levels_.empty()) {
            if (top().at >= top().text.size()) {
                copy_passed();
                levels_.pop_back();
            } else if (in_comment_) {
                skip_block_comment();
            } else if (!step()) {
                return false;
            }
        }
        return true;
    }

    std::string take_result() { return std::move(out_); }

private:
    struct Level {
        std::string text;
        uint32_t file;
        size_t at = 0;      // next byte to look at
        size_t copied = 0;  // end of what is in out_
    };

    // A directive whose name is between quotes, in the text on top.
    struct Directive {
        size_t begin;
        size_t end;
        size_t name_begin;
        size_t name_end;
    };

    Level& top() { return levels_.back(); }

    // Passes what means nothing here, then one byte, one comment or one directive.
    bool step() {
        Level& level = top();
        const std::string& text = level.text;
        const size_t at = next_mark(text, level.at);
        level.at = at;
        if (at == text.size()) {
            return true;
        }
        if (text[at] == '/' && at + 1 < text.size() && text[at + 1] == '/') {
            const size_t newline = text.find('\n', at);
            level.at = newline == std::string::npos ? text.size() : newline + 1;
            return true;
        }
        if (text[at] == '/' && at + 1 < text.size() && text[at + 1] == '*') {
            skip_block_comment();
            return true;
        }
        if (text[at] == '"') {
            // On purpose: only the quote itself is passed, so a directive in a string is expanded,
            // and the byte behind a quote opens no comment; sources are written to that.
            ++level.at;
        }
        if (level.at < text.size() && text[level.at] == '#' && is_include()) {
            return work_directive();
        }
        ++level.at;
        return true;
    }

    // The next byte that can mean something.
    static size_t next_mark(const std::string& text, size_t at) {
        while (at < text.size() && text[at] != '/' && text[at] != '#' && text[at] != '"') {
            ++at;
        }
        return at;
    }

    // On purpose: the search begins at the opener, so "/*/" is a whole comment.
    void skip_block_comment() {
        Level& level = top();
        const size_t end = level.text.find("*/", level.at);
        in_comment_ = end == std::string::npos;
        level.at = in_comment_ ? level.text.size() : end + 2;
    }

    // The directive's word, with more than its own length left to the end of everything.
    bool is_include() {
        const Level& level = top();
        return level.text.compare(level.at, kDirective.size(), kDirective) == 0 &&
               has_more_than(kDirective.size());
    }

    bool has_more_than(size_t bytes) const {
        size_t left = 0;
        for (size_t i = levels_.size(); i > 0 && left <= bytes; --i) {
            left += levels_[i - 1].text.size() - levels_[i - 1].at;
        }
        return left > bytes;
    }

    bool work_directive() {
        Level& level = top();
        const size_t scan = level.at + kDirective.size();
        const size_t newline = level.text.find('\n', scan);
        // Behind every text but the outermost stands the newline of its own directive.
        if (newline == std::string::npos && levels_.size() == 1) {
            level.at = level.text.size();
            return true;
        }
        const size_t end = newline == std::string::npos ? level.text.size() : newline;
        const std::string_view line(level.text.data(), end);
        const size_t open = line.find('"', scan);
        const size_t close = open == line.npos ? line.npos : line.find('"', open + 1);
        if (close == line.npos) {
            level.at = end + 1;
            return true;
        }
        return include(Directive{level.at, end, open + 1, close});
    }

    bool include(const Directive& directive) {
        const std::string path =
            folder_ +
            top().text.substr(directive.name_begin, directive.name_end - directive.name_begin);
        const SourcePosition place{top().file, directive.begin};
        if (levels_.size() > kMaxIncludeDepth || ++includes_ > kMaxIncludes) {
            return refuse(path, place, "#include nested too deep or too often");
        }
        copy_passed();
        top().at = directive.end;
        top().copied = directive.end;
        ReadStatus status;
        std::string text = ReadShaderFile(path, context_.base64, context_.files, &status);
        included_bytes_ += text.size();
        if (included_bytes_ > kMaxIncludedBytes) {
            return refuse(path, place, "#include brings too much text");
        }
        push(std::move(text), path, place, status);
        return true;
    }

    void push(std::string text, const std::string& path, SourcePosition place, ReadStatus status) {
        uint32_t file = 0;
        if (context_.map != nullptr) {
            if (status != ReadStatus::kRead) {
                context_.map->problems.push_back(SourceProblem{status, path, place});
            }
            file = context_.map->add_file(path, text);
        }
        levels_.push_back(Level{std::move(text), file});
    }

    bool refuse(const std::string& path, SourcePosition place, const char* reason) {
        log_error("%s: %s", reason, path.c_str());
        if (context_.map != nullptr) {
            context_.map->problems.push_back(SourceProblem{ReadStatus::kTooMuch, path, place});
        }
        return false;
    }

    // Copies what was looked at and is no directive.
    void copy_passed() {
        Level& level = top();
        const size_t end = std::min(level.at, level.text.size());
        out_.append(level.text, level.copied, end - level.copied);
        if (origins_ != nullptr) {
            origins_->append_copy(level.file, level.copied, end - level.copied);
        }
        level.copied = end;
    }

    const std::string folder_;
    const AssemblyContext& context_;
    OriginMap* const origins_;
    std::vector<Level> levels_;
    bool in_comment_ = false;
    size_t includes_ = 0;
    size_t included_bytes_ = 0;
    std::string out_;
};

}  // namespace

bool ExpandIncludes(const std::string& path, std::string& text, const AssemblyContext& context,
                    OriginMap* origins, uint32_t file) {
    if (text.find(kDirective) == std::string::npos) {
        if (origins != nullptr) {
            origins->append_copy(file, 0, text.size());
        }
        return true;
    }
    IncludeExpander expander(path, context, origins);
    const bool complete = expander.run(std::move(text), file);
    text = expander.take_result();
    return complete;
}
