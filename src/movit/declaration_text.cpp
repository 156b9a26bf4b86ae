#include "movit/declaration_text.h"

#include <charconv>
#include <initializer_list>

namespace movit {

namespace {

void append(std::string& out, std::initializer_list<std::string_view> pieces) {
    for (const std::string_view piece : pieces) {
        out.append(piece);
    }
}

}  // namespace

void append_uniform(std::string& out, ParamType type, const std::string& name) {
    append(out, {"uniform ", type_word(type), " PREFIX(", name, ");\n"});
}

void append_uniform_array(std::string& out, ParamType type, const std::string& name,
                          int32_t count) {
    char digits[16];
    const char* const end = std::to_chars(digits, digits + sizeof digits, count).ptr;
    const std::string_view number(digits, static_cast<size_t>(end - digits));
    append(out, {"uniform ", type_word(type), " PREFIX(", name, "[", number, "]);\n"});
}

void append_defines(std::string& out, const std::map<std::string, std::string>& defines) {
    for (const auto& [name, value] : defines) {
        append(out, {"#define ", name, " ", value, "\n"});
    }
}

void append_instance_attribute(std::string& out, ParamType type, const std::string& name) {
    const std::string_view word = type_word(type);
    append(out, {"customize_in ", word, " PREFIX(", name, ");\n"});
    append(out, {"customize_out ", word, " instance_", name, ";\n"});
}

void append_instance_varying(std::string& out, ParamType type, const std::string& name) {
    append(out, {"customize_in ", type_word(type), " instance_", name, ";\n"});
    // On purpose: the macro's text ends in a semicolon; the form is fixed for those who use it.
    append(out, {"#define PREFIX(", name, ") instance_", name, ";\n"});
}

}  // namespace movit
