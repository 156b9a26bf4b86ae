uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float w[3];
    vec2 offsets[2];
    int n[2];
    w[1] = tc.x;
    offsets[0] = tc;
    return vec4(w[1], offsets[0], n[1]);
}
