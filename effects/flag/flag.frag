// The cloth: INPUT1, shaded by the slope of the wave, with a hem.

customize_in float slope;

vec4 FUNCNAME(vec2 tc) {
    float light = clamp(1.0 - 0.30 * slope, 0.45, 1.25);
    vec2 fromEdge = min(tc, 1.0 - tc);
    float hem = smoothstep(0.010, 0.014, min(fromEdge.x * 1.6, fromEdge.y));
    vec3 color = mix(vec3(0.93, 0.91, 0.86), INPUT1(tc).rgb, hem);
    return vec4(color * light, 1.0);
}
