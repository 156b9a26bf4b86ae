#include "glsl/macro_expansion.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

#include "glsl/char_class.h"
#include "glsl/scan.h"

namespace glsl {

namespace {

bool isWordByte(char c) {
    return isClass(c, kWordByte);
}

std::string_view lettersAt(const char* at, const char* end) {
    const char* last = at;
    while (last != end && isClass(*last, kLetter)) {
        ++last;
    }
    return {at, static_cast<std::size_t>(last - at)};
}

// Directives whose lines hold names to be asked about, not to be replaced.
constexpr std::string_view kConditionals[] = {"elif", "elifdef", "else", "if", "ifdef", "ifndef"};

bool isConditional(std::string_view word) {
    return std::find(std::begin(kConditionals), std::end(kConditionals), word) !=
           std::end(kConditionals);
}

// Finds the places in a text where a scan for one name has something to do.
class NameScan {
public:
    NameScan(std::string_view name, const char* end)
        : name_(name), end_(end), last_(name.size() - 1) {}

    // The name as a whole word at `at`; a byte stands in front of `at`.
    bool matches(const char* at) const {
        return static_cast<std::size_t>(end_ - at) >= name_.size() && *at == name_.front() &&
               std::memcmp(at, name_.data(), name_.size()) == 0 && !isWordByte(at[-1]) &&
               !isWordByte(at[name_.size()]);
    }
    // First place from `at` on that may hold the name; the end if there is none.
    const char* candidate(const char* at) const { return find<false>(at); }
    // The same, or the beginning of a string, of a directive, or a slash.
    const char* special(const char* at) const { return find<true>(at); }

private:
    template <bool kOthers>
    const char* find(const char* at) const;
    template <bool kOthers>
    static bool isOther(char c) {
        return kOthers && (c == '/' || c == '"' || c == '#');
    }

    std::string_view name_;
    const char* end_;  // zero bytes stand behind it
    std::size_t last_;
};

template <bool kOthers>
const char* NameScan::find(const char* at) const {
#if defined(GLSL_HAVE_SSE2)
    const __m128i first = _mm_set1_epi8(name_.front());
    const __m128i last = _mm_set1_epi8(name_.back());
    for (; static_cast<std::size_t>(end_ - at) >= 16 + last_; at += 16) {
        const __m128i block = loadBlock(at);
        __m128i hit = _mm_and_si128(_mm_cmpeq_epi8(block, first),
                                    _mm_cmpeq_epi8(loadBlock(at + last_), last));
        if (kOthers) {
            const __m128i marks = _mm_or_si128(_mm_cmpeq_epi8(block, _mm_set1_epi8('/')),
                                               _mm_cmpeq_epi8(block, _mm_set1_epi8('"')));
            hit = _mm_or_si128(hit, _mm_or_si128(marks, _mm_cmpeq_epi8(block, _mm_set1_epi8('#'))));
        }
        const std::uint32_t mask = blockMask(hit);
        if (mask != 0) {
            return at + lowestBit(mask);
        }
    }
#endif
    while (at != end_ && *at != name_.front() && !isOther<kOthers>(*at)) {
        ++at;
    }
    return at;
}

std::string withoutSpaces(std::string_view text) {
    std::string result;
    std::copy_if(text.begin(), text.end(), std::back_inserter(result),
                 [](char c) { return c != ' '; });
    return result;
}

// The pieces between the commas, spaces removed. On purpose: parentheses do not protect a comma,
// as effects expect; an empty text has no pieces.
std::vector<std::string> splitAtCommas(std::string_view text) {
    std::vector<std::string> pieces;
    while (!text.empty()) {
        const std::size_t comma = std::min(text.find(','), text.size());
        pieces.push_back(withoutSpaces(text.substr(0, comma)));
        if (comma + 1 == text.size()) {
            pieces.emplace_back();
        }
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return pieces;
}

// Replaces each whole word `word` of `text`; what is put in is not looked at again. False if a
// limit is reached.
bool replaceWord(std::string& text, std::string_view word, std::string_view by,
                 ExpansionLimits& limits) {
    if (word.empty()) {
        return true;
    }
    if (text.size() > limits.work_left) {
        return false;
    }
    limits.work_left -= text.size();
    const std::string_view old = text;
    std::string result;
    std::size_t done = 0;
    for (std::size_t at = old.find(word); at != std::string_view::npos; at = old.find(word, at)) {
        const std::size_t behind = at + word.size();
        if ((at > 0 && isWordByte(old[at - 1])) ||
            (behind < old.size() && isWordByte(old[behind]))) {
            ++at;
            continue;
        }
        result += old.substr(done, at - done);
        result += by;
        if (result.size() > limits.longest) {
            return false;
        }
        done = at = behind;
    }
    if (done != 0) {
        result += old.substr(done);
        text = std::move(result);
    }
    return text.size() <= limits.longest;
}

// One walk over the text behind a `#define`.
class Expansion {
public:
    Expansion(SourceText& source, std::size_t from, const Macro& macro, ExpansionLimits& limits,
              std::string& output);

    Expanded run();

private:
    bool occurs() const;
    const char* skipUntouchable(const char* at) const;
    bool replaceUse(const char*& at);
    bool replaceCall(const char*& at);
    bool standsAlone(const char* behind_name);
    const char* closingParenthesis(const char* open, std::string_view& arguments) const;
    bool substitute(std::string_view arguments, std::string& body) const;
    void splitValue();
    bool put(const char* upTo, std::string_view text, const char* goOnAt);

    SourceText& source_;
    const Macro& macro_;
    ExpansionLimits& limits_;
    std::string& output_;  // the new text from `start_` on
    const char* start_;    // first byte that is replaced; null before that
    const char* copied_;   // behind what `output_` holds
    const char* at_;
    const char* end_;
    NameScan scan_;
    bool has_parameters_ = false;  // the value has its `)`
    std::vector<std::string> parameters_;
    std::string_view body_;
    const char* newline_ = nullptr;  // next one at or behind the last bare name looked at
    const char* open_ = nullptr;     // likewise for `(`
};

Expansion::Expansion(SourceText& source, std::size_t from, const Macro& macro,
                     ExpansionLimits& limits, std::string& output)
    : source_(source),
      macro_(macro),
      limits_(limits),
      output_(output),
      start_(nullptr),
      copied_(nullptr),
      at_(source.data() + std::min(from + 1, source.length())),
      end_(source.end()),
      scan_(macro.name, source.end()) {}

Expanded Expansion::run() {
    if (!occurs()) {
        return Expanded::nothing;
    }
    output_.clear();
    splitValue();
    for (const char* at = scan_.special(at_); at < end_; at = scan_.special(at)) {
        at = skipUntouchable(at);
        if (at < end_ && scan_.matches(at) && !replaceUse(at)) {
            return Expanded::refused;
        }
        at = at < end_ ? at + 1 : end_;
    }
    if (start_ == nullptr) {
        return Expanded::nothing;
    }
    output_.append(copied_, end_);
    source_.replaceTail(static_cast<std::size_t>(start_ - source_.data()), output_);
    return Expanded::uses;
}

// Whether the name stands anywhere, be it where it stays. Most macros of a prelude do not.
bool Expansion::occurs() const {
    for (const char* at = scan_.candidate(at_); at != end_; at = scan_.candidate(at + 1)) {
        if (scan_.matches(at)) {
            return true;
        }
    }
    return false;
}

// Passes comments, then one string, then the line of a conditional directive. On purpose: what
// follows a string at once is not asked whether it is a comment or a string itself.
const char* Expansion::skipUntouchable(const char* at) const {
    at = skipComments(at, end_);
    if (at != end_ && *at == '"') {
        at = findByte(at + 1, end_, '"');
        at += at != end_ ? 1 : 0;
    }
    if (at != end_ && *at == '#' && isConditional(lettersAt(at + 1, end_))) {
        at = findByte(at, end_, '\n');
    }
    return at;
}

// Replaces the use at `at` and leaves `at` behind it.
bool Expansion::replaceUse(const char*& at) {
    const char* behind = at + macro_.name.size();
    if (macro_.functionLike && !standsAlone(behind)) {
        return replaceCall(at);
    }
    const char* name = at;
    at = behind;
    return put(name, macro_.value, behind);
}

// A function-like name without a `(` before the line, or the text, ends.
bool Expansion::standsAlone(const char* behind_name) {
    if (newline_ == nullptr || newline_ < behind_name) {
        newline_ = findByte(behind_name, end_, '\n');
    }
    if (open_ == nullptr || open_ < behind_name) {
        open_ = findByte(behind_name, end_, '(');
    }
    return open_ == end_ || newline_ < open_;
}

bool Expansion::replaceCall(const char*& at) {
    const char* name = at;
    std::string_view arguments;
    at = closingParenthesis(open_, arguments);
    std::string body;
    if (has_parameters_ && !substitute(arguments, body)) {
        return false;
    }
    return put(name, body, at);
}

// Behind the `)` that closes `open`; the text's end closes everything.
const char* Expansion::closingParenthesis(const char* open, std::string_view& arguments) const {
    int depth = 0;
    for (const char* at = open; at != end_; at = findEither(at + 1, end_, '(', ')')) {
        depth += *at == '(' ? 1 : -1;
        if (depth == 0) {
            arguments = {open + 1, static_cast<std::size_t>(at - open - 1)};
            return at + 1;
        }
    }
    arguments = {open + 1, static_cast<std::size_t>(end_ - open - 1)};
    return end_;
}

// Takes the parameters and the body out of "(parameters)?body".
void Expansion::splitValue() {
    const std::size_t close = macro_.value.find(')');
    if (!macro_.functionLike || close == std::string_view::npos) {
        return;
    }
    has_parameters_ = true;
    parameters_ = splitAtCommas(macro_.value.substr(1, close - 1));
    // On purpose: the byte behind the `)`, a blank as a rule, is dropped whatever it is.
    body_ = macro_.value.substr(std::min(close + 2, macro_.value.size()));
}

// The body with the arguments for the parameters, one parameter after the other, so that an
// argument put in for one can be taken for the next.
bool Expansion::substitute(std::string_view arguments, std::string& body) const {
    body = body_;
    const std::vector<std::string> values = splitAtCommas(arguments);
    if (values.size() != parameters_.size()) {
        return true;
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!replaceWord(body, parameters_[i], values[i], limits_)) {
            return false;
        }
    }
    return true;
}

// Copies the text up to `upTo`, then `text`, and goes on with the source at `goOnAt`.
bool Expansion::put(const char* upTo, std::string_view text, const char* goOnAt) {
    if (start_ == nullptr) {
        start_ = copied_ = upTo;
        output_.reserve(static_cast<std::size_t>(end_ - upTo) + text.size());
    }
    output_.append(copied_, upTo);
    output_.append(text);
    copied_ = goOnAt;
    const auto before = static_cast<std::size_t>(start_ - source_.data());
    return before + output_.size() + static_cast<std::size_t>(end_ - goOnAt) <= limits_.longest;
}

}  // namespace

Expanded expandMacro(SourceText& source, std::size_t from, const Macro& macro,
                     ExpansionLimits& limits, std::string& scratch) {
    return Expansion(source, from, macro, limits, scratch).run();
}

}  // namespace glsl
