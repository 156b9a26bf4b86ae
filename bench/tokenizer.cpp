#include "tokenizer.h"

#include <array>
#include <cstdint>

namespace bench {
namespace {

enum class CharClass : uint8_t { kOther, kBlank, kWord, kDigit };

constexpr std::array<CharClass, 256> make_classes() {
    std::array<CharClass, 256> classes = {};
    for (size_t c = 0; c < classes.size(); ++c) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
        const bool digit = c >= '0' && c <= '9';
        const bool blank = c == ' ' || (c >= 9 && c <= 13);
        classes[c] = letter  ? CharClass::kWord
                     : digit ? CharClass::kDigit
                     : blank ? CharClass::kBlank
                             : CharClass::kOther;
    }
    return classes;
}

constexpr std::array<CharClass, 256> kClasses = make_classes();

CharClass class_of(char c) {
    return kClasses[static_cast<unsigned char>(c)];
}

bool goes_on(CharClass first, char c) {
    const CharClass next = class_of(c);
    return next == CharClass::kWord || next == CharClass::kDigit ||
           (first == CharClass::kDigit && c == '.');
}

size_t skip_comment(std::string_view text, size_t at) {
    const bool line = text[at + 1] == '/';
    const size_t end = text.find(line ? "\n" : "*/", at + 2);
    if (end == std::string_view::npos) {
        return text.size();
    }
    return line ? end : end + 2;
}

bool starts_comment(std::string_view text, size_t at) {
    return text[at] == '/' && at + 1 < text.size() && (text[at + 1] == '/' || text[at + 1] == '*');
}

}  // namespace

size_t count_tokens(std::string_view text) {
    size_t count = 0;
    size_t at = 0;
    while (at < text.size()) {
        const CharClass kind = class_of(text[at]);
        if (kind == CharClass::kBlank) {
            ++at;
            continue;
        }
        if (starts_comment(text, at)) {
            at = skip_comment(text, at);
            continue;
        }
        ++count;
        ++at;
        while (kind != CharClass::kOther && at < text.size() && goes_on(kind, text[at])) {
            ++at;
        }
    }
    return count;
}

}  // namespace bench
