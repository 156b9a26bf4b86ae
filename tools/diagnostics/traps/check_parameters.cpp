#include <map>

#include "diagnostics/traps/checks.h"

// Parameters of the effect that do not arrive in the shader as they were set.

namespace diagnostics {

namespace {

using namespace glsl;

// Tells of the first use of each parameter that is in question.
class ParameterUses : public TreeVisitor {
public:
    explicit ParameterUses(const TrapScene& scene) : scene_(scene) {
        for (const Param& param : scene.facts.params) {
            const bool is_number = param.type == "int" || param.type == "float";
            if (param.shape == ParamShape::kArray && is_number && param.count > 1) {
                open_["PREFIX_" + param.name] = Trap::kScalarArrayParameter;
            } else if (param.type == "mat2" || param.type == "mat3") {
                open_["PREFIX_" + param.name] = Trap::kSmallMatrixParameter;
            }
        }
    }

    void enter(const astExpression& node) override {
        if (node.kind != ExpressionKind::variableIdentifier || open_.empty()) {
            return;
        }
        const auto found = open_.find(as<astVariableIdentifier>(&node)->variable->name);
        if (found != open_.end()) {
            scene_.report.at(found->second, node);
            open_.erase(found);
        }
    }

private:
    const TrapScene& scene_;
    std::map<std::string, Trap, std::less<>> open_;  // by the name that the parser sees
};

}  // namespace

void check_parameters(const TrapScene& scene) {
    ParameterUses uses(scene);
    walk(scene.unit, uses);
}

}  // namespace diagnostics
