// inputs=1
uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    vec4 sum = vec4(0.0);
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; j++) sum += INPUT1(tc + vec2(i, j) * 0.01);
    }
    return sum / 16.0;
}
