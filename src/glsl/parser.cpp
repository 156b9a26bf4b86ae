#include "glsl/parser.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <new>

#include "glsl/parser_impl.h"

namespace glsl {

namespace {

constexpr std::size_t kScratchBytes = 3072;
constexpr std::size_t kLongestMessage = 511;

// What may be written into the texts of folded constants: the base, and so much per byte of source.
constexpr std::size_t kConstantTextBase = std::size_t{8} << 20;
constexpr std::size_t kConstantTextPerByte = 64;

std::string_view decimal(std::int64_t value, char (&digits)[24]) {
    const auto result = std::to_chars(digits, digits + sizeof(digits), value);
    return {digits, static_cast<std::size_t>(result.ptr - digits)};
}

std::string withoutCuts(std::string_view source, const std::vector<lexer::Cut>& cuts) {
    std::string text;
    std::size_t done = 0;
    for (const lexer::Cut& cut : cuts) {
        text.append(source.substr(done, cut.begin - done));
        done = cut.end;
    }
    return text.append(source.substr(done));
}

}  // namespace

// ---- the public class

parser::parser(const char* source, const char* fileName)
    : impl_(std::make_unique<impl>(source, fileName)) {}
parser::~parser() = default;
ptr<astTU> parser::parse(std::uint32_t shaderType, FailurePlace* place, std::string* read) {
    return impl_->parse(shaderType, place, read);
}
const char* parser::error() const {
    return impl_->error();
}
std::uint64_t parser::errorLine() const {
    return impl_->errorLine();
}
std::uint64_t parser::errorColumn() const {
    return impl_->errorColumn();
}

// ---- life

parser::impl::impl(const char* source, const char* fileName)
    : home_(nullptr),
      scratch_(nullptr),
      lexer_(nullptr),
      out_of_memory_text_("Out of memory"),
      file_name_(fileName == nullptr ? "" : fileName) {
    try {
        // About what the tree of a short source takes, so that most need a block or two.
        const std::size_t length = source == nullptr ? 0 : std::strlen(source);
        home_ = arena::create(sizeof(astTU) + 1024 + std::min<std::size_t>(length * 2, 65536));
        scratch_ = arena::create(kScratchBytes);
        lexer_ = scratch_->make<lexer>(source, *home_, *scratch_);
        constant_text_left_ = kConstantTextBase + kConstantTextPerByte * length;
        collected_.reserve(64);
        records_.reserve(4);
        qualifiers_.reserve(2);
    } catch (const std::bad_alloc&) {
        out_of_memory_ = true;
    }
}

parser::impl::~impl() {
    if (lexer_ != nullptr) {
        lexer_->~lexer();
    }
    if (scratch_ != nullptr) {
        scratch_->release();
    }
    if (home_ != nullptr) {
        home_->release();
    }
}

ptr<astTU> parser::impl::parse(std::uint32_t shaderType, FailurePlace* place, std::string* read) {
    if (out_of_memory_ || unit_ != nullptr) {
        return nullptr;
    }
    std::vector<lexer::Cut> cuts;
    lexer_->noteCuts(read == nullptr ? nullptr : &cuts);
    ptr<astTU> result;
    try {
        unit_ = home_->make<astTU>(*home_, shaderType);
        astTU* parsed = parseUnit(shaderType);
        result = parsed == nullptr ? ptr<astTU>() : ptr<astTU>(parsed, home_);
    } catch (const std::bad_alloc&) {
        out_of_memory_ = true;
    }
    if (!result && place != nullptr) {
        *place = FailurePlace{std::string(lexer_->source()),
                              error_line_ != 0 ? error_offset_ : lexer_->offset()};
    }
    if (read != nullptr) {
        *read = withoutCuts(lexer_->source(), cuts);
    }
    lexer_->~lexer();
    lexer_ = nullptr;
    scratch_->release();
    scratch_ = nullptr;
    return result;
}

const char* parser::impl::error() const {
    if (out_of_memory_) {
        return out_of_memory_text_.c_str();
    }
    return error_text_.empty() ? nullptr : error_text_.c_str();
}

// ---- tokens and messages

bool parser::impl::next() {
    if (too_deep_) {
        return false;  // nothing may recover from it
    }
    token_ = &lexer_->read();
    if (is(TokenKind::end)) {
        return reportError("premature end of file");
    }
    if (lexer_->error() != nullptr) {
        return reportLexerError();
    }
    return true;
}

failure parser::impl::reportLexerError() {
    return reportError(lexer_->error());
}

// Appends "name:line:column:error:message\r\n". Each "%s" of `format` takes the next argument;
// the message is cut at kLongestMessage bytes.
failure parser::impl::reportError(std::string_view format, std::string_view first,
                                  std::string_view second) {
    if (too_deep_) {
        return {};
    }
    char digits[24];
    if (error_line_ == 0) {
        error_line_ = lexer_->line();
        error_column_ = lexer_->column();
        error_offset_ = lexer_->offset();
    }
    error_text_ += file_name_;
    error_text_ += ':';
    error_text_ += decimal(static_cast<std::int64_t>(lexer_->line()), digits);
    error_text_ += ':';
    error_text_ += decimal(static_cast<std::int64_t>(lexer_->column()), digits);
    error_text_ += ":error:";
    std::string message;
    for (const std::string_view argument : {first, second, std::string_view()}) {
        const std::size_t mark = std::min(format.find("%s"), format.size());
        message += format.substr(0, mark);
        message += mark == format.size() ? std::string_view() : argument;
        format.remove_prefix(std::min(mark + 2, format.size()));
    }
    error_text_.append(message, 0, kLongestMessage);
    error_text_ += "\r\n";
    return {};
}

failure parser::impl::reportSyntaxErrorAtTopLevel() {
    char digits[24];
    return reportError("syntax error at top level %s",
                       decimal(static_cast<std::int32_t>(token_->value), digits));
}

// Reports nesting that is a danger to the stack. The error is final, and no other follows.
bool parser::impl::tooDeep() {
    if (depth_ + height_ <= kMaxNesting) {
        return false;
    }
    reportError("nesting too deep");
    too_deep_ = true;
    return true;
}

bool parser::impl::openParenthesis(const char* message) {
    if (!next()) {
        return false;
    }
    if (!isOperator(Operator::paranthesis_begin)) {
        return reportError(message);
    }
    return next();
}

bool parser::impl::isEndCondition(EndCondition flags) const {
    if (is(TokenKind::semicolon)) {
        return (flags & kEndSemicolon) != 0;
    }
    if (!is(TokenKind::operator_)) {
        return false;
    }
    switch (static_cast<Operator>(token_->value)) {
        case Operator::paranthesis_end:
            return (flags & kEndParenthesis) != 0;
        case Operator::bracket_end:
            return (flags & kEndBracket) != 0;
        case Operator::colon:
            return (flags & kEndColon) != 0;
        case Operator::comma:
            return (flags & kEndComma) != 0;
        default:
            return false;
    }
}

// ---- names and types

// One node per keyword and parser.
astBuiltin* parser::impl::parseBuiltin() {
    if (!is(TokenKind::keyword)) {
        return reportError("expected keyword");
    }
    if (!isType()) {
        return reportError("internal compiler error: attempted to parse as builtin type");
    }
    astBuiltin*& known = builtins_[token_->value];
    if (known == nullptr) {
        known = make<astBuiltin>(token_->value);
    }
    return known;
}

// Two scopes at most are open: the global one, and that of a function body.
astVariable* parser::impl::findVariable(const symbol& name) const {
    return name.local != nullptr && name.localScope == scope_ ? name.local : name.global;
}

// On purpose: a name entered again in the same scope is accepted and never found.
void parser::impl::enterVariable(symbol& name, astVariable* variable) {
    if (scope_ == 0) {
        name.global = name.global == nullptr ? variable : name.global;
    } else if (name.localScope != scope_) {
        name.localScope = scope_;
        name.local = variable;
    }
}

// ---- the unit

// unit: { directive | declaration ";" | function }
astTU* parser::impl::parseUnit(std::uint32_t) {
    for (;;) {
        token_ = &lexer_->read();
        if (lexer_->error() != nullptr) {
            return reportLexerError();
        }
        if (is(TokenKind::end)) {
            return unit_;
        }
        const bool done = is(TokenKind::directive) ? parseDirective() : parseExternal();
        if (!done || too_deep_) {
            return nullptr;
        }
    }
}

bool parser::impl::parseDirective() {
    switch (static_cast<DirectiveKind>(token_->value)) {
        case DirectiveKind::version: {
            if (unit_->versionDirective != nullptr) {
                return reportError("Multiple version directives not allowed");
            }
            auto* directive = make<astVersionDirective>();
            directive->number = token_->number;
            directive->profile = token_->choice;
            unit_->versionDirective = directive;
            break;
        }
        case DirectiveKind::extension: {
            auto* directive = make<astExtensionDirective>();
            directive->name = token_->text;
            directive->behavior = token_->choice;
            unit_->extensionDirectives.push_back(*home_, directive);
            break;
        }
        case DirectiveKind::define: {
            auto* directive = make<astDefineDirective>();
            directive->name = token_->name->name;
            directive->value = token_->replacement;
            unit_->defineDirectives.push_back(*home_, directive);
            break;
        }
    }
    return true;
}

// A declaration with its `;`, or a function. Other records of a list that ends in a function are
// ignored.
bool parser::impl::parseExternal() {
    records_.clear();
    if (!parseTopLevel()) {
        return false;
    }
    if (is(TokenKind::semicolon)) {
        return addGlobals(0);
    }
    if (isOperator(Operator::paranthesis_begin) && !records_.empty()) {
        const TopLevel record = records_.front();
        astFunction* function = parseFunction(record);
        if (function != nullptr) {
            addFunction(function, *record.name);
        }
        return function != nullptr;
    }
    return reportSyntaxErrorAtTopLevel();
}

bool parser::impl::addGlobals(std::size_t first_record) {
    for (std::size_t i = first_record; i < records_.size(); ++i) {
        const TopLevel& record = records_[i];
        auto* variable = make<astGlobalVariable>();
        variable->storage = record.storage;
        variable->auxiliary = record.auxiliary;
        variable->memory = record.memory;
        variable->precision = record.precision;
        variable->interpolation = record.interpolation;
        variable->baseType = record.type;
        variable->name = record.name->name;
        variable->isInvariant = record.isInvariant;
        variable->isPrecise = record.isPrecise;
        variable->layoutQualifiers = record.layoutQualifiers;
        if (record.initialValue != nullptr) {
            variable->initialValue = evaluate(record.initialValue);
            if (variable->initialValue == nullptr) {
                return false;
            }
        }
        variable->isArray = record.isArray;
        variable->arraySizes = record.arraySizes;
        unit_->globals.push_back(*home_, variable);
        enterVariable(*record.name, variable);
    }
    return true;
}

void parser::impl::addFunction(astFunction* function, symbol& name) {
    unit_->functions.push_back(*home_, function);
    if (name.function == nullptr) {
        name.function = function;
    }
}

}  // namespace glsl
