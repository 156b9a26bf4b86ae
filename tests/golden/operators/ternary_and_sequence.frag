uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float a, b;
    a = (b = tc.x, b * 2.0);
    vec2 v = a < 0.5 ? tc : vec2(a * b, 1.0);
    return vec4(v, (a < b ? (b < 0.1 ? a : b) : 1.0), 1.0);
}
