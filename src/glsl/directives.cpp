#include <algorithm>
#include <iterator>

#include "glsl/char_class.h"
#include "glsl/lexer.h"
#include "glsl/scan.h"

// The lexer's directives.

namespace glsl {

namespace {

// Conditionals, as readConditional() knows them.
enum Conditional : std::uint32_t {
    kIfdef,
    kElifdef,
    kIfndef,
    kIf,
    kElif,
    kElse,
};

constexpr std::string_view kConditionalWords[] = {"ifdef", "elifdef", "ifndef",
                                                  "if",    "elif",    "else"};
static_assert(std::size(kConditionalWords) == kElse + 1);

constexpr std::string_view kProfiles[] = {"core", "compatibility", "es"};
constexpr std::string_view kBehaviors[] = {"enable", "require", "warn", "disable"};

// Place of `word` in `table`, -1 if it is not there.
template <std::size_t kSize>
std::int32_t placeOf(std::string_view word, const std::string_view (&table)[kSize]) {
    const auto* found = std::find(std::begin(table), std::end(table), word);
    return found == std::end(table) ? -1 : static_cast<std::int32_t>(found - std::begin(table));
}

}  // namespace

void lexer::readDirective(token& into) {
    const std::uint32_t at = position_.index;
    ++position_.index;
    const std::string_view word = readLetters();
    if (word.empty()) {
        fail(into, "Expected directive");
        return;
    }
    into.value = 0;
    if (word == "define") {
        readDefine(into, at < worked_up_to_);
    } else if (word == "version") {
        readVersion(into);
    } else if (word == "extension") {
        readExtension(into);
    } else if (const std::int32_t which = placeOf(word, kConditionalWords); which >= 0) {
        readConditional(into, at, static_cast<std::uint32_t>(which));
    } else {
        fail(into, "Unsupported directive");
    }
    if (error_ == nullptr) {
        worked_up_to_ = std::max(worked_up_to_, at + 1);
    }
}

void lexer::readVersion(token& into) {
    skipSpaces();
    std::uint64_t number = 0;
    const std::uint32_t first = position_.index;
    for (; isClass(byteAt(position_.index), kDigit); ++position_.index) {
        const auto digit = static_cast<std::uint64_t>(byteAt(position_.index) - '0');
        number = std::min<std::uint64_t>(number * 10 + digit, 0x7FFFFFFFu);
    }
    if (position_.index == first) {
        fail(into, "Expected version number in #version directive");
        return;
    }
    skipSpaces();
    const std::string_view word = readLetters();
    const std::int32_t profile = word.empty() ? 0 : placeOf(word, kProfiles);
    if (profile < 0) {
        fail(into, "Invalid profile in #version directive");
        return;
    }
    into.type = TokenKind::directive;
    into.value = static_cast<std::uint32_t>(DirectiveKind::version);
    into.number = static_cast<std::int32_t>(number);
    into.choice = profile;
}

void lexer::readExtension(token& into) {
    skipSpaces();
    // On purpose: letters only, so a name with `_` or a digit is refused; such effects fail alike
    // everywhere.
    const std::string_view name = readLetters();
    if (name.empty()) {
        fail(into, "Expected extension name in #extension directive");
        return;
    }
    skipSpaces();
    if (byteAt(position_.index) != ':') {
        fail(into, "Expected `:' in #extension directive");
        return;
    }
    ++position_.index;
    skipSpaces();
    const std::string_view word = readLetters();
    const std::int32_t behavior = placeOf(word, kBehaviors);
    if (behavior < 0) {
        fail(into, word.empty() ? "Expected behavior in #extension directive"
                                : "Unexpected behavior in #extension directive");
        return;
    }
    into.type = TokenKind::directive;
    into.value = static_cast<std::uint32_t>(DirectiveKind::extension);
    into.text = texts_.copy(name);
    into.choice = behavior;
}

// A macro that was `worked` has had its uses replaced already.
void lexer::readDefine(token& into, bool worked) {
    skipSpaces();
    if (!isClass(byteAt(position_.index), kWordStart)) {
        fail(into, "Expected define name in #define directive");
        return;
    }
    const std::string_view name = readOperand();
    const char follower = byteAt(position_.index);
    while (isClass(byteAt(position_.index), kBlank) && byteAt(position_.index) != '\n') {
        ++position_.index;
    }
    const char* first = source_.data() + position_.index;
    const char* last = first;
    while (last != source_.end() && *last != '\n' && *last != '\r' &&
           !(*last == '/' && (last[1] == '/' || last[1] == '*'))) {
        ++last;
    }
    moveTo(static_cast<std::size_t>(last - source_.data()));
    symbol* entry = names_.enter(name, wordKey(name.data(), name.size()));
    const std::string_view value = texts_.copy({first, static_cast<std::size_t>(last - first)});
    if (!worked) {
        entry->macro = texts_.make<std::string_view>(value);
        const Macro macro{entry->name, value, follower == '('};
        const Expanded done = expandMacro(source_, position_.index, macro, limits_, scratch_);
        if (done == Expanded::refused) {
            fail(into, "Out of memory");
            return;
        }
        endif_known_ = endif_known_ && done == Expanded::nothing;
    }
    into.type = TokenKind::directive;
    into.value = static_cast<std::uint32_t>(DirectiveKind::define);
    into.name = entry;
    into.replacement = value;
}

void lexer::readConditional(token& into, std::uint32_t at, std::uint32_t which) {
    if (at < worked_up_to_ && replayConditional(at)) {
        into.type = TokenKind::whitespace;
        return;
    }
    bool value = false;
    if (which == kElse) {
        value = !topIs(true);
        if (!condition_stack_.empty()) {
            condition_stack_.back() = value;
        }
    } else {
        skipSpaces();
        const std::string_view operand = readOperand();
        if (operand.empty()) {
            fail(into, "Expected define name in #ifdef directive");
            return;
        }
        const bool asks = which == kIf || which == kElif;
        value =
            asks ? conditionOfIf(operand) : (macroText(operand) != nullptr) != (which == kIfndef);
        if (which == kIfdef || which == kIfndef || which == kIf) {
            condition_stack_.push_back(value);
        } else if (value && !condition_stack_.empty()) {
            condition_stack_.back() = true;
        }
    }
    if (value) {
        keepBranch();
    } else {
        cutBranch();
    }
    rememberConditional(at);
    into.type = TokenKind::whitespace;
}

// On purpose: nothing is computed. A name counts as true if it is a macro, and `==` and `!=`
// compare texts; so `#if 1` is false, as effects have always had it.
bool lexer::conditionOfIf(std::string_view operand) {
    const char* first = source_.data() + position_.index;
    const char* last = findByte(first, source_.end(), '\n');
    moveTo(static_cast<std::size_t>(last - source_.data()));
    scratch_.clear();
    std::copy_if(first, last, std::back_inserter(scratch_), [](char c) { return c != ' '; });
    const std::string_view rest = scratch_;
    const std::string_view* macro = macroText(operand);
    if (rest.empty()) {
        return macro != nullptr && operand != "false" && operand != "0";
    }
    const std::string_view comparison = rest.substr(0, 2);
    if (rest.size() < 3 || (comparison != "==" && comparison != "!=")) {
        return macro != nullptr;
    }
    const bool equal = (macro != nullptr ? *macro : operand) == rest.substr(2);
    return equal == (comparison == "==");
}

const std::string_view* lexer::macroText(std::string_view name) const {
    const symbol* entry = names_.find(name);
    return entry == nullptr ? nullptr : entry->macro;
}

bool lexer::replayConditional(std::uint32_t at) {
    const auto found = std::lower_bound(
        worked_.begin(), worked_.end(), at,
        [](const WorkedConditional& worked, std::uint32_t wanted) { return worked.at < wanted; });
    if (found == worked_.end() || found->at != at) {
        return false;
    }
    position_ = found->behind;
    return true;
}

// Only what stands behind the saved position can be reached again, and that never moves back.
void lexer::rememberConditional(std::uint32_t at) {
    if (!worked_.empty() && worked_.back().at < saved_.index) {
        worked_.clear();
    }
    worked_.push_back({at, position_});
}

std::string_view lexer::readLetters() {
    const char* first = source_.data() + position_.index;
    const char* last = first;
    while (isClass(*last, kLetter)) {
        ++last;
    }
    moveTo(static_cast<std::size_t>(last - source_.data()));
    return {first, static_cast<std::size_t>(last - first)};
}

std::string_view lexer::readOperand() {
    const char* first = source_.data() + position_.index;
    const char* last = first;
    while (isClass(*last, kWordByte)) {
        ++last;
    }
    moveTo(static_cast<std::size_t>(last - source_.data()));
    return {first, static_cast<std::size_t>(last - first)};
}

void lexer::skipSpaces() {
    while (byteAt(position_.index) == ' ' || byteAt(position_.index) == '\t') {
        ++position_.index;
    }
}

}  // namespace glsl
