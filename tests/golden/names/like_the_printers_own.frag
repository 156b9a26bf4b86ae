uniform mat2 m;
void f(float env__________isDidMatArraySubScriptObject, bool HAVE_FUNC_p) {
    for (;;) p(1.0);
}
vec2 g(vec2 MyConstantBuffer_x, float isVertexShader) {
    return INPUT1(MyConstantBuffer_x).rg;
}
