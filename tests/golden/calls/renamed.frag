uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float a = inversesqrt(tc.x) + mod(tc.x, 0.1);
    vec2 b = dFdx(tc) + dFdy(tc);
    return vec4(max(a, 0.0), min(b, 1.0), sin(a) + cos(a));
}
