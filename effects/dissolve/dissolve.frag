// Burns INPUT1 away along a cloud of noise and shows INPUT2 behind it.

#include "../lib/noise.glsl"

vec4 FUNCNAME(vec2 tc) {
    float aspect = PREFIX(iResolution).x / PREFIX(iResolution).y;
    float height = cloud(tc * vec2(aspect, 1.0) * PREFIX(scale));

    // Runs a little past both ends, so that 0.0 and 1.0 show one picture alone.
    float level = mix(0.0 - PREFIX(edge), 1.0 + PREFIX(edge), PREFIX(progress));
    float burnt = smoothstep(level - 0.01, level + 0.01, height);
    float heat = 1.0 - smoothstep(0.0, PREFIX(edge), abs(height - level));

    vec3 color = mix(INPUT2(tc).rgb, INPUT1(tc).rgb, burnt);
    vec3 fire = mix(vec3(0.9, 0.25, 0.05), vec3(1.0, 0.9, 0.5), heat);
    return vec4(color + fire * heat * heat, 1.0);
}
