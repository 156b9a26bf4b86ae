uniform vec2 iResolution;

const float PI = 3.14;
const int COUNT = 2 + 1;
const vec2 CENTRE = vec2(0.5, PI);
uniform vec4 table[COUNT];
vec4 FUNCNAME(vec2 tc) {
    float w[COUNT];
    w[0] = PI;
    return table[1] * w[0] + vec4(tc - CENTRE, 0.0, 1.0);
}
