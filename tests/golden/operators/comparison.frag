uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float a = tc.x, b = tc.y;
    bool q = a < b && a <= b || a > b || a >= b;
    bool r = a == b || a != b && !q;
    return q ? vec4(1.0) : vec4(a, b, 0.0, 1.0);
}
