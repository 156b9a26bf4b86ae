// Gaussian blur over a square of taps. The two loops run over whole pixels of the picture, and the
// weights are normalised by their sum, so the brightness stays.

#define TAPS 6

float weightOf(float offset, float sigma) {
    return exp(-0.5 * offset * offset / (sigma * sigma));
}

vec4 FUNCNAME(vec2 tc) {
    float sigma = max(PREFIX(radius) * 0.5, 0.001);
    float spacing = PREFIX(radius) / float(TAPS);
    vec2 pixel = 1.0 / PREFIX(iResolution);
    vec4 total = vec4(0.0);
    float weights = 0.0;
    for (int row = -TAPS; row <= TAPS; row++) {
        for (int column = -TAPS; column <= TAPS; column++) {
            vec2 offset = vec2(float(column), float(row)) * spacing;
            float weight = weightOf(offset.x, sigma) * weightOf(offset.y, sigma);
            total += INPUT1(tc + offset * pixel) * weight;
            weights += weight;
        }
    }
    vec4 blurred = total / weights;
    // A sharp window moves over the picture, to compare.
    float aspect = PREFIX(iResolution).x / PREFIX(iResolution).y;
    float away = length((tc - PREFIX(focus)) * vec2(aspect, 1.0));
    float inside = smoothstep(0.0, 0.01, PREFIX(window) - away);
    return mix(blurred, INPUT1(tc), inside);
}
