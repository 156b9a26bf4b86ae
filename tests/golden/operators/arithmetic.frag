uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    int i = 7, j = 2;
    float f = tc.x, g = 2.0;
    int k = (i % j) << 1 >> 1 & 7 ^ 2 | 8;
    f = f * g / 3.0 + g - f * i;
    return vec4(f, k, i + j, i * j - i / j);
}
