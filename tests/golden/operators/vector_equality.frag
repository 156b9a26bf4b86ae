uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    vec3 a = vec3(tc, 1.0);
    vec4 b = vec4(a, 1.0);
    bool q = tc == tc.yx;
    if (a == a.zyx || b != b.wzyx) {
        q = tc != vec2(0.5, 0.5);
    }
    if (q) {
        return b;
    }
    return vec4(0.0, 0.0, 0.0, 1.0);
}
