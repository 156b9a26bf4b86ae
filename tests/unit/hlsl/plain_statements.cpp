#include "plain_walker.h"

namespace glsl::plain {

// A declaration or an expression with flags.
void PlainPrinter::simple(astStatement* s, int flags, std::string& out, const Scope& scope) {
    if (s->kind == StatementKind::declaration) {
        for (astFunctionVariable* v : as<astDeclarationStatement>(s)->variables) {
            localVariable(*v, out, scope, flags);
        }
    } else if (s->kind == StatementKind::expression) {
        expression(as<astExpressionStatement>(s)->expression, out, scope);
        out += (flags & 1) != 0 ? ";" : "";
        out += (flags & 2) != 0 ? "\n" : "";
    }
}

Obj PlainPrinter::statement(astStatement* s, std::string& out, const Scope& scope) {
    if (s == nullptr) {
        return nullptr;
    }
    switch (s->kind) {
        case StatementKind::compound: {
            const auto inner = std::make_shared<Environment>(scope);
            out += " {\n";
            statements(as<astCompoundStatement>(s)->statements, out, inner);
            out += "}\n";
            if (inner->has(kSubscript)) {
                scope->set(kSubscript, inner->get(kSubscript));
            }
            break;
        }
        case StatementKind::empty:
            out += ";";
            break;
        case StatementKind::declaration:
        case StatementKind::expression:
            simple(s, 3, out, scope);
            break;
        case StatementKind::if_: {
            const auto& i = *as<astIfStatement>(s);
            out += "if(";
            expression(i.condition, out, scope);
            out += ")";
            statement(i.thenStatement, out, scope);
            if (i.elseStatement != nullptr) {
                out += "else ";
                statement(i.elseStatement, out, scope);
            }
            break;
        }
        case StatementKind::switch_:
            out += "switch(";
            expression(as<astSwitchStatement>(s)->expression, out, scope);
            out += ") {\n";
            statements(as<astSwitchStatement>(s)->statements, out, scope);
            out += "}\n";
            break;
        case StatementKind::caseLabel:
            if (as<astCaseLabelStatement>(s)->isDefault) {
                out += "default";
            } else {
                out += "case ";
                expression(as<astCaseLabelStatement>(s)->condition, out, scope);
            }
            out += ":\n";
            break;
        case StatementKind::while_:
            out += "while(";
            simple(as<astWhileStatement>(s)->condition, 0, out, scope);
            out += ")";
            statement(as<astWhileStatement>(s)->body, out, scope);
            break;
        case StatementKind::do_: {
            const auto& d = *as<astDoStatement>(s);
            out += d.body->kind == StatementKind::compound ? "do" : "do ";
            statement(d.body, out, scope);
            out += "while(";
            expression(d.condition, out, scope);
            out += ");\n";
            break;
        }
        case StatementKind::for_:
            forLoop(*as<astForStatement>(s), out, scope);
            break;
        case StatementKind::continue_:
            out += "continue;\n";
            break;
        case StatementKind::break_:
            out += "break;\n";
            break;
        case StatementKind::return_:
            out += "return";
            if (as<astReturnStatement>(s)->expression != nullptr) {
                out += " ";
                expression(as<astReturnStatement>(s)->expression, out, scope);
            }
            out += ";\n";
            break;
        case StatementKind::discard:
            out += "discard;\n";
            break;
    }
    return makeObject(0);
}

void PlainPrinter::forLoop(astForStatement& s, std::string& out, const Scope& scope) {
    const bool top = !scope->has(kLevel);
    if (top) {
        scope->set(kLevel, makeBoolean(true));
    }
    std::string t = "for(";
    if (s.init == nullptr) {
        t += ";";
    } else {
        simple(s.init, 1, t, scope);
    }
    if (s.condition != nullptr) {
        t += " ";
        expression(s.condition, t, scope);
    }
    t += ";";
    if (s.loop != nullptr) {
        t += " ";
        expression(s.loop, t, scope);
    }
    t += ")";
    statement(s.body, t, scope);
    const Obj mark = scope->get(kSubscript);
    if (mark == nullptr || (isBoolean(mark) && !static_cast<const Boolean&>(*mark).value)) {
        out += "\n[loop]\n";
    }
    out += t;
    if (top) {
        scope->remove(kSubscript);
        scope->remove(kLevel);
    }
}

void PlainPrinter::printUnit(uint32_t inputs, uint32_t audio, bool custom, std::string& out,
                             std::string& varyings, const Scope& parent, bool vertex) {
    std::string outputStruct =
        "\nstruct VertexOutput\n{\n    float4 gl_Position : SV_Position;\n    float2 tc : "
        "TEXCOORD0;\n";
    std::string inputStruct = vertex ? "\nstruct VertexInput\n{\n" : "";
    std::string copies;
    std::string cbufferBody;
    std::string statics;
    std::string dropped;
    const auto scope = std::make_shared<Environment>(parent);
    int uniforms = 0;
    if (vertex) {
        scope->set("isVertexShader", makeBoolean(true));
        out += "static float4 gl_Position;\nstatic float2 tc;\n";
        copies = "    output.gl_Position = gl_Position;\n    output.tc = tc;\n";
    }
    for (astGlobalVariable* g : unit_.globals) {
        const std::string name = avoided(g->name);
        if (g->storage == 5) {
            ++uniforms;
        } else if (g->storage == 1 && vertex) {
            inputStruct += "    ";
            const Obj o = type(g->baseType, inputStruct);
            inputStruct += " " + semanticName(name) + " : " + semanticName(name) + ";\n";
            scope->set("VertexInput_" + semanticName(name), o);
        } else if (g->storage == 1) {
            scope->set("VertexOutput_" + name, type(g->baseType, dropped));
        } else if (g->storage == 2 && vertex && name != "gl_Position" && name != "tc") {
            out += "static ";
            declaration(*g, out, scope);
            out += ";\n";
            copies += "    output." + name + " = " + name + ";\n";
            std::string line = "    ";
            declaration(*g, line, scope);
            line += " : __" + name + ";\n";
            outputStruct += line;
            varyings += line;
            scope->set("VertexOutput_" + name, type(g->baseType, dropped));
        }
    }
    inputStruct += vertex ? "\n};\n" : "";
    outputStruct += (vertex ? "" : varyings) + "\n};\n";
    for (astGlobalVariable* g : unit_.globals) {
        const std::string name = avoided(g->name);
        if (g->storage == 5) {
            const Obj o = global(*g, cbufferBody, scope);
            scope->set("MyConstantBuffer_" + name, o);
        } else if (g->storage == 0) {
            formatted(out, "#define " + name);
            const Obj o = type(g->baseType, dropped);
            if (g->initialValue != nullptr) {
                out += " (";
                expression(g->initialValue, out, scope);
                out += ")\n";
            }
            scope->set("MyConstantBuffer_" + name, o);
        } else if (g->storage != 1 && g->storage != 2) {
            if (g->name == "gl_FragCoord") {
                scope->set("gl_FragCoord", vecOf(4));
            } else {
                statics += "static ";
                const Obj o = global(*g, statics, scope);
                scope->set("MyConstantBuffer_" + name, o);
            }
        }
    }
    if (uniforms > 0) {
        outputStruct += "\ncbuffer MyConstantBuffer : register(b0)\n{\n" + cbufferBody + "\n};\n";
    }
    out += std::string(kPrelude) + inputStruct + outputStruct;
    const auto texture = [&out](const std::string& name, uint32_t place) {
        const std::string n = std::to_string(place);
        out += "Texture2D " + name + " : register(t" + n + ");\n";
        out += "SamplerState " + name + "_SAMPLER : register(s" + n + ");\n";
    };
    for (uint32_t i = 0; i < inputs; ++i) {
        texture("INPUT" + std::to_string(i + 1), i);
    }
    for (uint32_t k = 1; k <= audio; ++k) {
        texture("AUDIO_INPUT" + std::to_string(k), inputs + k - 1);
    }
    out += "\n";
    if (unit_.versionDirective != nullptr) {
        static const char* const kProfiles[] = {"core\n", "compatibility\n", "es\n"};
        const int profile = unit_.versionDirective->profile;
        out += "#version " + std::to_string(unit_.versionDirective->number) + " ";
        out += profile >= 0 && profile < 3 ? kProfiles[profile] : "";
    }
    for (astExtensionDirective* e : unit_.extensionDirectives) {
        static const char* const kBehaviors[] = {"enable\n", "require\n", "warn\n", "disable\n"};
        formatted(out, "#extension " + std::string(e->name) + " : ");
        out += e->behavior >= 0 && e->behavior < 4 ? kBehaviors[e->behavior] : "";
    }
    for (astStruct* s : unit_.structures) {
        out += "struct ";
        if (!s->name.empty()) {
            formatted(out, std::string(s->name) + " ");
        }
        fields(s->fields, out, scope);
    }
    out += statics;
    for (astInterfaceBlock* b : unit_.interfaceBlocks) {
        out += b->storage == 1   ? "in "
               : b->storage == 2 ? "out "
               : b->storage == 7 ? "buffer "
                                 : "";
        formatted(out, std::string(b->name) + " ");
        fields(b->fields, out, scope);
    }
    for (astFunction* f : unit_.functions) {
        const auto child = std::make_shared<Environment>(scope);
        if (vertex && f->name == "main") {
            out += "\nvoid main(VertexInput input)\n{\n";
            statements(f->statements, out, child);
            out += "\nreturn;\n}\n";
            continue;
        }
        function(*f, out, child);
        const std::string name = avoided(f->name);
        scope->set("HAVE_FUNC_" + name, makeBoolean(true));
        if (child->has(name + "_RETURN_TYPE")) {
            scope->set(name + "_RETURN_TYPE", child->get(name + "_RETURN_TYPE"));
        }
    }
    const std::string top =
        "\n\nfloat4 mainPS(VertexOutput input) : SV_TARGET\n{\n    float2 _tc = "
        "input.gl_Position.xy / input.gl_Position.w / iResolution.xy;\n    float4 gl_FragCoord = "
        "float4(_tc * iResolution.xy, ";
    if (vertex) {
        out +=
            "\n\nVertexOutput mainVS(VertexInput input)\n{\n    VertexOutput output;\n    "
            "main(input);\n" +
            copies + "\n    output.gl_Position.y *= -1.0f;\n    return output;\n}\n    ";
    } else if (custom) {
        out += top +
               "input.gl_Position.z / input.gl_Position.w, 1.0);\n    return FUNCNAME(input.tc, "
               "input, gl_FragCoord).zyxw;\n}\n    ";
    } else {
        out += top +
               "0.0, 1.0);\n    _tc.y = 1.0 - _tc.y;\n    return FUNCNAME(_tc, input, "
               "gl_FragCoord).zyxw;\n}\n    ";
    }
}

}  // namespace glsl::plain
