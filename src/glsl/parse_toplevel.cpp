#include <algorithm>
#include <iterator>

#include "glsl/parser_impl.h"

// Declarations outside functions, and the fields of structures and blocks.

namespace glsl {

struct QualifierWord {
    Keyword keyword;
    std::int32_t value;
};

namespace {

constexpr QualifierWord kStorageWords[] = {
    {Keyword::const_, kStorageConst},    {Keyword::in, kStorageIn},
    {Keyword::out, kStorageOut},         {Keyword::attribute, kStorageAttribute},
    {Keyword::uniform, kStorageUniform}, {Keyword::varying, kStorageVarying},
    {Keyword::buffer, kStorageBuffer},   {Keyword::shared, kStorageShared},
};
constexpr QualifierWord kAuxiliaryWords[] = {
    {Keyword::centroid, kAuxiliaryCentroid},
    {Keyword::patch, kAuxiliaryPatch},
};
constexpr QualifierWord kInterpolationWords[] = {
    {Keyword::smooth, kInterpolationSmooth},
    {Keyword::flat, kInterpolationFlat},
    {Keyword::noperspective, kInterpolationNoPerspective},
};
constexpr QualifierWord kPrecisionWords[] = {
    {Keyword::highp, kPrecisionHigh},
    {Keyword::mediump, kPrecisionMedium},
    {Keyword::lowp, kPrecisionLow},
};
// On purpose: read and dropped; the two words never reached the printed text.
constexpr QualifierWord kInvariantWord[] = {{Keyword::invariant, 1}};
constexpr QualifierWord kPreciseWord[] = {{Keyword::precise, 1}};
constexpr QualifierWord kMemoryWords[] = {
    {Keyword::coherent, static_cast<std::int32_t>(kMemoryCoherent)},
    {Keyword::volatile_, static_cast<std::int32_t>(kMemoryVolatile)},
    {Keyword::restrict_, static_cast<std::int32_t>(kMemoryRestrict)},
    {Keyword::readonly, static_cast<std::int32_t>(kMemoryReadOnly)},
    {Keyword::writeonly, static_cast<std::int32_t>(kMemoryWriteOnly)},
};

struct LayoutName {
    std::string_view name;
    bool hasValue;
};

constexpr LayoutName kLayoutNames[] = {
    {"shared", false},
    {"packed", false},
    {"std140", false},
    {"row_major", false},
    {"column_major", false},
    {"triangles", false},
    {"quads", false},
    {"isolines", false},
    {"equal_spacing", false},
    {"fractional_even_spacing", false},
    {"fractional_odd_spacing", false},
    {"cw", false},
    {"ccw", false},
    {"point_mode", false},
    {"points", false},
    {"lines", false},
    {"lines_adjacency", false},
    {"triangles_adjacency", false},
    {"origin_upper_left", false},
    {"pixel_center_integer", false},
    {"early_fragment_tests", false},
    {"line_strip", false},
    {"triangle_strip", false},
    {"depth_any", false},
    {"depth_greater", false},
    {"depth_less", false},
    {"depth_unchanged", false},
    {"binding", true},
    {"offset", true},
    {"align", true},
    {"location", true},
    {"component", true},
    {"index", true},
    {"invocations", true},
    {"local_size_x", true},
    {"local_size_y", true},
    {"local_size_z", true},
    {"xfb_buffer", true},
    {"xfb_stride", true},
    {"xfb_offset", true},
    {"vertices", true},
    {"max_vertices", true},
    {"stream", true},
};
static_assert(std::size(kLayoutNames) == 43);

// Storage words that open a block if a name follows.
bool opensBlock(std::int32_t storage) {
    return storage == kStorageIn || storage == kStorageOut || storage == kStorageUniform ||
           storage == kStorageBuffer;
}

bool isVoid(const astType* type) {
    return type->builtin && as<astBuiltin>(type)->typeKeyword == id(Keyword::void_);
}

}  // namespace

// list: item { "," item }. Appends to records_. Ends on the token behind the list.
bool parser::impl::parseTopLevel() {
    const std::size_t first = records_.size();
    TopLevel level;
    if (!parseTopLevelItem(level, nullptr)) {
        return false;
    }
    if (level.type != nullptr) {
        records_.push_back(level);
    }
    while (records_.size() != first && isOperator(Operator::comma)) {
        if (!next()) {
            return false;
        }
        const TopLevel continuation = records_[first];
        TopLevel more;
        if (!parseTopLevelItem(more, &continuation)) {
            return false;
        }
        if (more.type != nullptr) {
            records_.push_back(more);
        }
    }
    return true;
}

// item: { qualifier } [ type ] name { "[" [ size ] "]" } [ "=" value ]. A block or structure that
// ends with `;` leaves the type unset. Ends on the token behind the item.
bool parser::impl::parseTopLevelItem(TopLevel& level, const TopLevel* continuation) {
    bool complete = false;
    if (!parseQualifiers(level, continuation, complete)) {
        return false;
    }
    if (complete) {
        return true;
    }
    if (level.auxiliary == kAuxiliaryPatch && level.interpolation != kInterpolationNone) {
        return reportError(
            "cannot use interpolation qualifier with auxiliary storage qualifier `patch'");
    }
    if (continuation == nullptr && level.type == nullptr && !parseTopLevelType(level)) {
        return false;
    }
    if (level.type == nullptr) {
        return reportError("expected typename");
    }
    if (is(TokenKind::identifier)) {
        level.name = token_->name;
        if (!next()) {
            return false;
        }
    }
    if (!parseTopLevelArray(level) || !parseTopLevelInitialiser(level)) {
        return false;
    }
    if (!isOperator(Operator::paranthesis_begin) && isVoid(level.type)) {
        return reportError("`void' cannot be used in declaration");
    }
    if (level.name == nullptr) {
        return reportError("expected name for declaration");
    }
    return true;
}

// Everything in front of the type. `complete` is set if the item was a block or structure alone.
bool parser::impl::parseQualifiers(TopLevel& level, const TopLevel* continuation, bool& complete) {
    const std::size_t first = qualifiers_.size();
    astType* type = nullptr;
    while (!isType() && !is(TokenKind::identifier)) {
        // On purpose: a source that ends here fails without a message, as it always has.
        if (lexer_->peek().type == TokenKind::end) {
            return false;
        }
        // Only the words go on. NOLINTNEXTLINE(cppcoreguidelines-slicing)
        Qualifiers words = continuation == nullptr ? Qualifiers() : Qualifiers(*continuation);
        bool consumed = false;
        if (!takeQualifierWords(words, consumed) || !parseLayout(words, consumed)) {
            return false;
        }
        if (is(TokenKind::keyword) && isReservedKeyword(token_->value)) {
            return reportError("cannot use a reserved keyword");
        }
        // On purpose: the words in front of a block or structure are dropped; a block keeps its
        // storage itself. Effects declare nothing that depends on more.
        if (is(TokenKind::identifier) && opensBlock(words.storage)) {
            astInterfaceBlock* block = parseInterfaceBlock(words.storage);
            if (block == nullptr) {
                return false;
            }
            unit_->interfaceBlocks.push_back(*home_, block);
            type = block;
        } else if (isKeyword(Keyword::struct_)) {
            astStruct* structure = parseStruct();
            if (structure == nullptr) {
                return false;
            }
            unit_->structures.push_back(*home_, structure);
            type = structure;
        } else if (consumed) {
            qualifiers_.push_back(words);
            continue;
        } else {
            return reportSyntaxErrorAtTopLevel();
        }
        if (is(TokenKind::semicolon)) {
            qualifiers_.resize(first);
            complete = true;
            return true;
        }
    }
    if (continuation != nullptr) {
        // On purpose: a further name takes over all of the first one, and a structure in front
        // of it goes to nothing; effects that write it so compile.
        level = *continuation;
        level.arraySizes.truncate(level.arrayOnType);
    } else {
        level.type = type;
    }
    return mergeQualifiers(level, first);
}

// At most one word of each group, in this order: words in another order make further records.
bool parser::impl::takeQualifierWords(Qualifiers& into, bool& consumed) {
    std::int32_t dropped = 0;
    std::int32_t memory = 0;
    if (!takeWord(kStorageWords, into.storage, consumed) ||
        !takeWord(kAuxiliaryWords, into.auxiliary, consumed) ||
        !takeWord(kInterpolationWords, into.interpolation, consumed) ||
        !takeWord(kPrecisionWords, into.precision, consumed) ||
        !takeWord(kInvariantWord, dropped, consumed) ||
        !takeWord(kPreciseWord, dropped, consumed) || !takeWord(kMemoryWords, memory, consumed)) {
        return false;
    }
    into.memory |= static_cast<std::uint32_t>(memory);
    return true;
}

template <std::size_t kSize>
bool parser::impl::takeWord(const QualifierWord (&words)[kSize], std::int32_t& value,
                            bool& consumed) {
    if (!is(TokenKind::keyword)) {
        return true;
    }
    for (const QualifierWord& word : words) {
        if (token_->value == id(word.keyword)) {
            value = word.value;
            consumed = true;
            return next();
        }
    }
    return true;
}

bool parser::impl::mergeQualifiers(TopLevel& level, std::size_t first_record) {
    for (std::size_t i = first_record; i < qualifiers_.size(); ++i) {
        if (!mergeRecord(level, qualifiers_[i])) {
            return false;
        }
    }
    qualifiers_.resize(first_record);
    return true;
}

bool parser::impl::mergeRecord(TopLevel& level, const Qualifiers& record) {
    if (!checkStage(level, record)) {
        return false;
    }
    const auto both = [](std::int32_t a, std::int32_t b) { return a != -1 && b != -1; };
    if (both(record.storage, level.storage)) {
        return reportError("multiple storage qualifiers in declaration");
    }
    if (both(record.auxiliary, level.auxiliary)) {
        return reportError("multiple auxiliary storage qualifiers in declaration");
    }
    if (both(record.interpolation, level.interpolation)) {
        return reportError("multiple interpolation qualifiers in declaration");
    }
    if (both(record.precision, level.precision)) {
        return reportError("multiple precision qualifiers in declaration");
    }
    // On purpose: a later record that says nothing wipes out what an earlier one said, so
    // `flat in` loses `flat` while `in flat` keeps it; the printed text rests on it.
    level.storage = record.storage;
    level.auxiliary = record.auxiliary;
    level.interpolation = record.interpolation;
    level.precision = record.precision;
    level.memory |= record.memory;
    for (const auto& qualifier : record.layoutQualifiers) {
        for (std::size_t i = level.layoutQualifiers.size(); i-- > 0;) {
            if (level.layoutQualifiers[i]->name == qualifier->name) {
                level.layoutQualifiers.erase(*home_, i);
            }
        }
        level.layoutQualifiers.push_back(*home_, qualifier);
    }
    return true;
}

// What a stage's inputs and outputs cannot be qualified with.
bool parser::impl::checkStage(const Qualifiers& level, const Qualifiers& record) {
    const std::uint32_t stage = unit_->shaderType;
    const std::int32_t storage = level.storage != kStorageNone ? level.storage : record.storage;
    const bool auxiliary = level.auxiliary != kAuxiliaryNone || record.auxiliary != kAuxiliaryNone;
    const bool interpolation =
        level.interpolation != kInterpolationNone || record.interpolation != kInterpolationNone;
    const bool patch = level.auxiliary == kAuxiliaryPatch || record.auxiliary == kAuxiliaryPatch;
    if (stage == kShaderVertex && storage == kStorageIn && auxiliary) {
        return reportError("cannot use auxiliary storage qualifier on vertex shader input");
    }
    if (stage == kShaderVertex && storage == kStorageIn && interpolation) {
        return reportError("cannot use interpolation qualifier on vertex shader input");
    }
    if (stage == kShaderFragment && storage == kStorageOut && auxiliary) {
        return reportError("cannot use auxiliary storage qualifier on fragment shader output");
    }
    if (stage == kShaderFragment && storage == kStorageOut && interpolation) {
        return reportError("cannot use interpolation qualifier on fragment shader output");
    }
    if (stage != kShaderTessellationEvaluation && storage == kStorageIn && patch) {
        return reportError(
            "applying `patch' qualifier to input can only be done in tessellation evaluation "
            "shaders");
    }
    if (stage != kShaderTessellationControl && storage == kStorageOut && patch) {
        return reportError(
            "applying `patch' qualifier to output can only be done in tessellation control "
            "shaders");
    }
    return true;
}

// type: ( structure-name | keyword ) { "[" size "]" }. An unknown name leaves the type unset.
bool parser::impl::parseTopLevelType(TopLevel& level) {
    level.type = is(TokenKind::identifier) ? static_cast<astType*>(findStructure(*token_->name))
                                           : parseBuiltin();
    if (!next()) {
        return false;
    }
    while (level.type != nullptr && isOperator(Operator::bracket_begin)) {
        level.isArray = true;
        if (!next()) {
            return false;
        }
        astExpression* size = parseExpression(kEndBracket);
        if (size == nullptr) {
            return false;
        }
        level.arraySizes.insert(*home_, 0, size);
        ++level.arrayOnType;
        if (!next()) {
            return false;
        }
    }
    return true;
}

// { "[" [ size ] "]" } behind the name
bool parser::impl::parseTopLevelArray(TopLevel& level) {
    while (isOperator(Operator::bracket_begin)) {
        level.isArray = true;
        if (!next()) {
            return false;
        }
        level.arraySizes.push_back(*home_, parseExpression(kEndBracket));
        if (!next()) {
            return false;
        }
    }
    return true;
}

// [ "=" value ]
bool parser::impl::parseTopLevelInitialiser(TopLevel& level) {
    if (!isOperator(Operator::assign)) {
        if (level.storage == kStorageConst) {
            return reportError("const-qualified variable declared but not initialized");
        }
        return true;
    }
    if (!next()) {
        return false;
    }
    level.initialValue = parseExpression(kEndSemicolon);
    if (level.initialValue == nullptr) {
        return false;
    }
    const bool constructed = level.storage != kStorageUniform &&
                             level.initialValue->kind == ExpressionKind::constructorCall;
    if (!constructed && !isConstant(level.initialValue)) {
        return reportError("not a valid constant expression");
    }
    return true;
}

// [ "layout" "(" [ qualifier { "," qualifier } ] ")" ]. Ends on the token behind it.
bool parser::impl::parseLayout(Qualifiers& into, bool& consumed) {
    if (!isKeyword(Keyword::layout)) {
        return true;
    }
    consumed = true;
    if (!openParenthesis("expected `(' after `layout'")) {
        return false;
    }
    while (!isOperator(Operator::paranthesis_end)) {
        if (!parseLayoutQualifier(into)) {
            return false;
        }
    }
    return next();
}

// qualifier: name [ "=" constant ], with the `,` behind it. A name that is no name fails without a
// message.
bool parser::impl::parseLayoutQualifier(Qualifiers& into) {
    auto* qualifier = make<astLayoutQualifier>();
    if (is(TokenKind::identifier)) {
        qualifier->name = token_->name->name;
    } else if (isKeyword(Keyword::shared)) {
        qualifier->name = keywordText(id(Keyword::shared));
    } else {
        return false;
    }
    const auto* row =
        std::find_if(std::begin(kLayoutNames), std::end(kLayoutNames),
                     [&](const LayoutName& known) { return known.name == qualifier->name; });
    if (row == std::end(kLayoutNames)) {
        return reportError("unknown layout qualifier `%s'", qualifier->name);
    }
    if (!next()) {
        return false;
    }
    if (isOperator(Operator::assign)) {
        if (!row->hasValue) {
            return reportError("unexpected layout qualifier value on `%s' layout qualifier",
                               qualifier->name);
        }
        if (!next()) {
            return false;
        }
        astExpression* value = parseExpression(kEndComma | kEndParenthesis);
        if (value == nullptr) {
            return false;
        }
        if (!isConstant(value)) {
            return reportError("value for layout qualifier `%s' is not a valid constant expression",
                               qualifier->name);
        }
        qualifier->initialValue = evaluate(value);
        if (qualifier->initialValue == nullptr) {
            return false;
        }
    } else if (row->hasValue) {
        return reportError("expected layout qualifier value for `%s' layout qualifier",
                           qualifier->name);
    }
    if (isOperator(Operator::comma) && !next()) {
        return false;
    }
    into.layoutQualifiers.push_back(*home_, qualifier);
    return true;
}

}  // namespace glsl
