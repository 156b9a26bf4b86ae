uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    mat2 a;
    mat3 b;
    mat4 c;
    return c * vec4(a * tc, 0.0, 1.0);
}
