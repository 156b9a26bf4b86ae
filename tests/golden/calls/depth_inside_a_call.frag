// inputs=2
uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    vec4 twice = abs(DEPTH_INPUT2(tc)) + vec4(DEPTH_INPUT2(tc));
    vec4 once = mix(DEPTH_INPUT2(tc), twice, 0.5);
    return once + abs(DEPTH_INPUT(tc));
}
