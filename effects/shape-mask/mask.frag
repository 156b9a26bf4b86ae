// Cuts a shape out of INPUT1 and lays a patterned paper around it. The shape and the paper come
// from segments, which the host puts before this text: `shapeDistance` and `paper`.

vec4 FUNCNAME(vec2 tc) {
    float aspect = PREFIX(iResolution).x / PREFIX(iResolution).y;
    vec2 place = (tc - 0.5) * vec2(aspect, 1.0) / PREFIX(size);
    float soft = 2.0 / (PREFIX(iResolution).y * PREFIX(size));
    float outside = shapeDistance(place);
    float shadow = 1.0 - smoothstep(0.0, 0.22, shapeDistance(place + vec2(-0.05, 0.07)));

    vec3 color = paper(tc * vec2(aspect, 1.0)) * (1.0 - 0.55 * shadow);
    color = mix(vec3(0.98, 0.97, 0.93), color, smoothstep(0.06, 0.06 + soft, outside));
    color = mix(INPUT1(tc).rgb, color, smoothstep(0.0, soft, outside));
    return vec4(color, 1.0);
}
