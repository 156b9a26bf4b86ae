#include "diagnostics/traps/expression_types.h"

#include <algorithm>

#include "glsl/hlsl/result_classes.h"
#include "glsl/keywords.h"

namespace diagnostics {

namespace {

using namespace glsl;
using C = ValueClass;

struct WordClass {
    Keyword keyword;
    C kind;
};

constexpr WordClass kWords[] = {
    {Keyword::bool_, C::boolean}, {Keyword::int_, C::integer},    {Keyword::uint_, C::integer},
    {Keyword::float_, C::float_}, {Keyword::double_, C::double_}, {Keyword::vec2, C::vec2},
    {Keyword::vec3, C::vec3},     {Keyword::vec4, C::vec4},       {Keyword::ivec2, C::ivec2},
    {Keyword::ivec3, C::ivec3},   {Keyword::ivec4, C::ivec4},     {Keyword::mat2, C::mat2},
    {Keyword::mat3, C::mat3},     {Keyword::mat4, C::mat4},
};

// Built-ins that give a number whatever they are called with.
constexpr std::string_view kGivesFloat[] = {"length", "distance", "dot", "determinant"};
// Built-ins that give what the translator has no class for: vectors of bools.
constexpr std::string_view kGivesBools[] = {
    "lessThan", "lessThanEqual", "greaterThan", "greaterThanEqual", "equal", "notEqual", "not"};

template <size_t kCount>
bool is_one_of(std::string_view name, const std::string_view (&table)[kCount]) {
    return std::find(std::begin(table), std::end(table), name) != std::end(table);
}

C vector_of(size_t size, bool integer) {
    constexpr C kFloats[] = {C::float_, C::vec2, C::vec3, C::vec4};
    constexpr C kInts[] = {C::integer, C::ivec2, C::ivec3, C::ivec4};
    if (size < 1 || size > 4) {
        return C::none;
    }
    return integer ? kInts[size - 1] : kFloats[size - 1];
}

bool is_vector(C kind) {
    return isFloatVector(kind) || isIntVector(kind);
}

bool is_number(C kind) {
    return kind == C::float_ || kind == C::integer || kind == C::double_ || kind == C::boolean;
}

bool is_input(std::string_view name) {
    const size_t digits = name.find_last_not_of("0123456789") + 1;
    const std::string_view word = name.substr(0, digits);
    return word == "INPUT" || word == "AUDIO_INPUT" || word == "DEPTH_INPUT";
}

// What an arithmetic operator makes of two operands.
C arithmetic(Operator operation, C left, C right) {
    if (left == C::none || right == C::none) {
        return C::none;
    }
    if (operation == Operator::multiply && isMatrix(left) && isFloatVector(right)) {
        return right;
    }
    if (operation == Operator::multiply && isFloatVector(left) && isMatrix(right)) {
        return left;
    }
    if (is_number(left) && is_number(right)) {
        return left == C::integer && right == C::integer ? C::integer : C::float_;
    }
    return is_number(left) ? right : left;
}

C operation_type(Operator operation, C left, C right) {
    switch (operation) {
        case Operator::less:
        case Operator::greater:
        case Operator::less_equal:
        case Operator::greater_equal:
        case Operator::equal:
        case Operator::not_equal:
        case Operator::logical_and:
        case Operator::logical_or:
        case Operator::logical_xor:
            return C::boolean;
        default:
            return arithmetic(operation, left, right);
    }
}

}  // namespace

ValueClass class_of(const astType* type) {
    if (type == nullptr) {
        return C::none;
    }
    if (!type->builtin) {
        return dynamic_cast<const astStruct*>(type) != nullptr ? C::struct_ : C::other;
    }
    const uint32_t keyword = as<astBuiltin>(type)->typeKeyword;
    const auto* const row =
        std::find_if(std::begin(kWords), std::end(kWords),
                     [keyword](const WordClass& word) { return id(word.keyword) == keyword; });
    return row == std::end(kWords) ? C::other : row->kind;
}

// Fills the table from the leaves up.
class ExpressionTypes::Pass : public TreeVisitor {
public:
    Pass(ExpressionTypes& out, bool is_vertex) : out_(out), is_vertex_(is_vertex) {}

    void leave(const astExpression& node) override { out_.types_[&node] = type_of(node); }

private:
    ExpressionType type_of(const astExpression& node) const {
        switch (node.kind) {
            case ExpressionKind::intConstant:
            case ExpressionKind::uintConstant:
                return plain(C::integer);
            case ExpressionKind::floatConstant:
                return plain(C::float_);
            case ExpressionKind::doubleConstant:
                return plain(C::double_);
            case ExpressionKind::boolConstant:
                return plain(C::boolean);
            case ExpressionKind::stringConstant:
                return {};
            case ExpressionKind::variableIdentifier:
                return type_of_variable(*as<astVariableIdentifier>(&node)->variable);
            case ExpressionKind::fieldOrSwizzle:
                return type_of_field(*as<astFieldOrSwizzle>(&node));
            case ExpressionKind::arraySubscript:
                return type_of_element(out_.of(as<astArraySubscript>(&node)->operand));
            case ExpressionKind::functionCall:
                return type_of_call(*as<astFunctionCall>(&node));
            case ExpressionKind::constructorCall:
                return plain(class_of(as<astConstructorCall>(&node)->type));
            case ExpressionKind::postIncrement:
            case ExpressionKind::postDecrement:
            case ExpressionKind::unaryMinus:
            case ExpressionKind::unaryPlus:
            case ExpressionKind::unaryBitNot:
            case ExpressionKind::unaryLogicalNot:
            case ExpressionKind::prefixIncrement:
            case ExpressionKind::prefixDecrement:
                return out_.of(as<astUnaryExpression>(&node)->operand);
            case ExpressionKind::sequence: {
                ExpressionType type = out_.of(as<astBinaryExpression>(&node)->operand2);
                type.printed = C::other;
                return type;
            }
            case ExpressionKind::assignment:
                return out_.of(as<astBinaryExpression>(&node)->operand1);
            case ExpressionKind::operation:
                return type_of_operation(*as<astOperationExpression>(&node));
            case ExpressionKind::ternary: {
                const auto& ternary = *as<astTernaryExpression>(&node);
                ExpressionType type = out_.of(ternary.onTrue);
                type.printed = out_.of(ternary.onFalse).printed;
                return type;
            }
        }
        return {};
    }

    static ExpressionType plain(C kind) { return {kind, kind, false, nullptr}; }

    ExpressionType type_of_variable(const astVariable& variable) const {
        ExpressionType type = plain(class_of(variable.baseType));
        type.is_array = variable.isArray;
        type.structure = dynamic_cast<const astStruct*>(variable.baseType.get());
        const bool is_output = variable.variableType == VariableKind::global && is_vertex_ &&
                               (variable.name == "gl_Position" || variable.name == "tc");
        if (is_output) {
            type.printed = C::none;
        }
        return type;
    }

    ExpressionType type_of_field(const astFieldOrSwizzle& node) const {
        const ExpressionType operand = out_.of(node.operand);
        if (operand.structure != nullptr && !operand.is_array) {
            for (const auto& field : operand.structure->fields) {
                if (field->name == node.field) {
                    return type_of_variable(*field);
                }
            }
        }
        const auto swizzle = [&node](C of, C otherwise) {
            return is_vector(of) ? vector_of(node.field.size(), isIntVector(of)) : otherwise;
        };
        return {swizzle(operand.meant, C::none), swizzle(operand.printed, C::other), false,
                nullptr};
    }

    // The translator keeps the class of the whole.
    static ExpressionType type_of_element(ExpressionType operand) {
        if (operand.is_array) {
            operand.is_array = false;
        } else if (isMatrix(operand.meant)) {
            operand.meant = vector_of(dimension(operand.meant), false);
        } else if (is_vector(operand.meant)) {
            operand.meant = vector_of(1, isIntVector(operand.meant));
        }
        return operand;
    }

    ExpressionType type_of_call(const astFunctionCall& call) const {
        if (const astFunction* function = out_.function(call.name)) {
            ExpressionType type = plain(class_of(function->returnType));
            type.structure = dynamic_cast<const astStruct*>(function->returnType.get());
            return type;
        }
        if (is_input(call.name)) {
            return plain(C::vec4);
        }
        if (is_one_of(call.name, kGivesFloat)) {
            return plain(C::float_);
        }
        ExpressionType widest = plain(C::float_);
        for (const auto& argument : call.parameters) {
            const ExpressionType type = out_.of(argument);
            widest.meant = wider(widest.meant, type.meant);
            widest.printed = wider(widest.printed, type.printed);
        }
        if (is_one_of(call.name, kGivesBools)) {
            widest.meant = C::other;
        }
        return widest;
    }

    static C wider(C left, C right) {
        const auto weight = [](C kind) { return isMatrix(kind) ? 8 : dimension(kind); };
        return weight(right) > weight(left) ? right : left;
    }

    ExpressionType type_of_operation(const astOperationExpression& node) const {
        const ExpressionType left = out_.of(node.operand1);
        const ExpressionType right = out_.of(node.operand2);
        return {operation_type(node.operation, left.meant, right.meant),
                resultClass(node.operation, left.printed, right.printed), false, nullptr};
    }

    ExpressionTypes& out_;
    bool is_vertex_;
};

ExpressionTypes::ExpressionTypes(const astTU& unit, bool is_vertex) {
    for (const auto& function : unit.functions) {
        if (function != nullptr) {
            functions_.emplace(function->name, function.get());
        }
    }
    Pass pass(*this, is_vertex);
    walk(unit, pass);
}

ExpressionType ExpressionTypes::of(const astExpression* expression) const {
    const auto found = types_.find(expression);
    return found == types_.end() ? ExpressionType() : found->second;
}

const astFunction* ExpressionTypes::function(std::string_view name) const {
    const auto found = functions_.find(name);
    return found == functions_.end() ? nullptr : found->second;
}

}  // namespace diagnostics
