#include "json_field.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "files.h"
#include "tool_error.h"

namespace effect_render {
namespace {

// Where a byte stands, as "line:column", both from 1.
std::string Place(const std::string& text, size_t byte) {
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(byte, text.size()));
    const auto line = 1 + std::count(text.begin(), end, '\n');
    const auto last = std::find(std::make_reverse_iterator(end), text.rend(), '\n');
    const auto column = std::distance(last.base(), end);
    return std::to_string(line) + ":" + std::to_string(std::max<std::ptrdiff_t>(column, 1));
}

}  // namespace

JsonField JsonField::Load(const std::string& file) {
    const std::string text = ReadText(file);
    try {
        const auto root = std::make_shared<const Json>(Json::parse(text));
        return {root, root.get(), file, ""};
    } catch (const Json::parse_error& error) {
        throw ToolError(file + ":" + Place(text, error.byte) + ": this is no valid JSON");
    }
}

JsonField::JsonField(std::shared_ptr<const Json> root, const Json* value, std::string file,
                     std::string path)
    : root_(std::move(root)), value_(value), file_(std::move(file)), path_(std::move(path)) {}

JsonField JsonField::Member(const Json& value, const std::string& name) const {
    return {root_, &value, file_, path_.empty() ? name : path_ + "." + name};
}

void JsonField::Fail(const std::string& what) const {
    throw ToolError(file_ + ": " + (path_.empty() ? "" : path_ + ": ") + what);
}

bool JsonField::IsObject() const {
    return value_->is_object();
}

bool JsonField::IsArray() const {
    return value_->is_array();
}

bool JsonField::IsText() const {
    return value_->is_string();
}

bool JsonField::IsNumber() const {
    return value_->is_number();
}

bool JsonField::IsFlag() const {
    return value_->is_boolean();
}

bool JsonField::Has(const char* name) const {
    return value_->is_object() && value_->contains(name);
}

JsonField JsonField::At(const char* name) const {
    if (!Has(name)) {
        Fail(std::string("'") + name + "' is missing");
    }
    return Member((*value_)[name], name);
}

void JsonField::AllowOnly(std::initializer_list<std::string_view> names) const {
    for (const auto& [name, field] : Members()) {
        if (std::find(names.begin(), names.end(), name) == names.end()) {
            field.Fail("there is no such field");
        }
    }
}

std::vector<JsonField> JsonField::Items() const {
    if (!value_->is_array()) {
        Fail("expected a list");
    }
    std::vector<JsonField> items;
    for (size_t i = 0; i < value_->size(); ++i) {
        items.push_back(
            JsonField(root_, &(*value_)[i], file_, path_ + "[" + std::to_string(i) + "]"));
    }
    return items;
}

std::vector<std::pair<std::string, JsonField>> JsonField::Members() const {
    if (!value_->is_object()) {
        Fail("expected an object");
    }
    std::vector<std::pair<std::string, JsonField>> members;
    for (const auto& [name, value] : value_->items()) {
        members.emplace_back(name, Member(value, name));
    }
    return members;
}

std::string JsonField::Text() const {
    if (!value_->is_string()) {
        Fail("expected a text");
    }
    return value_->get<std::string>();
}

bool JsonField::Flag() const {
    if (!value_->is_boolean()) {
        Fail("expected true or false");
    }
    return value_->get<bool>();
}

double JsonField::Number() const {
    if (!value_->is_number()) {
        Fail("expected a number");
    }
    return value_->get<double>();
}

int32_t JsonField::Integer(int32_t lowest, int32_t highest) const {
    const double number = Number();
    if (number != std::floor(number) || number < lowest || number > highest) {
        Fail("expected a whole number from " + std::to_string(lowest) + " to " +
             std::to_string(highest));
    }
    return static_cast<int32_t>(number);
}

std::vector<double> JsonField::Numbers() const {
    if (value_->is_number()) {
        return {Number()};
    }
    std::vector<double> numbers;
    for (const JsonField& item : Items()) {
        numbers.push_back(item.Number());
    }
    return numbers;
}

std::vector<int32_t> JsonField::Integers(int32_t lowest, int32_t highest) const {
    std::vector<int32_t> numbers;
    for (const JsonField& item : Items()) {
        numbers.push_back(item.Integer(lowest, highest));
    }
    return numbers;
}

std::vector<std::string> JsonField::Texts() const {
    std::vector<std::string> texts;
    for (const JsonField& item : Items()) {
        texts.push_back(item.Text());
    }
    return texts;
}

}  // namespace effect_render
