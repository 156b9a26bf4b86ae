uniform vec2 iResolution;

uniform mat2 m2;
uniform mat3 m3;
uniform mat4 m4, n4;
vec4 FUNCNAME(vec2 tc) {
    vec2 a = m2 * tc + tc * m2;
    vec3 b = m3 * m3 * vec3(tc, 1.0);
    return m4 * n4 * vec4(a, b.xy) * m4;
}
