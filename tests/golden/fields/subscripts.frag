uniform vec2 iResolution;

uniform mat4 m;
vec4 FUNCNAME(vec2 tc) {
    float w[2] = { 0.5, 0.25 };
    vec4 column = m[1];
    float element = m[1][2] + tc[0] + w[1];
    return column * element;
}
