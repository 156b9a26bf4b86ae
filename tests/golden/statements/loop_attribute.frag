uniform vec2 iResolution;

uniform mat4 m;
vec4 FUNCNAME(vec2 tc) {
    vec4 v = vec4(tc, 0.0, 1.0);
    for (int i = 0; i < 2; ++i) {
        for (int a = 0; a < 2; ++a) v += 0.1;
        v += m[i];
        for (int b = 0; b < 2; ++b) v += 0.2;
    }
    for (int c = 0; c < 2; ++c) v += 0.3;
    return v;
}
