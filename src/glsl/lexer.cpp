#include "glsl/lexer.h"

#include <algorithm>
#include <cstring>

#include "glsl/char_class.h"
#include "glsl/keywords.h"
#include "glsl/number_reader.h"
#include "glsl/scan.h"
#include "glsl/ternary_pass.h"

namespace glsl {

namespace {

// Macros may make a text this long: the base, and so many bytes per byte of source.
constexpr std::size_t kGrowthBase = std::size_t{64} << 10;
constexpr std::size_t kGrowthPerByte = 8;
constexpr std::size_t kWorkBase = std::size_t{16} << 20;
constexpr std::size_t kWorkPerByte = 256;

constexpr char kOutOfMemory[] = "Out of memory";
constexpr char kInvalidCharacter[] = "invalid character encountered";

// What a byte begins.
enum class Start : std::uint8_t {
    nothing,
    blank,
    word,
    digit,
    dot,
    quote,
    hash,
    slash,
    op,
    semicolon,
    scopeBegin,
    scopeEnd,
};

struct StartTable {
    Start of[256] = {};
};

constexpr StartTable makeStartTable() {
    StartTable table;
    for (int c = 0; c < 256; ++c) {
        const std::uint8_t flags = kCharClasses.of[c];
        table.of[c] = (flags & kBlank) != 0       ? Start::blank
                      : (flags & kWordStart) != 0 ? Start::word
                      : (flags & kDigit) != 0     ? Start::digit
                                                  : Start::nothing;
    }
    for (const OperatorRow& row : kOperators) {
        table.of[static_cast<unsigned char>(row.text[0])] = Start::op;
    }
    table.of[static_cast<unsigned char>('.')] = Start::dot;
    table.of[static_cast<unsigned char>('"')] = Start::quote;
    table.of[static_cast<unsigned char>('#')] = Start::hash;
    table.of[static_cast<unsigned char>('/')] = Start::slash;
    table.of[static_cast<unsigned char>(';')] = Start::semicolon;
    table.of[static_cast<unsigned char>('{')] = Start::scopeBegin;
    table.of[static_cast<unsigned char>('}')] = Start::scopeEnd;
    return table;
}

constexpr StartTable kStarts = makeStartTable();

constexpr std::uint8_t kNoOperator = 255;

// Operators by their bytes: the one-byte operator of each byte, and the operators that each byte
// makes with itself, with `=` and with both behind it.
struct OperatorIndex {
    std::uint8_t single[128] = {};
    std::uint8_t doubled[128] = {};
    std::uint8_t assigning[128] = {};
    std::uint8_t doubledAssigning[128] = {};
};

constexpr OperatorIndex makeOperatorIndex() {
    OperatorIndex index;
    for (int c = 0; c < 128; ++c) {
        index.single[c] = index.doubled[c] = kNoOperator;
        index.assigning[c] = index.doubledAssigning[c] = kNoOperator;
    }
    for (std::uint32_t i = 0; i < kOperatorCount; ++i) {
        const std::string_view text = kOperators[i].text;
        const auto first = static_cast<unsigned char>(text[0]);
        const auto id = static_cast<std::uint8_t>(i);
        if (text.size() == 1) {
            index.single[first] = id;
        } else if (text.size() == 3) {
            index.doubledAssigning[first] = id;
        } else if (text[1] == text[0]) {
            index.doubled[first] = id;
        } else {
            index.assigning[first] = id;
        }
    }
    return index;
}

constexpr OperatorIndex kOperatorIndex = makeOperatorIndex();

// The longest operator at `at`, and its length.
std::uint8_t operatorAt(const char* at, std::uint32_t& length) {
    const auto first = static_cast<unsigned char>(*at);
    const bool doubled = at[1] == at[0] && kOperatorIndex.doubled[first] != kNoOperator;
    if (doubled && at[2] == '=' && kOperatorIndex.doubledAssigning[first] != kNoOperator) {
        length = 3;
        return kOperatorIndex.doubledAssigning[first];
    }
    length = 2;
    if (doubled) {
        return kOperatorIndex.doubled[first];
    }
    if (at[1] == '=' && kOperatorIndex.assigning[first] != kNoOperator) {
        return kOperatorIndex.assigning[first];
    }
    length = 1;
    return kOperatorIndex.single[first];
}

// wordKey() for a word behind which at least eight more bytes may be read.
WordKey wordKeyInText(const char* word, std::size_t length) {
    std::uint64_t head = 0;
    std::memcpy(&head, word, 8);
    const std::uint64_t one = 1;
    if (std::memcmp(&one, "\1\0\0\0\0\0\0", 8) != 0) {
        return wordKey(word, length);  // the other byte order
    }
    if (length < 8) {
        head &= (std::uint64_t{1} << (8 * length)) - 1;
        return {head, finishWordHash(head, length)};
    }
    std::uint64_t mixed = head;
    for (std::size_t from = 8; from < length; from += 8) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, word + from, 8);
        if (length - from < 8) {
            bytes &= (std::uint64_t{1} << (8 * (length - from))) - 1;
        }
        mixed = mixWordTail(mixed, bytes);
    }
    return {head, finishWordHash(mixed, length)};
}

}  // namespace

lexer::lexer(const char* source, arena& texts, arena& scratch)
    : texts_(texts), names_(texts, scratch) {
    const std::size_t length = source == nullptr ? 0 : std::strlen(source);
    if (length > SourceText::kLongest) {
        error_ = kOutOfMemory;
        source_.assign("", 0, 0);
        return;
    }
    limits_.longest = kGrowthBase + kGrowthPerByte * length;
    limits_.work_left = kWorkBase + kWorkPerByte * length;
    source_.assign(source, length, 0);
    if (!rewriteTernaries(source_)) {
        error_ = kOutOfMemory;
    }
}

const token& lexer::read() {
    if (has_ahead_ && ahead_from_ == position_.index && error_ == nullptr) {
        has_ahead_ = false;
        current_ ^= 1;
        position_ = ahead_end_;
        return tokens_[current_];
    }
    step(tokens_[current_]);
    return tokens_[current_];
}

const token& lexer::peek() {
    token& ahead = tokens_[current_ ^ 1];
    saved_ = position_;
    if (has_ahead_ && ahead_from_ == position_.index && error_ == nullptr) {
        return ahead;
    }
    ahead = token();
    step(ahead);
    has_ahead_ = error_ == nullptr;
    ahead_from_ = saved_.index;
    ahead_end_ = position_;
    position_ = saved_;
    return ahead;
}

// Reads up to the end of the next token that the parser wants to see, or with an error set up to
// the end of whatever comes next.
void lexer::step(token& into) {
    do {
        switch (kStarts.of[static_cast<unsigned char>(byteAt(position_.index))]) {
            case Start::blank:
                into.type = TokenKind::whitespace;
                skipBlanks();
                continue;
            case Start::slash:
                if (byteAt(position_.index + 1) == '/' || byteAt(position_.index + 1) == '*') {
                    into.type = TokenKind::comment;
                    skipOneComment();
                    continue;
                }
                readPunctuation(into);
                return;
            case Start::hash:
                readDirective(into);
                if (into.type == TokenKind::whitespace) {
                    continue;
                }
                return;
            case Start::word:
                readWord(into);
                return;
            case Start::dot:
                if (isClass(byteAt(position_.index + 1), kDigit)) {
                    readNumberToken(into);
                } else {
                    readPunctuation(into);
                }
                return;
            case Start::digit:
                readNumberToken(into);
                return;
            case Start::quote:
                readString(into);
                return;
            case Start::nothing:
            case Start::op:
            case Start::semicolon:
            case Start::scopeBegin:
            case Start::scopeEnd:
                readPunctuation(into);
                return;
        }
    } while (error_ == nullptr);
}

void lexer::readWord(token& into) {
    const char* first = source_.data() + position_.index;
    const char* last = first + 1;
    while (isClass(*last, kWordByte)) {
        ++last;
    }
    const auto length = static_cast<std::size_t>(last - first);
    position_.index += static_cast<std::uint32_t>(length);
    const std::string_view word(first, length);
    const WordKey key = wordKeyInText(first, length);
    const std::int32_t keyword = findKeyword(word, key);
    if (keyword >= 0) {
        into.type = TokenKind::keyword;
        into.value = static_cast<std::uint32_t>(keyword);
        return;
    }
    into.type = TokenKind::identifier;
    into.value = 0;
    into.name = names_.enter(word, key);
}

// On purpose: no escapes, no lines, and a missing quote is no error; sources rely on neither.
void lexer::readString(token& into) {
    const char* first = source_.data() + position_.index + 1;
    const char* last = findByte(first, source_.end(), '"');
    into.type = TokenKind::string;
    into.value = 0;
    into.text = texts_.copy({first, static_cast<std::size_t>(last - first)});
    moveTo(static_cast<std::size_t>(last - source_.data()) + (last != source_.end() ? 1 : 0));
}

void lexer::readNumberToken(token& into) {
    const char* at = source_.data() + position_.index;
    const Number number = readNumber(at);
    moveTo(static_cast<std::size_t>(at - source_.data()));
    if (number.error != nullptr) {
        fail(into, number.error);
        return;
    }
    into.value = number.integer;
    switch (number.kind) {
        case NumberKind::signedInteger:
            into.type = TokenKind::intConstant;
            return;
        case NumberKind::unsignedInteger:
            into.type = TokenKind::uintConstant;
            return;
        case NumberKind::floating:
            into.type = TokenKind::floatConstant;
            std::memcpy(&into.value, &number.floatValue, sizeof(into.value));
            break;
        case NumberKind::doubleFloating:
            into.type = TokenKind::doubleConstant;
            into.doubleValue = number.doubleValue;
            std::uint64_t bits = 0;
            std::memcpy(&bits, &number.doubleValue, sizeof(bits));
            into.value = static_cast<std::uint32_t>(bits);
            break;
    }
    const std::size_t length = number.digits.size();
    auto* digits = static_cast<char*>(texts_.allocate(length));
    std::replace_copy(number.digits.begin(), number.digits.end(), digits, 'E', 'e');
    into.text = {digits, length};
}

void lexer::readPunctuation(token& into) {
    const char* at = source_.data() + position_.index;
    into.value = 0;
    std::uint32_t length = 1;
    switch (kStarts.of[static_cast<unsigned char>(*at)]) {
        case Start::op:
        case Start::slash:
        case Start::dot:
            into.type = TokenKind::operator_;
            into.value = operatorAt(at, length);
            break;
        case Start::semicolon:
            into.type = TokenKind::semicolon;
            break;
        case Start::scopeBegin:
            into.type = TokenKind::scopeBegin;
            break;
        case Start::scopeEnd:
            into.type = TokenKind::scopeEnd;
            break;
        default:
            if (position_.index != source_.length()) {
                fail(into, kInvalidCharacter);
                return;
            }
            into.type = TokenKind::end;
            length = 0;
            break;
    }
    position_.index += length;
}

void lexer::skipBlanks() {
    std::uint32_t index = position_.index;
    for (char c = byteAt(index); isClass(c, kBlank); c = byteAt(index)) {
        ++index;
        if (c == '\n') {
            ++position_.line;
            position_.shift = 1 - index;
        }
    }
    position_.index = index;
}

void lexer::skipOneComment() {
    const char* first = source_.data() + position_.index;
    const char* behind = skipComment(first, source_.end());
    for (const char* at = findByte(first, behind, '\n'); at != behind;
         at = findByte(at + 1, behind, '\n')) {
        ++position_.line;
        position_.shift = static_cast<std::uint32_t>(source_.data() - at);
    }
    moveTo(static_cast<std::size_t>(behind - source_.data()));
}

void lexer::fail(token& into, const char* message) {
    if (error_ == nullptr) {
        error_ = message;
    }
    into.name = &nameless_;
    into.text = {};
    into.replacement = {};
}

}  // namespace glsl
