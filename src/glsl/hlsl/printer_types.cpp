#include <array>

#include "glsl/hlsl/printer.h"
#include "glsl/keywords.h"

namespace glsl {

namespace {

// How a type keyword is printed, and what its values are.
struct TypeRow {
    Keyword keyword;
    std::string_view hlsl;
    ValueClass kind;
};

// Every keyword that isn't here prints as it stands and is of class `other`.
constexpr TypeRow kTypes[] = {
    {Keyword::mat2, "float2x2", ValueClass::mat2},
    {Keyword::mat3, "float3x3", ValueClass::mat3},
    {Keyword::mat4, "float4x4", ValueClass::mat4},
    {Keyword::vec2, "float2", ValueClass::vec2},
    {Keyword::vec3, "float3", ValueClass::vec3},
    {Keyword::vec4, "float4", ValueClass::vec4},
    {Keyword::ivec2, "int2", ValueClass::ivec2},
    {Keyword::ivec3, "int3", ValueClass::ivec3},
    {Keyword::ivec4, "int4", ValueClass::ivec4},
    {Keyword::int_, "int", ValueClass::integer},
    {Keyword::uint_, "uint", ValueClass::integer},
    {Keyword::float_, "float", ValueClass::float_},
    {Keyword::double_, "double", ValueClass::double_},
    {Keyword::bool_, "bool", ValueClass::boolean},
};

struct TypeText {
    std::string_view hlsl;  // empty: the keyword itself
    ValueClass kind = ValueClass::other;
};

constexpr std::array<TypeText, kKeywordCount> byKeyword() {
    std::array<TypeText, kKeywordCount> table{};
    for (const TypeRow& row : kTypes) {
        table[id(row.keyword)] = {row.hlsl, row.kind};
    }
    return table;
}
constexpr std::array<TypeText, kKeywordCount> kTypeTexts = byKeyword();

constexpr TypeText typeText(uint32_t keyword) {
    return keyword < kKeywordCount ? kTypeTexts[keyword] : TypeText{};
}

// A struct and an interface block are the two kinds of type that have a name.
std::string_view structName(const astType& type) {
    if (const auto* structure = dynamic_cast<const astStruct*>(&type)) {
        return structure->name;
    }
    if (const auto* block = dynamic_cast<const astInterfaceBlock*>(&type)) {
        return block->name;
    }
    return {};
}

// The zeros of a default value, by class.
constexpr std::string_view defaultZeros(ValueClass kind) {
    constexpr std::string_view kFloats =
        "0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, "
        "0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, ";
    constexpr std::string_view kInts = "0, 0, 0, 0, ";
    const size_t side = dimension(kind);
    const size_t separator = 2;
    if (isIntVector(kind)) {
        return kInts.substr(0, side * 3 - separator);
    }
    if (isMatrix(kind) || isFloatVector(kind)) {
        return kFloats.substr(0, (isMatrix(kind) ? side * side : side) * 6 - separator);
    }
    return kind == ValueClass::float_    ? kFloats.substr(0, 4)
           : kind == ValueClass::integer ? kInts.substr(0, 1)
                                         : std::string_view{};
}

constexpr std::string_view kStorages[] = {"const ", "in ",      "out ",    "",       "attribute ",
                                          "",       "varying ", "buffer ", "shared "};
constexpr std::string_view kAuxiliaries[] = {"centroid ", "sample ", "patch "};
constexpr std::string_view kInterpolations[] = {"smooth ", "flat ", "noperspective "};
constexpr std::string_view kMemories[] = {"coherent ", "volatile ", "restrict ", "readonly ",
                                          "writeonly "};  // by bit

template <size_t kCount>
std::string_view entry(const std::string_view (&table)[kCount], int32_t number) {
    return number >= 0 && static_cast<size_t>(number) < kCount ? table[number] : std::string_view{};
}

}  // namespace

Value Printer::valueOf(astType* type) {
    if (type == nullptr) {
        return {};
    }
    if (type->builtin) {
        return {typeText(as<astBuiltin>(type)->typeKeyword).kind};
    }
    return {ValueClass::struct_, true, type};
}

Value Printer::printType(astType* type) {
    if (type == nullptr) {
        return {};
    }
    if (type->builtin) {
        const uint32_t keyword = as<astBuiltin>(type)->typeKeyword;
        const TypeText row = typeText(keyword);
        text_.put(row.hlsl.empty() ? keywordText(keyword) : row.hlsl);
        return {row.kind};
    }
    piece("struct ", structName(*type));
    return {ValueClass::struct_, true, type};
}

void Printer::printDefaultValue(astType* type) {
    const Value value = printType(type);
    text_.put('(');
    text_.put(defaultZeros(value.kind));
    text_.put(')');
}

size_t Printer::defaultValueSize(astType* type) {
    constexpr size_t kLongestType = 32;  // near enough for what the size is asked for
    return kLongestType + defaultZeros(valueOf(type).kind).size();
}

void Printer::printStorage(int32_t storage) {
    text_.put(entry(kStorages, storage));
}

void Printer::printAuxiliary(int32_t auxiliary) {
    text_.put(entry(kAuxiliaries, auxiliary));
}

void Printer::printInterpolation(int32_t interpolation) {
    text_.put(entry(kInterpolations, interpolation));
}

void Printer::printMemory(uint32_t memory) {
    for (const std::string_view word : kMemories) {
        if ((memory & 1) != 0) {
            text_.put(word);
        }
        memory >>= 1;
    }
}

}  // namespace glsl
