#include <algorithm>
#include <set>

#include "diagnostics/traps/checks.h"

// Globals, their qualifiers and what stage they belong to.

namespace diagnostics {

namespace {

using namespace glsl;

class FragCoordUses : public TreeVisitor {
public:
    void enter(const astExpression& node) override {
        found = found || (node.kind == ExpressionKind::variableIdentifier &&
                          as<astVariableIdentifier>(&node)->variable->name == "gl_FragCoord");
    }
    bool found = false;
};

class ConstantUses : public TreeVisitor {
public:
    void enter(const astExpression& node) override {
        if (node.kind != ExpressionKind::variableIdentifier) {
            return;
        }
        const astVariable& variable = *as<astVariableIdentifier>(&node)->variable;
        found = found || (variable.variableType == VariableKind::global &&
                          as<astGlobalVariable>(&variable)->storage == kStorageConst);
    }
    bool found = false;
};

template <class Uses>
bool uses(const astExpression* expression) {
    Uses visitor;
    if (expression != nullptr) {
        walk(*expression, visitor);
    }
    return visitor.found;
}

bool sizes_name_constant(const astGlobalVariable& global) {
    return std::any_of(global.arraySizes.begin(), global.arraySizes.end(), [](const auto& size) {
        return size != nullptr && uses<ConstantUses>(size);
    });
}

// Every word that HLSL has no place for.
bool has_foreign_word(const astGlobalVariable& global) {
    return global.storage == kStorageAttribute || global.storage == kStorageVarying ||
           global.storage == kStorageBuffer || global.memory != 0;
}

bool is_in_or_out(const astGlobalVariable& global) {
    return global.storage == kStorageIn || global.storage == kStorageOut;
}

void look_at_words(const astGlobalVariable& global, const TrapScene& scene) {
    if (has_foreign_word(global)) {
        scene.report.at_name(Trap::kStorageWord, global);
    }
    if (!global.layoutQualifiers.empty() && !is_in_or_out(global)) {
        scene.report.at_name(Trap::kLayout, global);
    }
    if (!is_in_or_out(global) && global.storage != kStorageConst &&
        uses<FragCoordUses>(global.initialValue)) {
        scene.report.at_name(Trap::kGlobalFragCoord, global);
    }
    if (global.isArray && std::any_of(global.arraySizes.begin(), global.arraySizes.end(),
                                      [](const auto& size) { return size == nullptr; })) {
        scene.report.at_name(Trap::kUnsizedArray, global);
    }
}

void look_at_fragment(const astGlobalVariable& global, const TrapScene& scene) {
    const bool known = global.name == "tc" || global.name == "gl_Position";
    if (global.storage == kStorageIn && !scene.has_vertex && !known) {
        scene.report.at_name(Trap::kFragmentInput, global);
    } else if (global.storage == kStorageOut) {
        scene.report.at_name(Trap::kFragmentOutput, global);
    }
}

void look_at_vertex(const astGlobalVariable& global, const std::set<std::string>& outputs,
                    const TrapScene& scene) {
    const bool known = global.name == "position" || global.name == "texcoord";
    if (global.storage == kStorageIn && global.isArray) {
        scene.report.at_name(Trap::kVertexInputArray, global);
    } else if (global.storage == kStorageIn && known) {
        scene.report.at_name(Trap::kVertexInputAgain, global);
    } else if (global.storage == kStorageOut) {
        const std::string name(global.name);
        if (name.back() == '0' && outputs.count(name.substr(0, name.size() - 1)) != 0) {
            scene.report.at_name(Trap::kOutputNames, global);
        }
        if (sizes_name_constant(global)) {
            scene.report.at_name(Trap::kOutputSize, global);
        }
    }
}

}  // namespace

void check_globals(const TrapScene& scene) {
    std::set<std::string> outputs;
    for (const auto& global : scene.unit.globals) {
        if (global != nullptr && global->storage == kStorageOut) {
            outputs.emplace(global->name);
        }
    }
    for (const auto& global : scene.unit.globals) {
        if (global == nullptr || global->name.empty()) {
            continue;
        }
        look_at_words(*global, scene);
        if (scene.is_vertex) {
            look_at_vertex(*global, outputs, scene);
        } else {
            look_at_fragment(*global, scene);
        }
    }
    for (const auto& block : scene.unit.interfaceBlocks) {
        if (block != nullptr) {
            scene.report.at(Trap::kBlock, *block);
        }
    }
}

}  // namespace diagnostics
