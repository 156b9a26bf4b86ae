uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    mat2 a = mat2() * mat2(2.0) * mat2(tc, tc.yx) * mat2(1.0, 0.0, 0.0, 1.0);
    mat3 b = mat3() * mat3(0.5);
    mat4 c = mat4() * mat4(1.0);
    return c * vec4(a * tc, (b * vec3(tc, 1.0)).xy);
}
