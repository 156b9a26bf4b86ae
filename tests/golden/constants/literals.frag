uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float a = 0.1 + 1.0 + 100.0 + 1e20 + 2.5e-3 + .5;
    int b = 010 + 0x1f + 2147483647;
    uint c = 7u;
    bool d = true;
    d = false;
    return d ? vec4(a) : vec4(a, b, c, tc.x);
}
