uniform vec2 iResolution;

float early(float a) {
    if (a < 0.5) return 1.0;
    {
        return a;
    }
}
void nothing() {
    return;
}
vec4 FUNCNAME(vec2 tc) {
    if (tc.x > 0.75) discard;
    nothing();
    return vec4(early(tc.x));
}
