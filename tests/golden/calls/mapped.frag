uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    vec3 a = mix(vec3(1.0, 0.0, 0.0), vec3(tc, 1.0), 0.5);
    float b = atan(tc.x) + atan(tc.y, tc.x);
    vec2 c = fract(tc * 8.0);
    return vec4(a.xy * b, c.st);
}
