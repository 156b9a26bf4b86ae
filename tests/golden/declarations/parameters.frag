uniform vec2 iResolution;

void split(in vec2 p, out float x, inout float y, float w[2], highp float z) {
    x = p.x;
    y = p.y + w[0] + z;
}
vec4 FUNCNAME(vec2 tc) {
    float a, b = 0.0;
    float w[2];
    split(tc, a, b, w, 1.0);
    return vec4(a, b, 0.0, 1.0);
}
