// Noise without sines, so that every graphics card draws the same.

float hash(vec2 place) {
    vec3 spread = fract(vec3(place.xyx) * 0.1031);
    spread += dot(spread, spread.yzx + 33.33);
    return fract((spread.x + spread.y) * spread.z);
}

// Smooth noise between 0 and 1, one bump per unit.
float noise(vec2 place) {
    vec2 cell = floor(place);
    vec2 blend = place - cell;
    blend = blend * blend * (3.0 - 2.0 * blend);
    float low = mix(hash(cell), hash(cell + vec2(1.0, 0.0)), blend.x);
    float high = mix(hash(cell + vec2(0.0, 1.0)), hash(cell + vec2(1.0, 1.0)), blend.x);
    return mix(low, high, blend.y);
}

// Five octaves of it.
float cloud(vec2 place) {
    float total = 0.0;
    float weight = 0.5;
    for (int octave = 0; octave < 5; octave++) {
        total += weight * noise(place);
        place = place * 2.03 + 17.0;
        weight *= 0.5;
    }
    return total;
}
