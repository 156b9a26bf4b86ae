#pragma once

#include <initializer_list>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace effect_render {

/// A value inside a JSON file that knows where it stands: everything that is wrong with it ends in
/// a ToolError that begins with the file and the field, as in
/// "glow/effect.json: params[2].default: expected 3 numbers, found 2".
class JsonField {
public:
    /// The whole file. A syntax error is told with line and column.
    static JsonField Load(const std::string& file);

    [[noreturn]] void Fail(const std::string& what) const;

    bool IsObject() const;
    bool IsArray() const;
    bool IsText() const;
    bool IsNumber() const;
    bool IsFlag() const;

    bool Has(const char* name) const;
    /// A member of an object, which must exist.
    JsonField At(const char* name) const;
    /// Fails for a member that is none of `names`: most often a slip of the pen.
    void AllowOnly(std::initializer_list<std::string_view> names) const;

    std::vector<JsonField> Items() const;
    std::vector<std::pair<std::string, JsonField>> Members() const;

    std::string Text() const;
    bool Flag() const;
    double Number() const;
    /// A whole number from `lowest` to `highest`.
    int32_t Integer(int32_t lowest, int32_t highest) const;
    /// A number, or a list of them.
    std::vector<double> Numbers() const;
    std::vector<int32_t> Integers(int32_t lowest, int32_t highest) const;
    std::vector<std::string> Texts() const;

private:
    using Json = nlohmann::json;

    JsonField(std::shared_ptr<const Json> root, const Json* value, std::string file,
              std::string path);

    JsonField Member(const Json& value, const std::string& name) const;

    std::shared_ptr<const Json> root_;  // keeps `value_` alive
    const Json* value_;
    std::string file_;
    std::string path_;  // "params[2].default", empty for the whole file
};

}  // namespace effect_render
