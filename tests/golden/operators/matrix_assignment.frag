uniform vec2 iResolution;

uniform mat2 m2;
uniform mat3 m3;
uniform mat4 m4;
vec4 FUNCNAME(vec2 tc) {
    vec3 v = vec3(tc, 1.0);
    vec4 w = vec4(v, 1.0);
    mat4 n = m4;
    tc *= m2;
    v *= m3;
    w *= m4;
    n *= m4;
    n *= 2.0;
    return n * (w + vec4(v, tc.x));
}
