uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    vec2 a = vec2() + vec2(1.0) + vec2(tc);
    vec3 b = vec3() + vec3(tc.x) + vec3(tc, 1.0);
    ivec2 c = ivec2();
    ivec3 d = ivec3(2);
    ivec4 e = ivec4(1, 2, 3, 4);
    vec2 f = vec2(c);
    vec4 g = vec4(b.rgb, 1.0) + vec4() + vec4(a, f) + vec4(d.x, e.y, 0, 0);
    return g;
}
