uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float a = lessThan(tc.x, 0.5) + greaterThan(tc.y, 0.5);
    vec2 b = lessThan(tc, tc.yx) + greaterThan(tc, tc.yx);
    vec3 c = lessThan(vec3(tc, 1.0), vec3(0.5));
    vec4 d = greaterThan(vec4(tc, tc), vec4(c, 1.0));
    return d + vec4(a, b, 1.0);
}
