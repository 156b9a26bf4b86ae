#include "token_text.h"

#include "glsl/keywords.h"

namespace glsl::test {

Reader::Reader(const std::string& source)
    : texts_(arena::create(1024)),
      scratch_(arena::create(1024)),
      lexer_(new lexer(source.c_str(), *texts_, *scratch_)) {}

Reader::~Reader() {
    delete lexer_;
    scratch_->release();
    texts_->release();
}

namespace {

std::string describeDirective(const token& what) {
    switch (static_cast<DirectiveKind>(what.value)) {
        case DirectiveKind::version:
            return "version:" + std::to_string(what.number) + ":" + std::to_string(what.choice);
        case DirectiveKind::extension:
            return "extension:" + std::string(what.text) + ":" + std::to_string(what.choice);
        case DirectiveKind::define:
            return "define:" + std::string(what.name->name) + "=" + std::string(what.replacement);
    }
    return "directive?";
}

std::string place(lexer& reader) {
    return std::to_string(reader.line()) + ":" + std::to_string(reader.column());
}

std::string listTokens(const std::string& source, bool with_places) {
    Reader reader(source);
    std::string result;
    for (;;) {
        const token& next = reader->read();
        result += result.empty() ? "" : " ";
        if (reader->error() != nullptr) {
            return result + "!" + place(*reader) + ":" + reader->error();
        }
        result += describe(next);
        result += with_places ? "@" + place(*reader) : "";
        if (next.type == TokenKind::end) {
            return result;
        }
    }
}

}  // namespace

std::string describe(const token& what) {
    switch (what.type) {
        case TokenKind::end:
            return "end";
        case TokenKind::whitespace:
            return "whitespace";
        case TokenKind::comment:
            return "comment";
        case TokenKind::keyword:
            return "keyword:" + std::string(keywordText(what.value));
        case TokenKind::identifier:
            return "id:" + std::string(what.name->name);
        case TokenKind::string:
            return "string:" + std::string(what.text);
        case TokenKind::intConstant:
            return "int:" + std::to_string(static_cast<std::int32_t>(what.value));
        case TokenKind::uintConstant:
            return "uint:" + std::to_string(what.value);
        case TokenKind::floatConstant:
            return "float:" + std::string(what.text);
        case TokenKind::doubleConstant:
            return "double:" + std::string(what.text);
        case TokenKind::operator_:
            return std::string(operatorText(what.value));
        case TokenKind::semicolon:
            return ";";
        case TokenKind::scopeBegin:
            return "{";
        case TokenKind::scopeEnd:
            return "}";
        case TokenKind::directive:
            return describeDirective(what);
    }
    return "?";
}

std::string tokensOf(const std::string& source) {
    return listTokens(source, false);
}
std::string placedTokensOf(const std::string& source) {
    return listTokens(source, true);
}

void PrintTo(const TokensCase& c, std::ostream* out) {
    *out << c.source;
}

}  // namespace glsl::test
