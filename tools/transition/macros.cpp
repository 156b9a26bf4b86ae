#include "transition/macros.h"

#include <algorithm>
#include <map>

#include "transition/edits.h"
#include "transition/tokens.h"

namespace transition {

namespace {

struct Macro {
    std::vector<std::string> parameters;
    std::string body;
};

// "#define NAME(a, b)" cut into its name and parameters; false for any other directive.
bool read_head(std::string_view head, std::string& name, std::vector<std::string>& parameters) {
    const std::vector<Token> tokens = scan(head.substr(head.find("define") + 6));
    if (tokens.size() < 3 || tokens[1].text != "(" || tokens.back().text != ")") {
        return false;
    }
    name = tokens[0].text;
    for (size_t i = 2; i + 1 < tokens.size(); i += 2) {
        parameters.emplace_back(tokens[i].text);
    }
    return true;
}

std::map<std::string, Macro, std::less<>> read_macros(std::string_view text,
                                                      const std::vector<Token>& tokens) {
    std::map<std::string, Macro, std::less<>> macros;
    for (size_t i = 0; i < tokens.size(); ++i) {
        std::string name;
        Macro macro;
        if (tokens[i].text.substr(0, 7) != "#define" ||
            !read_head(tokens[i].text, name, macro.parameters)) {
            continue;
        }
        const size_t end = std::min(text.find('\n', tokens[i].end), text.size());
        macro.body = text.substr(tokens[i].end, end - tokens[i].end);
        macros.emplace(std::move(name), std::move(macro));
    }
    return macros;
}

// The arguments between the parentheses; `nested` is set if one holds a comma of its own.
std::vector<std::string> arguments_of(std::string_view text, const std::vector<Token>& tokens,
                                      size_t open, size_t close, bool& nested) {
    std::vector<std::string> arguments;
    size_t begin = tokens[open].end;
    size_t depth = 0;
    for (size_t i = open + 1; i <= close; ++i) {
        if (i == close || (tokens[i].text == "," && depth == 0)) {
            arguments.emplace_back(text.substr(begin, tokens[i].begin - begin));
            begin = tokens[i].end;
        } else if (opens(tokens[i].text)) {
            ++depth;
        } else if (closes(tokens[i].text)) {
            --depth;
        } else if (tokens[i].text == ",") {
            nested = true;
        }
    }
    return arguments;
}

std::string substituted(const Macro& macro, const std::vector<std::string>& arguments) {
    Edits edits;
    for (const Token& token : scan(macro.body)) {
        const auto found = std::find(macro.parameters.begin(), macro.parameters.end(), token.text);
        if (found != macro.parameters.end()) {
            edits.replace(token.begin, token.end,
                          arguments[static_cast<size_t>(found - macro.parameters.begin())]);
        }
    }
    return edits.apply(macro.body);
}

// A macro that grows by its own expansion stops here.
constexpr int kRounds = 16;
constexpr size_t kLongest = size_t{1} << 20;

}  // namespace

std::string expand_nested_macros(std::string_view text, std::vector<std::string>& notes) {
    std::string result(text);
    bool changed = false;
    for (int round = 0; round < kRounds && result.size() < kLongest; ++round) {
        const std::vector<Token> tokens = scan(result);
        const auto macros = read_macros(result, tokens);
        Edits edits;
        for (size_t i = 0; i + 1 < tokens.size(); ++i) {
            const auto macro = macros.find(tokens[i].text);
            const size_t close = macro == macros.end() || tokens[i + 1].text != "("
                                     ? tokens.size()
                                     : closing(tokens, i + 1);
            bool nested = false;
            if (close == tokens.size()) {
                continue;
            }
            const auto arguments = arguments_of(result, tokens, i + 1, close, nested);
            if (nested && arguments.size() == macro->second.parameters.size()) {
                edits.replace(tokens[i].begin, tokens[close].end,
                              substituted(macro->second, arguments));
                i = close;
            }
        }
        if (edits.empty()) {
            break;
        }
        result = edits.apply(result);
        changed = true;
    }
    if (changed) {
        notes.emplace_back("uses of a macro with nested arguments written out");
    }
    return result;
}

std::string inline_local_macros(std::string_view text, std::vector<std::string>& notes) {
    const std::vector<Token> tokens = scan(text);
    std::map<std::string_view, std::string> values;
    Edits edits;
    size_t depth = 0;
    for (size_t i = 0; i < tokens.size(); ++i) {
        const Token& token = tokens[i];
        depth += token.text == "{" ? 1u : 0u;
        depth -= token.text == "}" && depth > 0 ? 1u : 0u;
        if (token.text.substr(0, 7) == "#define" && depth > 0 && token.text.back() != ')') {
            const std::vector<Token> head = scan(token.text.substr(7));
            const size_t end = std::min(text.find('\n', token.end), text.size());
            const std::string_view line = text.substr(token.end, end - token.end);
            if (head.size() == 1) {
                values[head[0].text] = std::string(line.substr(0, line.find("//")));
                edits.replace(token.begin, end, "");
                while (i + 1 < tokens.size() && tokens[i + 1].begin < end) {
                    ++i;
                }
            }
        } else if (token.kind == TokenKind::word && values.count(token.text) != 0) {
            edits.replace(token.begin, token.end, values[token.text]);
        }
    }
    if (!values.empty()) {
        notes.emplace_back("a macro defined inside a function put in the place of its uses");
    }
    return edits.apply(text);
}

}  // namespace transition
