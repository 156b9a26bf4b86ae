// Segment "paper", variant 0.
vec3 paper(vec2 place) {
    float band = abs(fract((place.x + place.y) * 7.0) - 0.5);
    return mix(vec3(0.16, 0.38, 0.47), vec3(0.20, 0.45, 0.54), smoothstep(0.23, 0.27, band));
}
