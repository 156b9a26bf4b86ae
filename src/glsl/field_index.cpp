#include "glsl/field_index.h"

namespace glsl {

namespace {

constexpr std::size_t kShort = 32;  // so many fields are sooner compared than hashed

}  // namespace

astVariable* FieldIndex::find(const list<astVariable>& fields, std::string_view name) {
    if (fields.size() <= kShort) {
        for (astVariable* const field : fields) {
            if (field != nullptr && field->name == name) {
                return field;
            }
        }
        return nullptr;
    }
    const auto [list_place, is_new] = long_lists_.try_emplace(&fields);
    ByName& by_name = list_place->second;
    if (is_new) {
        for (astVariable* const field : fields) {
            if (field != nullptr) {
                by_name.try_emplace(field->name, field);
            }
        }
    }
    const auto place = by_name.find(name);
    return place == by_name.end() ? nullptr : place->second;
}

}  // namespace glsl
