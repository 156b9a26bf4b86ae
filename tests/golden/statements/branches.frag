uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float a = 0.0;
    if (tc.x < 0.5) a = 1.0; else a = 2.0;
    if (tc.y < 0.5) {
        a *= 2.0;
    } else if (tc.y < 0.75) {
        a = 0.5;
    }
    return vec4(a);
}
