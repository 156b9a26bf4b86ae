uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float w[3] = { 0.25, 0.5, 0.25 };
    float v[3] = float[](1.0, 2.0, 3.0);
    float m[2][2] = {{1.0, 2.0}, {3.0, 4.0}};
    return vec4(w[0], v[1], m[1][0], m[0][1]);
}
