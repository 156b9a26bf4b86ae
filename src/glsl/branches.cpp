#include <algorithm>
#include <cstring>

#include "glsl/char_class.h"
#include "glsl/lexer.h"
#include "glsl/scan.h"

// The lexer's cutting of branches. Text goes away by moving what stands between the reader and the
// cut towards the cut, and the reader with it: what is behind the cut stays in place, so a
// conditional costs no more than the text that it looks through.

namespace glsl {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);
constexpr std::size_t kElseLength = 5;   // "#else"
constexpr std::size_t kEndifLength = 6;  // "#endif"
constexpr std::size_t kFar = 4096;       // more is not moved to close a gap

// Where the line of [first, last) ends, if no directive shares it and its length is no burden; else
// kNone. Blanks in front of such an end are nothing to anyone.
std::size_t endOfPlainLine(const SourceText& text, std::size_t first, std::size_t last) {
    const char* behind = text.data() + last;
    const char* far = behind + std::min<std::size_t>(kFar, text.length() - last);
    behind = findEither(behind, far, '\n', '#');
    const char* before = text.data() + first;
    far = before - std::min(kFar, first);
    while (before != far && before[-1] != '\n' && before[-1] != '#') {
        --before;
    }
    const bool is_plain = *behind == '\n' && before != text.data() && before[-1] == '\n';
    return is_plain ? static_cast<std::size_t>(behind - text.data()) : kNone;
}

}  // namespace

// Next `#` outside comments from `from` on, and the letters behind it; kNone if there is none.
std::size_t lexer::nextDirective(std::size_t from, std::string_view& word) const {
    const char* end = source_.end();
    const char* at = source_.data() + from;
    for (at = findEither(at, end, '#', '/'); at != end; at = findEither(at, end, '#', '/')) {
        if (*at == '#') {
            const char* last = at + 1;
            while (isClass(*last, kLetter)) {
                ++last;
            }
            word = {at + 1, static_cast<std::size_t>(last - at - 1)};
            return static_cast<std::size_t>(at - source_.data());
        }
        const char* behind = skipComments(at, end);
        at = behind == at ? at + 1 : behind;
    }
    return kNone;
}

// Next #endif from `from` on; kNone if there is none. What a scan found serves the later ones, so
// that many open conditionals do not search the same text again and again. Not those behind a
// quote: what the scan took for a comment there may be a string to the reader.
std::size_t lexer::nextEndif(std::size_t from) {
    std::size_t at = from;
    if (endif_known_ && from >= endif_from_ && from <= std::min(endif_at_, quote_at_)) {
        if (endif_stands_) {
            return endif_at_;
        }
        at = endif_at_;
    } else {
        endif_from_ = from;
        const char* quote = findByte(source_.data() + from, source_.end(), '"');
        quote_at_ = static_cast<std::size_t>(quote - source_.data());
    }
    std::string_view word;
    at = nextDirective(at, word);
    while (at != kNone && word != "endif") {
        at = nextDirective(at + 1, word);
    }
    endif_known_ = true;
    endif_stands_ = true;
    endif_at_ = at;
    return at;
}

// Behind a condition that holds: cuts the other branch, if it comes next, or takes away a plain
// #endif.
void lexer::keepBranch() {
    if (source_.length() - position_.index < 2) {
        return;
    }
    std::string_view word = "define";
    std::size_t at = position_.index;
    while (at != kNone && word == "define") {
        at = nextDirective(at + 1, word);
    }
    if (at == kNone) {
        return;
    }
    if (word == "endif") {
        removeAhead(at, kEndifLength);
        popCondition();
    } else if ((word == "else" || word == "elifdef") && !condition_stack_.empty()) {
        const std::size_t endif = nextEndif(at + 1);
        if (endif != kNone) {
            replaceByNewlines(at, endif + kEndifLength);
            popCondition();
        }
    }
}

// Behind a condition that does not hold: cuts up to the next directive, whatever it is.
void lexer::cutBranch() {
    if (source_.length() - position_.index < 2) {
        return;
    }
    std::string_view word;
    const std::size_t at = nextDirective(position_.index + 1, word);
    if (at == kNone) {
        return;
    }
    // The line feeds are put right in front of what stays, and the reader in front of them.
    std::size_t cut_to = at - 1;
    if (word == "endif") {
        const bool taken = topIs(true);
        popCondition();
        if (taken) {
            return;
        }
        cut_to = at + kEndifLength;
    }
    replaceByNewlines(position_.index, cut_to);
    takeElse(cut_to + 1);
}

// If an #else stands at `at` and its turn has come, its text is kept to the #endif.
void lexer::takeElse(std::size_t at) {
    std::string_view word;
    if (!topIs(false) || at >= source_.length() || nextDirective(at, word) != at ||
        word != "else") {
        return;
    }
    removeAhead(at, kElseLength);
    const std::size_t endif = nextEndif(at + kElseLength);
    if (endif != kNone) {
        removeEndif(endif);
        popCondition();
    }
}

// Takes the #endif at `at` out of the text. With much text in front of it, the rest of its line
// moves up instead and blanks go to the line's end; so conditionals in each other's #else do not
// move the same text once for each of them.
void lexer::removeEndif(std::size_t at) {
    // Behind a blank the search for the next one may go on here: the seam joins nothing.
    const bool serves = endif_known_ && endif_at_ == at && isClass(byteAt(at - 1), kBlank);
    const bool is_far = at - position_.index > kFar;
    std::size_t end = is_far ? endOfPlainLine(source_, at, at + kEndifLength) : kNone;
    if (end > quote_at_) {
        end = kNone;  // the line may be a piece of a string
    }
    if (end == kNone) {
        removeAhead(at, kEndifLength);
        endif_at_ = at + kEndifLength;
    } else {
        char* gap = source_.data() + at;
        std::memmove(gap, gap + kEndifLength, end - at - kEndifLength);
        std::memset(source_.data() + end - kEndifLength, ' ', kEndifLength);
        endif_at_ = at;
    }
    endif_known_ = serves;
    endif_stands_ = false;
}

// Replaces [from, to), which lies at or ahead of the reader, by its newlines.
void lexer::replaceByNewlines(std::size_t from, std::size_t to) {
    char* bytes = source_.data();
    const std::size_t newlines = countByte(bytes + from, bytes + to, '\n');
    forgetEndif(to);
    removeAhead(from, to - from - newlines);
    std::memset(bytes + to - newlines, '\n', newlines);
}

// Takes `count` bytes at `at`, which lies at or ahead of the reader, out of the text.
void lexer::removeAhead(std::size_t at, std::size_t count) {
    char* reader = source_.data() + position_.index;
    forgetEndif(at + count);
    std::memmove(reader + count, reader, at - position_.index);
    if (cuts_ != nullptr) {
        cuts_->push_back({position_.index, position_.index + count});
    }
    const auto moved = static_cast<std::uint32_t>(count);
    position_.index += moved;
    position_.shift -= moved;
}

}  // namespace glsl
