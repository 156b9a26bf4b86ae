uniform vec2 iResolution;

float point(float line, vec2 vector) {
    float max = line + vector.x;
    return max;
}
vec4 FUNCNAME(vec2 tc) {
    vec2 texture = tc;
    return vec4(max(point(1.0, texture), 0.0));
}
