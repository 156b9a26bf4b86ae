#include <cstring>

#include "glsl/hlsl/printer.h"

namespace glsl {

namespace {

constexpr std::string_view kEqualHelpers[] = {"global_is_equal_vec2(", "global_is_equal_vec3(",
                                              "global_is_equal_vec4("};
constexpr std::string_view kNotEqualHelpers[] = {
    "global_is_not_equal_vec2(", "global_is_not_equal_vec3(", "global_is_not_equal_vec4("};

std::string_view helperName(OperationForm form, uint32_t dimension) {
    switch (form) {
        case OperationForm::plain:
            return {};
        case OperationForm::mulLR:
        case OperationForm::mulRL:
            return "mul(";
        case OperationForm::equal:
            return kEqualHelpers[dimension - 2];
        case OperationForm::notEqual:
            return kNotEqualHelpers[dimension - 2];
    }
    return {};
}

bool isKind(const astExpression* expression, ExpressionKind kind) {
    return expression != nullptr && expression->kind == kind;
}

// Constants and names need no further walk.
bool isPlainLeaf(const astExpression* expression) {
    return expression != nullptr && expression->kind <= ExpressionKind::variableIdentifier;
}

// How `left *= right` is written: as an assignment of the product where a matrix is on the right.
OperationForm multiplyAssignForm(ValueClass left, ValueClass right) {
    if (!isMatrix(right) || dimension(left) != dimension(right)) {
        return OperationForm::plain;
    }
    return isFloatVector(left) ? OperationForm::mulLR
           : isMatrix(left)    ? OperationForm::mulRL
                               : OperationForm::plain;
}

}  // namespace

Value Printer::printChain(astExpression* outermost) {
    const size_t base = links_.size();
    astExpression* const leaf = openLinks(outermost);
    Value value = isPlainLeaf(leaf) ? printLeaf(*leaf) : printExpression(leaf);
    size_t special = SIZE_MAX;  // the outermost link so far whose text is not in its final order
    for (size_t place = links_.size(); place-- > base;) {
        const astExpression* const node = links_[place].node;
        if (special != SIZE_MAX && node->kind == ExpressionKind::assignment) {
            rearrange(special, links_.size());  // "*=" may repeat what stands to its left
            links_.truncate(place + 1);
            special = SIZE_MAX;
        }
        value = closeLink(place, value);
        if (links_[place].form != OperationForm::plain) {
            special = place;
        }
    }
    if (special != SIZE_MAX) {
        rearrange(special, links_.size());
    }
    links_.truncate(base);
    return value;
}

// Walks down to the leaf and puts what stands in front of it. Returns the leaf, which may be null.
astExpression* Printer::openLinks(astExpression* outermost) {
    const size_t base = links_.size();
    astExpression* node = outermost;
    while (node != nullptr) {
        astExpression* left = nullptr;
        switch (node->kind) {
            case ExpressionKind::fieldOrSwizzle:
                left = as<astFieldOrSwizzle>(node)->operand;
                break;
            case ExpressionKind::arraySubscript:
                left = as<astArraySubscript>(node)->operand;
                break;
            case ExpressionKind::postIncrement:
            case ExpressionKind::postDecrement:
                left = as<astUnaryExpression>(node)->operand;
                break;
            case ExpressionKind::ternary:
                left = as<astTernaryExpression>(node)->condition;
                text_.put('(');
                break;
            case ExpressionKind::assignment:
                left = as<astBinaryExpression>(node)->operand1;
                if (links_.size() > base && isKind(links_.back().node, ExpressionKind::operation)) {
                    text_.put('(');
                }
                break;
            case ExpressionKind::sequence:
            case ExpressionKind::operation:
                left = as<astBinaryExpression>(node)->operand1;
                text_.put('(');
                break;
            default:
                return node;
        }
        links_.push({node, text_.size(), 0, 0, 0, 0, OperationForm::plain, 0});
        node = left;
    }
    return nullptr;
}

// Puts what stands behind the left operand; `left` is its value.
Value Printer::closeLink(size_t place, const Value& left) {
    links_[place].leftEnd = text_.size();
    astExpression* const node = links_[place].node;
    switch (node->kind) {
        case ExpressionKind::fieldOrSwizzle:
            return printField(*as<astFieldOrSwizzle>(node), left);
        case ExpressionKind::arraySubscript:
            return printSubscript(*as<astArraySubscript>(node), left);
        case ExpressionKind::postIncrement:
            text_.put("++");
            return left;
        case ExpressionKind::postDecrement:
            text_.put("--");
            return left;
        case ExpressionKind::sequence:
            return closeSequence(*as<astSequenceExpression>(node));
        case ExpressionKind::assignment:
            return closeAssignment(place, left);
        case ExpressionKind::operation:
            return closeOperation(place, left);
        case ExpressionKind::ternary:
            return closeTernary(*as<astTernaryExpression>(node));
        default:
            return {};
    }
}

Value Printer::closeSequence(const astSequenceExpression& node) {
    text_.put(", ");
    printExpression(node.operand2);
    text_.put(')');
    return {ValueClass::other};
}

Value Printer::closeTernary(const astTernaryExpression& node) {
    text_.put(" ? ");
    printExpression(node.onTrue);
    text_.put(" : ");
    const Value value = printExpression(node.onFalse);
    text_.put(')');
    return value;
}

Value Printer::closeAssignment(size_t place, const Value& left) {
    const auto& node = *as<astAssignmentExpression>(links_[place].node);
    piece(" ", operatorText(node.assignment), " ");
    links_[place].right = text_.size();
    const Value right = printExpression(node.operand2);
    if (node.assignment == Operator::multiply_assign) {
        const OperationForm form = multiplyAssignForm(left.kind, right.kind);
        if (form != OperationForm::plain) {
            multiplyAssign(links_[place], form);
        }
    }
    return left;
}

// Turns "L *= R" at the end of the text into "L = mul(L, R)" or "L = mul(R, L)".
void Printer::multiplyAssign(const Link& link, OperationForm form) {
    if (!mayRepeatPiece(link.leftEnd - link.left)) {
        return;
    }
    const std::string_view right = keepText(link.right);
    text_.truncate(link.leftEnd);
    text_.put(" = mul(");
    if (form == OperationForm::mulLR) {
        text_.repeat(link.left, link.leftEnd);
        text_.put(", ");
        text_.put(right);
    } else {
        text_.put(right);
        text_.put(", ");
        text_.repeat(link.left, link.leftEnd);
    }
    text_.put(')');
}

// The text is printed in plain form first; a form that the operands' classes ask for is noted and
// made by rearrange().
Value Printer::closeOperation(size_t place, const Value& left) {
    const auto& node = *as<astOperationExpression>(links_[place].node);
    if (isKind(node.operand1, ExpressionKind::assignment)) {
        text_.put(')');
    }
    links_[place].operatorAt = text_.size();
    piece(" ", operatorText(node.operation), " ");
    links_[place].right = text_.size();
    const bool isAssignment = isKind(node.operand2, ExpressionKind::assignment);
    if (isAssignment) {
        text_.put('(');
    }
    const Value right = printExpression(node.operand2);
    if (isAssignment) {
        text_.put(')');
    }
    Link& link = links_[place];
    link.rightEnd = text_.size();
    link.form = operationForm(node.operation, left.kind, right.kind);
    link.dimension = static_cast<uint8_t>(dimension(left.kind));
    text_.put(')');
    return {resultClass(node.operation, left.kind, right.kind)};
}

// Writes the text of the links from `first` up to `end`, which reaches to the end of the output,
// once more with every operation in its form. One pass, however many links ask for it:
//
//     opening brackets and helper names, outermost link first
//     leaf
//     the rest of each link, innermost first
void Printer::rearrange(size_t first, size_t end) {
    const size_t begin = links_[first].left;
    const size_t textEnd = text_.size();
    const std::string_view kept = keepText(begin);
    const auto original = [&](size_t from, size_t to) {
        return kept.substr(from - begin, to - from);
    };
    text_.truncate(begin);
    for (size_t i = first; i < end; ++i) {
        const Link& link = links_[i];
        if (i > first) {
            text_.put(original(links_[i - 1].left, link.left));
        }
        text_.put(helperName(link.form, link.dimension));
        if (link.form == OperationForm::mulRL) {
            text_.put(original(link.right, link.rightEnd));
            text_.put(", ");
        }
    }
    text_.put(original(links_[end - 1].left, links_[end - 1].leftEnd));
    for (size_t i = end; i-- > first;) {
        const Link& link = links_[i];
        const size_t linkEnd = i > first ? links_[i - 1].leftEnd : textEnd;
        if (link.form == OperationForm::plain) {
            text_.put(original(link.leftEnd, linkEnd));
            continue;
        }
        text_.put(original(link.leftEnd, link.operatorAt));
        if (link.form != OperationForm::mulRL) {
            text_.put(", ");
            text_.put(original(link.right, link.rightEnd));
        }
        text_.put(')');
        text_.put(original(link.rightEnd, linkEnd));
    }
}

// A copy of the text from `begin` on; valid until the next call.
std::string_view Printer::keepText(size_t begin) {
    const std::string_view current = text_.from(begin);
    if (current.size() > kPrintBufferSize) {
        kept_.assign(current);
        return kept_;
    }
    std::memcpy(job_.unit.printBuffer, current.data(), current.size());
    return {job_.unit.printBuffer, current.size()};
}

}  // namespace glsl
