uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float a = float() + float(3) + float(tc.x);
    int b = int() + int(tc.y);
    uint c = uint() + uint(b);
    bool d = bool(b);
    return d ? vec4(a) : vec4(a, b, c, 1.0);
}
