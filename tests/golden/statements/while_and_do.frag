uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float a = tc.x;
    while (a < 1.0) a += 0.25;
    do {
        a *= 0.5;
        if (a < 0.1) continue;
    } while (a > 0.25);
    do a += 0.1; while (a < 0.5);
    return vec4(a);
}
