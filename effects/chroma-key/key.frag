// Takes a screen colour out of INPUT1 and puts INPUT2 behind it.

#include "../lib/color.glsl"

// Colour without brightness, so that an unevenly lit screen keys as one.
vec2 chroma(vec3 color) {
    float bright = luma(color);
    return vec2(color.b - bright, color.r - bright) / (bright + 0.12);
}

// What is left of the screen's light on the subject: green above the other two is taken down.
vec3 withoutSpill(vec3 color) {
    float limit = max(color.r, color.b);
    return vec3(color.r, min(color.g, limit), color.b);
}

vec4 FUNCNAME(vec2 tc) {
    vec4 front = INPUT1(tc);
    vec4 behind = INPUT2(tc);
    float apart = distance(chroma(front.rgb), chroma(PREFIX(screen)));
    float keep = smoothstep(PREFIX(threshold), PREFIX(threshold) + PREFIX(softness), apart);
#ifdef SHOW_MATTE
    return vec4(keep, keep, keep, 1.0);
#else
    return vec4(mix(behind.rgb, withoutSpill(front.rgb), keep), 1.0);
#endif
}
