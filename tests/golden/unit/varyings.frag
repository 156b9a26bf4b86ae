uniform vec2 iResolution;
in vec3 normal;
in float line;
in vec2 pairs[2];
vec4 FUNCNAME(vec2 tc) {
    return vec4(normal.rg * line, pairs[0] + pairs[1]);
}
