uniform vec2 iResolution;

float luma(vec3 c) {
    return dot(c, vec3(0.299, 0.587, 0.114));
}
float half_way() {
    return 0.25 * 0.5;
}
vec4 FUNCNAME(vec2 tc) {
    return vec4(luma(vec3(tc, 1.0)) * half_way());
}
