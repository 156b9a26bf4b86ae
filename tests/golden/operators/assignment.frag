uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float f = 1.0;
    int i = 12;
    f += 1.0;
    f -= 0.5;
    f *= 2.0;
    f /= 3.0;
    i %= 7;
    i <<= 2;
    i >>= 1;
    i &= 6;
    i ^= 3;
    i |= 8;
    return vec4(f, i, tc);
}
