uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float a, b;
    a = b = tc.x;
    float d = (a = tc.y) + b;
    float e = b * (a += 1.0);
    return vec4(a, b, d, e);
}
