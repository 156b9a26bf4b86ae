#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "glsl/macro_expansion.h"
#include "glsl/source_text.h"
#include "glsl/symbols.h"
#include "glsl/token.h"

namespace glsl {

/// Turns one source into tokens, one at a time and on demand. Directives are worked at the moment
/// the reader reaches them, and they rewrite the text behind them: `#define` replaces the macro's
/// uses there, conditionals cut the branches that are not taken. A directive is worked once, also
/// if a look-ahead reached it first.
///
/// Bytes that the reader has passed never change, so a position once saved stays good.
class lexer {
public:
    /// @param source   text up to its first zero byte, copied; null reads as empty
    /// @param texts    where the texts of tokens go; outlives the tokens' users
    /// @param scratch  memory for the lexer itself; outlives the lexer
    /// Throws std::bad_alloc, as reading does.
    lexer(const char* source, arena& texts, arena& scratch);
    lexer(const lexer&) = delete;
    lexer& operator=(const lexer&) = delete;

    /// The next token that is neither whitespace nor comment. The record is valid until the next
    /// call but one of read or peek. With an error set, reads one step at most.
    const token& read();
    /// The token that read() would give, without moving on. Overwrites the saved position.
    const token& peek();

    /// Copies the position to the one saved slot, and back.
    void save() { saved_ = position_; }
    void restore() { position_ = saved_; }

    /// First message that came up, a constant text; null while all is well.
    const char* error() const { return error_; }
    std::uint64_t line() const { return position_.line; }
    std::uint64_t column() const { return position_.index + position_.shift; }

    /// The identifiers met so far.
    symbolTable& names() { return names_; }
    /// Bytes of the source in front of the position.
    std::size_t offset() const { return position_.index; }
    /// The whole text, as rewritten so far. What was cut in front of the position may still stand.
    std::string_view source() const { return source_.view(); }
    /// The text behind the position, as rewritten so far.
    std::string_view remaining() const { return source_.view().substr(position_.index); }
    /// A piece of the text that the reader jumped over: remains of a cut branch.
    struct Cut {
        std::size_t begin;
        std::size_t end;
    };
    /// From now on notes each of them, in order, for who wants the text as it was read.
    /// @param cuts  outlives the lexer; null notes nothing
    void noteCuts(std::vector<Cut>* cuts) { cuts_ = cuts; }

    /// Binary precedence of an operator token, -1 for any other.
    static int precedence(const token& of) {
        return of.type == TokenKind::operator_ ? glsl::precedence(of.value) : -1;
    }

private:
    // A place in the text. The column is `index + shift`, so it moves along by itself.
    struct Position {
        std::uint32_t index = 0;
        std::uint32_t line = 1;
        std::uint32_t shift = 1;  // wraps around
    };
    // A conditional that has been worked: reading it again leads to where it led then.
    struct WorkedConditional {
        std::uint32_t at;  // of its `#`
        Position behind;
    };

    char byteAt(std::size_t index) const { return source_.data()[index]; }
    void step(token& into);
    void readWord(token& into);
    void readString(token& into);
    void readNumberToken(token& into);
    void readPunctuation(token& into);
    void skipBlanks();
    void skipOneComment();
    void moveTo(std::size_t index) { position_.index = static_cast<std::uint32_t>(index); }
    void fail(token& into, const char* message);

    // directives.cpp
    void readDirective(token& into);
    void readVersion(token& into);
    void readExtension(token& into);
    void readDefine(token& into, bool worked);
    void readConditional(token& into, std::uint32_t at, std::uint32_t which);
    std::string_view readLetters();
    std::string_view readOperand();
    void skipSpaces();
    const std::string_view* macroText(std::string_view name) const;
    bool conditionOfIf(std::string_view operand);
    bool replayConditional(std::uint32_t at);
    void rememberConditional(std::uint32_t at);

    // branches.cpp
    std::size_t nextDirective(std::size_t from, std::string_view& word) const;
    std::size_t nextEndif(std::size_t from);
    void forgetEndif(std::size_t up_to) { endif_known_ = endif_known_ && endif_at_ >= up_to; }
    void keepBranch();
    void cutBranch();
    void takeElse(std::size_t at);
    void removeEndif(std::size_t at);
    void replaceByNewlines(std::size_t from, std::size_t to);
    void removeAhead(std::size_t at, std::size_t count);
    bool topIs(bool value) const {
        return !condition_stack_.empty() && condition_stack_.back() == value;
    }
    void popCondition() {
        if (!condition_stack_.empty()) {
            condition_stack_.pop_back();
        }
    }

    arena& texts_;
    SourceText source_;
    const char* error_ = nullptr;
    Position position_;
    Position saved_;
    token tokens_[2];  // the current one and the one looked ahead to
    std::uint32_t current_ = 0;
    bool has_ahead_ = false;  // the other token is what stands behind ahead_from_
    std::uint32_t ahead_from_ = 0;
    Position ahead_end_;
    symbol nameless_;  // name of an identifier token after an error
    symbolTable names_;
    std::vector<bool> condition_stack_;
    bool endif_known_ = false;   // no #endif stands in [endif_from_, endif_at_),
    bool endif_stands_ = false;  // and one, or the text's end, at endif_at_
    std::size_t endif_from_ = 0;
    std::size_t endif_at_ = 0;
    std::size_t quote_at_ = 0;               // no quote stands in [endif_from_, quote_at_)
    std::uint32_t worked_up_to_ = 0;         // directives in front of it are worked
    std::vector<WorkedConditional> worked_;  // those that a restored position can reach again
    std::vector<Cut>* cuts_ = nullptr;       // null if nobody asks
    ExpansionLimits limits_;
    std::string scratch_;
};

}  // namespace glsl
