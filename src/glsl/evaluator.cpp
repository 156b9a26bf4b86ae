#include <cstring>
#include <string>
#include <type_traits>

#include "glsl/parser_impl.h"

// Constants: which expressions are, and what they come to.

namespace glsl {

namespace {

bool isConstantValue(const astExpression& expression) {
    switch (expression.kind) {
        case ExpressionKind::intConstant:
        case ExpressionKind::uintConstant:
        case ExpressionKind::floatConstant:
        case ExpressionKind::doubleConstant:
        case ExpressionKind::boolConstant:
            return true;
        default:
            return false;
    }
}

template <class To, class From>
To bitsAs(From value) {
    static_assert(sizeof(To) == sizeof(From));
    To result;
    std::memcpy(&result, &value, sizeof(result));
    return result;
}

// The initial value of a global; null for any other variable.
astExpression* valueOf(const astExpression* identifier) {
    const astVariable* variable = as<astVariableIdentifier>(identifier)->variable;
    return variable->variableType == VariableKind::global
               ? as<astGlobalVariable>(variable)->initialValue.get()
               : nullptr;
}

}  // namespace

// A constant while it is computed.
struct parser::impl::Constant {
    ExpressionKind kind = ExpressionKind::intConstant;
    std::uint64_t bits = 0;         // of the value, zero above it
    std::string joined;             // text of a folded float or double
    astExpression* node = nullptr;  // the node it was taken from, while it is unchanged

    // As written or joined; empty for any other kind than float and double.
    std::string_view text() const {
        if (node == nullptr) {
            return joined;
        }
        switch (kind) {
            case ExpressionKind::floatConstant:
                return as<astFloatConstant>(node)->text;
            case ExpressionKind::doubleConstant:
                return as<astDoubleConstant>(node)->text;
            default:
                return {};
        }
    }

    std::uint32_t low() const { return static_cast<std::uint32_t>(bits); }
    std::int32_t asInt() const { return static_cast<std::int32_t>(low()); }
    float asFloat() const { return bitsAs<float>(low()); }
    double asDouble() const { return bitsAs<double>(bits); }
    bool asBool() const { return (bits & 0xFF) != 0; }

    void become(ExpressionKind what, std::uint64_t value) {
        kind = what;
        bits = value;
        node = nullptr;
        if (what != ExpressionKind::floatConstant && what != ExpressionKind::doubleConstant) {
            joined.clear();
        }
    }
    void become(std::int32_t value) {
        become(ExpressionKind::intConstant, static_cast<std::uint32_t>(value));
    }
    void become(std::uint32_t value) { become(ExpressionKind::uintConstant, value); }
    void become(float value) {
        become(ExpressionKind::floatConstant, bitsAs<std::uint32_t>(value));
    }
    void become(double value) {
        become(ExpressionKind::doubleConstant, bitsAs<std::uint64_t>(value));
    }
    void become(bool value) { become(ExpressionKind::boolConstant, value ? 1 : 0); }
};

// Folds one expression. Recursion goes down right operands and prefix operators, whose nesting the
// parser limits; chains of operators, which hang to the left, are walked.
class parser::impl::Evaluator {
public:
    explicit Evaluator(impl& parser) : parser_(parser) {}

    // False if it failed; the message is reported, but for a null expression.
    bool fold(astExpression* expression, Constant& into);
    astExpression* node(const Constant& constant);

private:
    bool fail() { return parser_.reportError("invalid operation in constant expression"); }
    static void load(astExpression* constant, Constant& into);
    bool ownText(Constant& constant, std::size_t more);
    bool foldMinus(Constant& operand);
    bool foldPlus(const Constant& operand);
    bool foldChain(astExpression* expression, Constant& into);
    bool apply(Constant& left, Operator id, const Constant& right);
    template <class T>
    bool applyInteger(Constant& left, Operator id, T a, T b);
    template <class T>
    bool applyReal(Constant& left, Operator id, T a, T b, std::string_view right_text);
    bool applyBool(Constant& left, Operator id, bool a, bool b);
    template <class T>
    static bool compare(Constant& left, Operator id, T a, T b);

    impl& parser_;
};

bool parser::impl::Evaluator::fold(astExpression* expression, Constant& into) {
    if (expression == nullptr) {
        return false;
    }
    switch (expression->kind) {
        case ExpressionKind::variableIdentifier: {
            astExpression* value = valueOf(expression);
            return value == nullptr ? fail() : fold(value, into);
        }
        case ExpressionKind::unaryMinus:
            return fold(as<astUnaryExpression>(expression)->operand, into) && foldMinus(into);
        case ExpressionKind::unaryPlus:
            return fold(as<astUnaryExpression>(expression)->operand, into) && foldPlus(into);
        case ExpressionKind::operation:
            return foldChain(expression, into);
        default:
            break;
    }
    if (!isConstantValue(*expression) && expression->kind != ExpressionKind::constructorCall) {
        return fail();
    }
    load(expression, into);
    return true;
}

void parser::impl::Evaluator::load(astExpression* constant, Constant& into) {
    switch (constant->kind) {
        case ExpressionKind::intConstant:
            into.become(as<astIntConstant>(constant)->value);
            break;
        case ExpressionKind::uintConstant:
            into.become(as<astUIntConstant>(constant)->value);
            break;
        case ExpressionKind::floatConstant:
            into.become(as<astFloatConstant>(constant)->value);
            break;
        case ExpressionKind::doubleConstant:
            into.become(as<astDoubleConstant>(constant)->value);
            break;
        case ExpressionKind::boolConstant:
            into.become(as<astBoolConstant>(constant)->value);
            break;
        default:
            into.become(constant->kind, 0);
            break;
    }
    into.node = constant;
}

// Lets `constant` have a text of its own, for `more` bytes to be written into it. Texts made of
// texts can double with each constant, so the bytes written in all of them are limited.
bool parser::impl::Evaluator::ownText(Constant& constant, std::size_t more) {
    const std::string_view shared = constant.node == nullptr ? "" : constant.text();
    if (shared.size() + more > parser_.constant_text_left_) {
        return parser_.reportError("Out of memory");
    }
    parser_.constant_text_left_ -= shared.size() + more;
    if (constant.node != nullptr) {
        constant.joined = shared;
    }
    return true;
}

bool parser::impl::Evaluator::foldMinus(Constant& operand) {
    if (operand.kind == ExpressionKind::intConstant) {
        operand.become(static_cast<std::int32_t>(0 - operand.low()));
        return true;
    }
    const bool is_float = operand.kind == ExpressionKind::floatConstant;
    if (!is_float && operand.kind != ExpressionKind::doubleConstant) {
        return fail();
    }
    if (!ownText(operand, operand.text().size() + 1)) {
        return false;
    }
    operand.joined.insert(0, 1, '-');
    if (is_float) {
        operand.become(-operand.asFloat());
    } else {
        operand.become(-operand.asDouble());
    }
    return true;
}

bool parser::impl::Evaluator::foldPlus(const Constant& operand) {
    switch (operand.kind) {
        case ExpressionKind::intConstant:
        case ExpressionKind::uintConstant:
        case ExpressionKind::floatConstant:
        case ExpressionKind::doubleConstant:
            return true;
        default:
            return fail();
    }
}

// Both operands are folded, left first, also where the left one fails: each may have a message.
bool parser::impl::Evaluator::foldChain(astExpression* expression, Constant& into) {
    Collector<astOperationExpression> chain(parser_);
    for (; expression != nullptr && expression->kind == ExpressionKind::operation;
         expression = as<astOperationExpression>(expression)->operand1) {
        chain.add(as<astOperationExpression>(expression));
    }
    bool good = fold(expression, into);
    for (std::size_t i = chain.size(); i-- > 0;) {
        Constant right;
        const bool right_good = fold(chain[i]->operand2, right);
        good = good && right_good && apply(into, chain[i]->operation, right);
    }
    return good;
}

// On purpose: the left operand alone decides; the bits and the text of the right one are taken as
// if it were of the same kind. There are no promotions.
bool parser::impl::Evaluator::apply(Constant& left, Operator id, const Constant& right) {
    switch (left.kind) {
        case ExpressionKind::intConstant:
            return applyInteger(left, id, left.asInt(), right.asInt());
        case ExpressionKind::uintConstant:
            return applyInteger(left, id, left.low(), right.low());
        case ExpressionKind::floatConstant:
            return applyReal(left, id, left.asFloat(), right.asFloat(), right.text());
        case ExpressionKind::doubleConstant:
            return applyReal(left, id, left.asDouble(), right.asDouble(), right.text());
        case ExpressionKind::boolConstant:
            return applyBool(left, id, left.asBool(), right.asBool());
        default:
            return fail();
    }
}

// Comparisons and logic, which all kinds of numbers share; false for any other operator.
template <class T>
bool parser::impl::Evaluator::compare(Constant& left, Operator id, T a, T b) {
    const T zero = 0;
    switch (id) {
        case Operator::less:
            left.become(a < b);
            return true;
        case Operator::greater:
            left.become(a > b);
            return true;
        case Operator::less_equal:
            left.become(a <= b);
            return true;
        case Operator::greater_equal:
            left.become(a >= b);
            return true;
        case Operator::equal:
            left.become(a == b);
            return true;
        case Operator::not_equal:
            left.become(a != b);
            return true;
        case Operator::logical_and:
            left.become(a != zero && b != zero);
            return true;
        case Operator::logical_or:
            left.become(a != zero || b != zero);
            return true;
        case Operator::logical_xor:
            left.become((a == zero) != (b == zero));
            return true;
        default:
            return false;
    }
}

// Arithmetic wraps at 32 bits and shifts count modulo 32. On purpose: there is no `|`; sources that
// use it in a constant are refused.
template <class T>
bool parser::impl::Evaluator::applyInteger(Constant& left, Operator id, T a, T b) {
    if (compare(left, id, a, b)) {
        return true;
    }
    const auto x = static_cast<std::uint32_t>(a);
    const auto y = static_cast<std::uint32_t>(b);
    const bool overflows = std::is_signed_v<T> && x == 0x80000000u && y == 0xFFFFFFFFu;
    switch (id) {
        case Operator::multiply:
            left.become(static_cast<T>(x * y));
            return true;
        case Operator::divide:
        case Operator::modulus:
            if (b == 0 || overflows) {
                return fail();
            }
            left.become(static_cast<T>(id == Operator::divide ? a / b : a % b));
            return true;
        case Operator::plus:
            left.become(static_cast<T>(x + y));
            return true;
        case Operator::minus:
            left.become(static_cast<T>(x - y));
            return true;
        case Operator::shift_left:
            left.become(static_cast<T>(x << (y & 31)));
            return true;
        case Operator::shift_right:
            left.become(static_cast<T>(a >> (y & 31)));
            return true;
        case Operator::bit_and:
            left.become(static_cast<T>(x & y));
            return true;
        case Operator::bit_xor:
            left.become(static_cast<T>(x ^ y));
            return true;
        default:
            return fail();
    }
}

// The result keeps a readable text: both texts with the operator between them.
template <class T>
bool parser::impl::Evaluator::applyReal(Constant& left, Operator id, T a, T b,
                                        std::string_view right_text) {
    if (compare(left, id, a, b)) {
        return true;
    }
    T value = 0;
    switch (id) {
        case Operator::multiply:
            value = a * b;
            break;
        case Operator::divide:
            value = a / b;  // by zero: infinity or no number, as the processor has it
            break;
        case Operator::plus:
            value = a + b;
            break;
        case Operator::minus:
            value = a - b;
            break;
        default:
            return fail();
    }
    const std::string_view sign = operatorText(id);
    if (!ownText(left, sign.size() + right_text.size())) {
        return false;
    }
    left.joined.append(sign).append(right_text);
    left.become(value);
    return true;
}

bool parser::impl::Evaluator::applyBool(Constant& left, Operator id, bool a, bool b) {
    switch (id) {
        case Operator::equal:
            left.become(a == b);
            return true;
        case Operator::not_equal:
        case Operator::logical_xor:
            left.become(a != b);
            return true;
        case Operator::logical_and:
            left.become(a && b);
            return true;
        case Operator::logical_or:
            left.become(a || b);
            return true;
        default:
            return fail();
    }
}

// The node of a folded constant, at the parser's position.
astExpression* parser::impl::Evaluator::node(const Constant& constant) {
    if (constant.node != nullptr) {
        return constant.node;
    }
    switch (constant.kind) {
        case ExpressionKind::intConstant:
            return parser_.make<astIntConstant>(constant.asInt());
        case ExpressionKind::uintConstant:
            return parser_.make<astUIntConstant>(constant.low());
        case ExpressionKind::floatConstant:
            return parser_.make<astFloatConstant>(constant.asFloat(),
                                                  parser_.home_->copy(constant.text()));
        case ExpressionKind::doubleConstant:
            return parser_.make<astDoubleConstant>(constant.asDouble(),
                                                   parser_.home_->copy(constant.text()));
        default:
            return parser_.make<astBoolConstant>(constant.asBool());
    }
}

// Null counts as not constant.
bool parser::impl::isConstant(const astExpression* expression) {
    while (expression != nullptr) {
        switch (expression->kind) {
            case ExpressionKind::variableIdentifier:
                expression = valueOf(expression);
                break;
            case ExpressionKind::unaryMinus:
            case ExpressionKind::unaryPlus:
                expression = as<astUnaryExpression>(expression)->operand;
                break;
            case ExpressionKind::operation:
                if (!isConstant(as<astOperationExpression>(expression)->operand2)) {
                    return false;
                }
                expression = as<astOperationExpression>(expression)->operand1;
                break;
            default:
                return isConstantValue(*expression);
        }
    }
    return false;
}

// The constant that `expression` comes to; null after a failure. Constants and constructor calls
// are returned as they are.
astExpression* parser::impl::evaluate(astExpression* expression) {
    Constant constant;
    Evaluator evaluator(*this);
    return evaluator.fold(expression, constant) ? evaluator.node(constant) : nullptr;
}

}  // namespace glsl
