// Bloom, drawn in steps over two targets that change places: what is bright is taken out, blurred
// to and fro, and added to the picture. INPUT2 is what the step before has drawn.

#include "../lib/color.glsl"

#define STAGE_BRIGHT 0
#define STAGE_BLUR 1
#define TAPS 8

vec3 blurred(vec2 place, vec2 direction) {
    vec2 stride = direction / PREFIX(iResolution);
    vec3 total = vec3(0.0);
    float weights = 0.0;
    for (int i = -TAPS; i <= TAPS; i++) {
        float offset = float(i);
        float weight = exp(-0.045 * offset * offset);
        total += INPUT2(place + stride * offset).rgb * weight;
        weights += weight;
    }
    return total / weights;
}

vec4 FUNCNAME(vec2 tc) {
    vec3 color = INPUT1(tc).rgb;
    if (PREFIX(stage) == STAGE_BRIGHT) {
        color *= smoothstep(PREFIX(threshold), PREFIX(threshold) + 0.25, luma(color));
    } else if (PREFIX(stage) == STAGE_BLUR) {
        color = blurred(tc, PREFIX(direction));
    } else {
        vec3 light = INPUT2(tc).rgb * PREFIX(strength);
        color = 1.0 - (1.0 - color) * (1.0 - clamp(light, 0.0, 1.0));
    }
    return vec4(color, 1.0);
}
