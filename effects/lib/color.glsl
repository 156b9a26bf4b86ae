// Colour helpers that several effects share.

const vec3 LUMA_WEIGHTS = vec3(0.2126, 0.7152, 0.0722);

float luma(vec3 color) {
    return dot(color, LUMA_WEIGHTS);
}

vec3 withSaturation(vec3 color, float amount) {
    return mix(vec3(luma(color)), color, amount);
}

// Darkens towards the corners: 1.0 in the middle, 1.0 - strength in a corner.
float vignette(vec2 place, float strength) {
    vec2 fromMiddle = place - 0.5;
    return 1.0 - strength * smoothstep(0.1, 0.6, dot(fromMiddle, fromMiddle) * 1.4);
}
