#include "reference.h"

#include <glslang/Public/ResourceLimits.h>
#include <glslang/Public/ShaderLang.h>
#include <glslang/SPIRV/GlslangToSpv.h>
#include <spirv_cross/spirv_cross_c.h>

#include <vector>

namespace bench {
namespace {

constexpr int kGlslVersion = 330;
constexpr auto kMessages = static_cast<EShMessages>(EShMsgSpvRules);

// A stage in the making; glslang keeps the pointers that it is given.
class Stage {
public:
    Stage(EShLanguage language, const std::string& text) : shader_(language), text_(text.c_str()) {
        shader_.setStrings(&text_, 1);
        shader_.setEnvInput(glslang::EShSourceGlsl, language, glslang::EShClientOpenGL,
                            kGlslVersion);
        shader_.setEnvClient(glslang::EShClientOpenGL, glslang::EShTargetOpenGL_450);
        shader_.setEnvTarget(glslang::EShTargetSpv, glslang::EShTargetSpv_1_0);
        shader_.setAutoMapLocations(true);
        shader_.setAutoMapBindings(true);
    }

    bool parse(std::string& error) {
        if (shader_.parse(GetDefaultResources(), kGlslVersion, false, kMessages)) {
            return true;
        }
        error = shader_.getInfoLog();
        return false;
    }

    glslang::TShader& shader() { return shader_; }

private:
    glslang::TShader shader_;
    const char* text_;
};

class CrossContext {
public:
    CrossContext() { spvc_context_create(&context_); }
    ~CrossContext() { spvc_context_destroy(context_); }
    CrossContext(const CrossContext&) = delete;
    CrossContext& operator=(const CrossContext&) = delete;

    spvc_context get() const { return context_; }

private:
    spvc_context context_ = nullptr;
};

// SPIR-V to HLSL; appends the text.
bool cross_compile(const std::vector<unsigned>& code, std::string& hlsl, std::string& error) {
    const CrossContext context;
    spvc_parsed_ir ir = nullptr;
    spvc_compiler compiler = nullptr;
    spvc_compiler_options options = nullptr;
    const char* text = nullptr;
    const bool good =
        spvc_context_parse_spirv(context.get(), code.data(), code.size(), &ir) == SPVC_SUCCESS &&
        spvc_context_create_compiler(context.get(), SPVC_BACKEND_HLSL, ir,
                                     SPVC_CAPTURE_MODE_TAKE_OWNERSHIP, &compiler) == SPVC_SUCCESS &&
        spvc_compiler_create_compiler_options(compiler, &options) == SPVC_SUCCESS &&
        spvc_compiler_options_set_uint(options, SPVC_COMPILER_OPTION_HLSL_SHADER_MODEL, 50) ==
            SPVC_SUCCESS &&
        spvc_compiler_install_compiler_options(compiler, options) == SPVC_SUCCESS &&
        spvc_compiler_compile(compiler, &text) == SPVC_SUCCESS;
    if (!good) {
        error = spvc_context_get_last_error_string(context.get());
        return false;
    }
    hlsl += text;
    return true;
}

bool to_hlsl(const glslang::TProgram& program, EShLanguage language, std::string& hlsl,
             std::string& error) {
    std::vector<unsigned> code;
    glslang::GlslangToSpv(*program.getIntermediate(language), code);
    return cross_compile(code, hlsl, error);
}

}  // namespace

ReferenceTranslator::ReferenceTranslator() {
    glslang::InitializeProcess();
}
ReferenceTranslator::~ReferenceTranslator() {
    glslang::FinalizeProcess();
}

bool ReferenceTranslator::translate(const CompleteShaders& shaders, std::string& hlsl,
                                    std::string& error) const {
    hlsl.clear();
    const bool has_vertex = !shaders.vertex.empty();
    Stage vertex(EShLangVertex, shaders.vertex);
    Stage fragment(EShLangFragment, shaders.fragment);
    glslang::TProgram program;
    if (has_vertex) {
        if (!vertex.parse(error)) {
            return false;
        }
        program.addShader(&vertex.shader());
    }
    if (!fragment.parse(error)) {
        return false;
    }
    program.addShader(&fragment.shader());
    if (!program.link(kMessages) || !program.mapIO()) {
        error = program.getInfoLog();
        return false;
    }
    return (!has_vertex || to_hlsl(program, EShLangVertex, hlsl, error)) &&
           to_hlsl(program, EShLangFragment, hlsl, error);
}

}  // namespace bench
