uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float a;
    int b;
    uint c;
    bool d = true;
    double e = 2.5lf;
    return d ? vec4(a, b, c, 1.0) : vec4(0.0);
}
