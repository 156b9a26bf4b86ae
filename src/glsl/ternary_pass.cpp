#include "glsl/ternary_pass.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "glsl/scan.h"

namespace glsl {

namespace {

// Positions of one ternary that is being collected, -1 while unset.
struct Ternary {
    std::int64_t start = -1;
    std::int64_t question = -1;
    std::int64_t colon = -1;
    std::int64_t end = -1;

    bool complete() const { return start >= 0 && question >= 0 && colon >= 0 && end >= 0; }
};

// Bytes at which the pass does something; `r` only in front of an `e`.
#if defined(GLSL_HAVE_SSE2)
std::uint32_t specialMask(const char* at) {
    const __m128i block = loadBlock(at);
    const auto is = [&](char c) { return _mm_cmpeq_epi8(block, _mm_set1_epi8(c)); };
    const __m128i parens = _mm_or_si128(is('('), is(')'));
    const __m128i parts = _mm_or_si128(is('?'), is(':'));
    const __m128i ends = _mm_or_si128(is(';'), is(','));
    const __m128i others = _mm_or_si128(_mm_or_si128(is('='), is('/')), is('"'));
    const __m128i next = _mm_cmpeq_epi8(loadBlock(at + 1), _mm_set1_epi8('e'));
    const __m128i word = _mm_and_si128(is('r'), next);
    return blockMask(
        _mm_or_si128(_mm_or_si128(_mm_or_si128(parens, parts), ends), _mm_or_si128(others, word)));
}
#endif

bool isSpecial(char c) {
    return c != 0 && std::strchr("()?:;,=/\"r", c) != nullptr;
}

// First special byte in [at, end). Behind `end` stands the source's padding.
const char* findSpecial(const char* at, const char* end) {
#if defined(GLSL_HAVE_SSE2)
    for (; end - at >= 16; at += 16) {
        const std::uint32_t mask = specialMask(at);
        if (mask != 0) {
            return at + lowestBit(mask);
        }
    }
#endif
    while (at != end && !isSpecial(*at)) {
        ++at;
    }
    return at;
}

// The text lies in one buffer with a gap: what is in front of the gap is done, what is behind it
// is still to be scanned. A rewritten ternary grows into the gap, so the rest never moves for it.
class TernaryPass {
public:
    explicit TernaryPass(SourceText& source)
        : source_(source),
          original_length_(source.length()),
          work_left_(kWorkBase + kWorkPerByte * source.length()),
          length_(source.length()) {}

    bool run();

private:
    // Weighed by their cost: bytes moved count a 64th, bytes scanned again 16. No source in good
    // order comes near.
    static constexpr std::size_t kWorkBase = std::size_t{1} << 20;
    static constexpr std::size_t kWorkPerByte = 1024;
    static constexpr std::size_t kGrowthBase = std::size_t{64} << 10;
    static constexpr std::size_t kGrowthPerByte = 8;

    std::size_t gap() const { return gap_end_ - gap_begin_; }
    char* front() { return source_.data(); }
    // Byte at a position of the text, 0 past its end.
    char at(std::size_t position) const {
        if (position >= length_) {
            return 0;
        }
        return source_.data()[position < gap_begin_ ? position : position + gap()];
    }
    bool skipOver(std::size_t& i);
    void open(std::size_t i);
    void note(std::size_t i);
    bool fire(std::size_t& i);
    bool replace(const Ternary& t);
    void replaceInOrder(const Ternary& t);
    bool replaceOutOfOrder(const Ternary& t);
    void moveGap(std::size_t position);
    bool makeGap(std::size_t bytes);
    void restart(std::size_t start) {
        stack_.clear();
        push(start);
    }
    void push(std::size_t start) {
        stack_.emplace_back();
        stack_.back().start = static_cast<std::int64_t>(start);
    }

    SourceText& source_;
    std::size_t original_length_;
    std::size_t work_left_;
    std::size_t length_;  // of the text, gap not counted
    std::size_t gap_begin_ = 0;
    std::size_t gap_end_ = 0;
    std::vector<Ternary> stack_;
};

bool TernaryPass::run() {
    stack_.reserve(32);
    for (std::size_t i = 0; i < length_;) {
        const char* base = source_.data() + gap();
        i = static_cast<std::size_t>(findSpecial(base + i, base + length_) - base);
        if (i == length_ || skipOver(i)) {
            break;
        }
        open(i);
        if (!stack_.empty()) {
            note(i);
            if (stack_.back().complete() && !fire(i)) {
                return false;
            }
            if (at(i) == ')') {
                stack_.pop_back();
            }
        }
        ++i;
    }
    moveGap(length_);
    source_.resize(length_);
    return true;
}

// Passes the comments at `i` and one quote behind them. True at the end of the text.
bool TernaryPass::skipOver(std::size_t& i) {
    const char* base = source_.data() + gap();
    const char* end = base + length_;
    const char* p = base + i;
    while (end - p >= 2 && p[0] == '/' && (p[1] == '/' || p[1] == '*')) {
        // On purpose: here, unlike in the lexer, `/*/` is a whole comment; effects were written
        // against a pass that looks for the closing pair from the opening slash on.
        p = p[1] == '*' && end - p >= 3 && p[2] == '/' ? p + 3 : skipComment(p, end);
    }
    // On purpose: the text of a string is scanned like code; only the quote itself is passed.
    if (p != end && *p == '"') {
        ++p;
    }
    i = static_cast<std::size_t>(p - base);
    return p == end;
}

// A byte that begins a new expression opens a record for it.
void TernaryPass::open(std::size_t i) {
    switch (at(i)) {
        case 'r':
            // On purpose: the bytes around the word are not looked at, as effects expect.
            if (i + 6 < length_ && std::memcmp(source_.data() + gap() + i + 1, "eturn", 5) == 0) {
                restart(i + 5);
            }
            break;
        case '=': {
            const char before = i >= 2 ? at(i - 1) : '=';
            if (before != '<' && before != '=' && before != '>' && at(i + 1) != '=') {
                restart(i);
            }
            break;
        }
        case ',':
            if (stack_.empty()) {
                restart(i);
            }
            break;
        case '(':
            push(i);
            break;
        default:
            break;
    }
}

// Enters the byte at `i` into the innermost record.
void TernaryPass::note(std::size_t i) {
    Ternary& top = stack_.back();
    const auto position = static_cast<std::int64_t>(i);
    switch (at(i)) {
        case '?':
            top.question = position;
            break;
        case ':':
            top.colon = position;
            break;
        case ';':
        case ')':
            top.end = position;
            break;
        case ',':
            if (position != top.start && top.question >= 1 && top.colon > top.question) {
                top.end = position;
            }
            break;
        default:
            break;
    }
}

// Rewrites the innermost record and leaves `i` on the byte that ended it.
bool TernaryPass::fire(std::size_t& i) {
    const Ternary t = stack_.back();
    const std::size_t before = length_;
    const auto end = static_cast<std::size_t>(t.end);
    const std::size_t moved = static_cast<std::size_t>(std::max<std::int64_t>(t.end - t.start, 0));
    const std::size_t work = moved / 64 + (i > end ? 16 * (i - end) : 0);
    if (work > work_left_ || !replace(t)) {
        return false;
    }
    work_left_ -= work;
    // Whatever the order of the positions, the end byte stands behind the new text.
    const std::size_t whole = t.end > t.start ? static_cast<std::size_t>(t.end - t.start) - 1 : 0;
    i = static_cast<std::size_t>(t.start) + whole + (length_ - before) + 1;
    stack_.back() = Ternary();
    if (at(i) == ',') {
        restart(i);
    }
    return length_ <= kGrowthBase + kGrowthPerByte * original_length_;
}

bool TernaryPass::replace(const Ternary& t) {
    if (t.start < t.question && t.question < t.colon && t.colon < t.end) {
        if (!makeGap(6)) {
            return false;
        }
        moveGap(static_cast<std::size_t>(t.end));
        replaceInOrder(t);
        return true;
    }
    return replaceOutOfOrder(t);
}

// The three parts move apart; the text in front of the gap ends with the third.
void TernaryPass::replaceInOrder(const Ternary& t) {
    char* bytes = front();
    const auto start = static_cast<std::size_t>(t.start);
    const auto question = static_cast<std::size_t>(t.question);
    const auto colon = static_cast<std::size_t>(t.colon);
    const auto end = static_cast<std::size_t>(t.end);
    bytes[end + 5] = ')';
    std::memmove(bytes + colon + 6, bytes + colon + 1, end - colon - 1);
    // Three bytes in the middle of a text. NOLINTNEXTLINE(bugprone-not-null-terminated-result)
    std::memcpy(bytes + colon + 3, "):(", 3);
    std::memmove(bytes + question + 4, bytes + question + 1, colon - question - 1);
    // The same. NOLINTNEXTLINE(bugprone-not-null-terminated-result)
    std::memcpy(bytes + question + 1, ")?(", 3);
    std::memmove(bytes + start + 2, bytes + start + 1, question - start - 1);
    bytes[start + 1] = '(';
    gap_begin_ += 6;
    length_ += 6;
}

// The piece [from, to) of `whole`, cut to what exists.
std::string_view piece(std::string_view whole, std::int64_t from, std::int64_t to) {
    const auto size = static_cast<std::int64_t>(whole.size());
    const std::int64_t first = std::clamp<std::int64_t>(from, 0, size);
    const std::int64_t last = std::clamp<std::int64_t>(to, first, size);
    return whole.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first));
}

// On purpose: a record whose positions came in another order (a `case` label in front of a
// ternary, say) fires all the same; parts that do not exist are empty.
bool TernaryPass::replaceOutOfOrder(const Ternary& t) {
    const std::int64_t first = t.start + 1;
    const auto begin = static_cast<std::size_t>(first);
    const auto end = static_cast<std::size_t>(std::max(t.end, first));
    moveGap(end);
    const std::string_view whole(front() + begin, end - begin);
    const auto size = static_cast<std::int64_t>(whole.size());
    std::string text = "(";
    text += piece(whole, 0, t.question - first);
    text += ")?(";
    text += piece(whole, t.question + 1 - first, t.colon - first);
    text += "):(";
    text += piece(whole, t.colon + 1 - first, size);
    text += ")";
    const std::size_t more = text.size() - (end - begin);
    if (!makeGap(more)) {
        return false;
    }
    std::memcpy(front() + begin, text.data(), text.size());
    gap_begin_ += more;
    length_ += more;
    return true;
}

// Lets the gap begin at `position` of the text.
void TernaryPass::moveGap(std::size_t position) {
    char* bytes = front();
    if (gap() != 0) {
        if (position > gap_begin_) {
            std::memmove(bytes + gap_begin_, bytes + gap_end_, position - gap_begin_);
        } else {
            std::memmove(bytes + position + gap(), bytes + position, gap_begin_ - position);
        }
    }
    gap_end_ += position - gap_begin_;
    gap_begin_ = position;
}

// Sees to `bytes` bytes of gap. The text behind it moves to the end of the buffer.
bool TernaryPass::makeGap(std::size_t bytes) {
    if (gap() >= bytes) {
        return true;
    }
    if (bytes > SourceText::kLongest) {
        return false;
    }
    const std::size_t behind = length_ - gap_begin_;
    const std::size_t old_end = gap_end_;
    const std::size_t wanted = length_ + bytes + length_ / 8 + 64;
    source_.resize(gap_end_ + behind);  // all that is in use moves along if the buffer does
    source_.resize(std::max(wanted, source_.capacity()));
    const std::size_t new_end = source_.length() - behind;
    std::memmove(front() + new_end, front() + old_end, behind);
    gap_end_ = new_end;
    return true;
}

}  // namespace

bool rewriteTernaries(SourceText& source) {
    if (findByte(source.data(), source.end(), '?') == source.end()) {
        return true;  // no record can ever be complete
    }
    return TernaryPass(source).run();
}

}  // namespace glsl
