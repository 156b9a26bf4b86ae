// Segment "paper", variant 1.
vec3 paper(vec2 place) {
    float far = length(fract(place * 12.0) - 0.5);
    return mix(vec3(0.95, 0.76, 0.33), vec3(0.86, 0.42, 0.30), smoothstep(0.20, 0.25, far));
}
