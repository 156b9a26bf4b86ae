// Lift, gamma and gain, then saturation, a channel mixer and a vignette.

#include "../lib/color.glsl"

#define KEEP_RANGE(color) clamp(color, 0.0, 1.0)

vec3 liftGammaGain(vec3 color) {
    vec3 lifted = color * (1.0 - PREFIX(lift)) + PREFIX(lift);
    vec3 bent = pow(KEEP_RANGE(lifted), 1.0 / PREFIX(gamma));
    return bent * PREFIX(gain);
}

vec4 FUNCNAME(vec2 tc) {
    vec4 source = INPUT1(tc);
    vec3 color = liftGammaGain(source.rgb);
    color = withSaturation(color, PREFIX(saturation));
    vec4 mixed = PREFIX(channels) * vec4(color, 1.0);
#ifdef WITH_VIGNETTE
    mixed.rgb *= vignette(tc, PREFIX(vignette));
#endif
    return vec4(KEEP_RANGE(mixed.rgb), source.a);
}
