uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    int i = 3;
    float f = -tc.x, g = +tc.y;
    bool b = !(f < g);
    ++i;
    --i;
    i++;
    i--;
    i = ~i;
    return b ? vec4(f, g, i, -1.0) : vec4(f);
}
